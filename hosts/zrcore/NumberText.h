// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_NUMBERTEXT_H
#define ZRCORE_HOSTS_ZRCORE_NUMBERTEXT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

inline constexpr double kKilometersPerHour = 3.6;  ///< in a metre per second

/// With so many decimals, in any locale; "-" for nothing and for what is not finite.
std::string fixedText(std::optional<double> value, int decimals);

/// A number and what is counted: "1 fix", "2 fixes".
std::string countText(std::uint64_t count, std::string_view singular, std::string_view plural);

#endif
