// SPDX-License-Identifier: Apache-2.0
/// @file
/// The sentence of NMEA 0183 and its field types.
#ifndef ZRCORE_READERS_NMEASENTENCE_H
#define ZRCORE_READERS_NMEASENTENCE_H

#include <optional>
#include <string_view>
#include <variant>
#include <vector>

namespace readers {

/// `$GPRMC,...*4E`, taken apart. Views into the line.
struct NmeaSentence {
  std::string_view kind;  ///< "RMC" of any talker; the whole address of a proprietary or odd sentence
  bool hasChecksum = false;
  std::vector<std::string_view> fields;  ///< what follows the address

  /// The field of this 1-based number; empty when the sentence is shorter.
  std::string_view field(std::size_t number) const {
    return number <= fields.size() ? fields[number - 1] : std::string_view{};
  }
};

/// @param line  begins with `$`; blanks at its end do not matter.
/// @return      the sentence, or why it is none, in a few words. A checksum that is there is right.
std::variant<NmeaSentence, std::string_view> parseSentence(std::string_view line);

/// `hhmmss` or `hhmmss.sss` to seconds since midnight.
std::optional<double> secondsOfDayFromNmea(std::string_view text);

/// `ddmmyy` to the seconds since 1970 at which the day begins. Years 80 to 99 lie in the twentieth century: positions
/// by satellite begin with 1980.
std::optional<double> secondsAtMidnightFromNmea(std::string_view text);

/// `dddmm.mmmm` and a hemisphere (N, S, E or W) to signed degrees.
std::optional<double> degreesFromNmea(std::string_view text, std::string_view hemisphere);

}  // namespace readers

#endif
