// SPDX-License-Identifier: Apache-2.0
/// @file
/// Times in text and calendar fields, as seconds since 1970-01-01 00:00 UTC without leap seconds.
#ifndef ZRCORE_READERS_TIMETEXT_H
#define ZRCORE_READERS_TIMETEXT_H

#include <optional>
#include <string_view>

namespace readers {

inline constexpr double kSecondsPerDay = 86400.0;

/// The start of a day of the Gregorian calendar, also before its introduction. Nothing for a day that does not exist.
std::optional<double> secondsAtMidnight(int year, int month, int day);

/// @param seconds  [0, 61): second 60 is a leap second and counts as the next minute's first, as in POSIX time.
/// @return         nothing when a value is out of its range; there is no hour 24.
std::optional<double> secondsOfDay(int hour, int minute, double seconds);

/// Extended ISO 8601: a date, `T` or a blank, hours and minutes, seconds with or without a fraction, and `Z`, an offset
/// or nothing. Without a zone the time is taken as UTC, which is what recorders that leave it out mean.
std::optional<double> secondsFromIso8601(std::string_view text);

/// ISO 8601, or a plain number of seconds since 1970 within the years 0 to 9999; milliseconds since 1970 lie outside.
std::optional<double> secondsFromText(std::string_view text);

}  // namespace readers

#endif
