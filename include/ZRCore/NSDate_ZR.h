// SPDX-License-Identifier: Apache-2.0
/// @file
/// Dates from and to texts. Any thread. The texts to read are taken by reference because copying an optional view costs
/// as much as reading a date.
#ifndef ZRCORE_NSDATE_ZR_H
#define ZRCORE_NSDATE_ZR_H

#include <ZRCore/NSDate.h>
#include <ZRCore/ZRExport.h>

#include <optional>
#include <string>
#include <string_view>

namespace NSDate_ZR {

/// Reads "2016-03-01T12:00:00Z": exactly these 20 characters' shape, a day that the Gregorian calendar has (carried
/// back before its introduction), years 0001 to 9999, hours to 23, minutes and seconds to 59, in GMT. No fractions, no
/// offsets, no other separators.
/// @return absent for anything else.
ZR_EXPORT std::optional<NSDate> dateWithISO8601String(const std::optional<std::string_view>& string);

/// Month, day and the last two digits of the year in GMT: "3/1/16".
/// @return absent for a date that is NaN or beyond the years 32767 before and after our era.
ZR_EXPORT std::optional<std::string> monthDayYear(NSDate date);

/// The date that lies (number / divisor) seconds after 1970, where `string` is a decimal number from its first
/// character (after blanks and tabs) to its last: "-3.5", ".5", "1e3", but not "+5", "12abc", "0x10" or "1,000".
/// @param divisor  1000 for a number of milliseconds; absent: seconds. 0 gives an infinite date, or NaN for a number 0.
/// @return absent when the text is absent, no number, or a number beyond the range of doubles.
ZR_EXPORT std::optional<NSDate> dateFromIntervalSince1970FromStringDividedBy(
    const std::optional<std::string_view>& string, std::optional<double> divisor = std::nullopt);

/// How long ago `date` was, by the platform's clock: "2 months ago" (of 30 days), "47 days ago", "30 hours ago", "1
/// hour ago", "5 mins ago", "just now". The host's string table may translate the phrases; "%d", "%i" or "%@" in the
/// translation stands for the number, and "%%" for "%".
/// @return absent when the date lies in the future, or is NaN.
ZR_EXPORT std::optional<std::string> informalIntervalSinceDate(NSDate date);

}  // namespace NSDate_ZR

#endif
