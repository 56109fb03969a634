// SPDX-License-Identifier: Apache-2.0
#include "InformalInterval.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

std::optional<InformalInterval> informalInterval(double seconds) noexcept {
  if (!(seconds >= 0.0)) return std::nullopt;
  // In doubles, whole numbers all, so that no interval is too long.
  const double minutes = std::trunc(seconds / 60.0);
  const double hours = std::trunc(minutes / 60.0);
  const double days = std::trunc(hours / 24.0);
  const double months = std::trunc(days / 30.0);
  if (months >= 2.0) {
    return InformalInterval{"%d months ago",
                            static_cast<int>(std::min(months, double{std::numeric_limits<int>::max()}))};
  }
  // The first that matches, in this order: one month is given in days, one day in hours.
  const int wholeDays = static_cast<int>(days);
  const int hourPart = static_cast<int>(hours) - 24 * wholeDays;
  const int minutePart = static_cast<int>(minutes - 60.0 * hours);
  if (wholeDays >= 2) return InformalInterval{"%d days ago", wholeDays};
  if (wholeDays == 1) return InformalInterval{"%d hours ago", hourPart + 24};
  if (hourPart >= 2) return InformalInterval{"%d hours ago", hourPart};
  if (hourPart == 1) return InformalInterval{"1 hour ago", std::nullopt};
  if (minutePart >= 2) return InformalInterval{"%d mins ago", minutePart};
  return InformalInterval{"just now", std::nullopt};
}

namespace {

/// How long the directive for a whole number is that `text` begins with, behind its "%"; 0 when it begins with none.
std::size_t numberDirective(std::string_view text) {
  for (const std::string_view directive : {"d", "i", "ld", "li", "@"}) {
    if (text.starts_with(directive)) return directive.size();
  }
  return 0;
}

}  // namespace

std::string fillInNumber(std::string_view format, int number) {
  std::string filled;
  while (!format.empty()) {
    const std::size_t percent = std::min(format.find('%'), format.size());
    filled.append(format.substr(0, percent));
    format.remove_prefix(percent);
    std::string_view directive = format.substr(std::min<std::size_t>(1, format.size()));
    if (directive.starts_with("1$")) directive.remove_prefix(2);
    if (const std::size_t length = numberDirective(directive); length > 0) {
      filled += std::to_string(number);
      format = directive.substr(length);
    } else if (!format.empty()) {
      filled += '%';
      format.remove_prefix(format.starts_with("%%") ? 2 : 1);
    }
  }
  return filled;
}
