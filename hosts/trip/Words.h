// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_WORDS_H
#define ZRCORE_HOSTS_TRIP_WORDS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Numbers, lengths, durations and speeds as people read them, in any locale.

namespace trip {

/// With so many decimals; "-" for nothing and for what is not finite.
std::string fixedText(std::optional<double> value, int decimals);

/// A number and what is counted: "1 fix", "2 fixes".
std::string countText(std::uint64_t count, std::string_view singular, std::string_view plural);

std::optional<double> kilometersPerHour(std::optional<double> metersPerSecond);

/// A round length: "200 m", "5 km"
std::string lengthText(double meters);
/// A measured length, in three digits as far as they last: "0.42 m", "15.4 m", "9.13 km"; "1234 km"
std::string measuredLengthText(double meters);
/// "45 s", "11 min 40 s", "2 h 05 min", "3 d 4 h"
std::string durationText(double seconds);
/// Whole seconds, as a clock shows them: "0:07", "12:03", "1:02:03".
/// @param withHours  "0:12:03" for less than an hour, too
std::string clockText(double seconds, bool withHours = false);

}  // namespace trip

#endif
