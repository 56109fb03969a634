// SPDX-License-Identifier: Apache-2.0
/// @file
/// The sentence of NMEA 0183 and its field types.
#ifndef ZRCORE_READERS_NMEASENTENCE_H
#define ZRCORE_READERS_NMEASENTENCE_H

#include <array>
#include <optional>
#include <string_view>
#include <variant>

namespace readers {

/// `$GPRMC,...*4E`, taken apart. Views into the line.
struct NmeaSentence {
  std::string_view talker;  ///< "GP"; empty for a proprietary or odd sentence
  std::string_view kind;    ///< "RMC" of any talker; the whole address of a proprietary or odd sentence
  bool hasChecksum = false;
  std::string_view content;  ///< what follows the address and its comma
};

/// The fields of a sentence, without the blanks round them. Those after the 24th, which none that is read has, are left
/// out.
class NmeaFields {
 public:
  explicit NmeaFields(const NmeaSentence& sentence);

  /// The field of this 1-based number; empty when the sentence is shorter.
  std::string_view operator[](std::size_t number) const {
    return number <= count_ ? fields_[number - 1] : std::string_view{};
  }
  std::size_t count() const { return count_; }

 private:
  std::array<std::string_view, 24> fields_;
  std::size_t count_ = 0;
};

/// @param text  begins with `$`. What follows two digits of checksum does not matter: some loggers write a time there.
/// @return      the sentence, or why it is none, in a few words. A checksum that is there is right.
std::variant<NmeaSentence, std::string_view> parseSentence(std::string_view text);

/// The address at the start of a text that may be damaged: "RMC" of `$GPRMC`, "PXYZ" of `$PXYZ`, "" when there is none.
std::string_view kindOfSentence(std::string_view text);

/// `hhmmss` or `hhmmss.sss` to seconds since midnight.
std::optional<double> secondsOfDayFromNmea(std::string_view text);

/// `ddmmyy` to the seconds since 1970 at which the day begins. Years 80 to 99 lie in the twentieth century: positions
/// by satellite begin with 1980.
std::optional<double> secondsAtMidnightFromNmea(std::string_view text);

/// `dddmm.mmmm` and a hemisphere (N, S, E or W) to signed degrees.
std::optional<double> degreesFromNmea(std::string_view text, std::string_view hemisphere);

}  // namespace readers

#endif
