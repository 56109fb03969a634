// SPDX-License-Identifier: Apache-2.0
#include "NumberText.h"

#include <array>
#include <charconv>
#include <cmath>

std::string fixedText(std::optional<double> value, int decimals) {
  if (!value || !std::isfinite(*value)) return "-";
  std::array<char, 400> digits;  // the largest double has 309 of them before the point
  const auto end = std::to_chars(digits.begin(), digits.end(), *value, std::chars_format::fixed, decimals).ptr;
  return {digits.begin(), end};
}

std::string countText(std::uint64_t count, std::string_view singular, std::string_view plural) {
  std::string text = std::to_string(count);
  return text.append(1, ' ').append(count == 1 ? singular : plural);
}
