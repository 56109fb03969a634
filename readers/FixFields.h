// SPDX-License-Identifier: Apache-2.0
/// @file
/// Filling a SourceFix from what an input says, with one rule per quantity for all formats.
#ifndef ZRCORE_READERS_FIXFIELDS_H
#define ZRCORE_READERS_FIXFIELDS_H

#include <cstdint>
#include <string>
#include <string_view>

#include "FixReader.h"

namespace readers {

/// Where remarks about one place of the input go.
struct Reporter {
  Listener& listener;
  std::uint64_t line;
  bool cut = false;  ///< the input ends within this line: the likely reason for whatever is wrong with it

  void fault(std::string text) const;
  void warning(std::string text) const;
  void tell(Severity severity, std::string text) const;
};

enum class Quantity { altitude, accuracy, verticalAccuracy, hdop, speed, course };

/// Stores a value. A negative speed, course or accuracy and a HDOP that is not above 0 mean "unknown", as positioning
/// systems write them, and leave the field empty; a course beyond 360 degrees is a fault that does the same.
void setQuantity(SourceFix& fix, Quantity quantity, double value, const Reporter& reporter);

/// Stores a number given as text. Blank text means "unknown"; text that is not a number is a fault (of an accuracy or a
/// HDOP a warning) and leaves the field empty.
void readQuantity(SourceFix& fix, Quantity quantity, std::string_view text, const Reporter& reporter);

/// Stores a time given as text (ISO 8601 or seconds since 1970). Blank text means "unknown"; other text is a fault and
/// leaves the time empty.
void readTime(SourceFix& fix, std::string_view text, const Reporter& reporter);

/// Stores decimal degrees. Text that is not a number is a fault, and without its place there is no fix.
/// @return  whether both are numbers; their range is checked where fixes leave the reader.
bool readCoordinate(SourceFix& fix, std::string_view latitude, std::string_view longitude, const Reporter& reporter);

/// Whether the place is one on the Earth; a fault otherwise.
bool checkPlace(const SourceFix& fix, const Reporter& reporter);

/// Gives `fix` what it lacks and `other` knows, except place and line.
void fillMissing(SourceFix& fix, const SourceFix& other);

/// Gives `fix` the place of `other` and all that it knows, except the line.
void replaceByKnown(SourceFix& fix, const SourceFix& other);

/// To a tenth of a millimetre: a place keeps no more digits when it is told in another notation.
bool samePlace(const SourceFix& a, const SourceFix& b);

}  // namespace readers

#endif
