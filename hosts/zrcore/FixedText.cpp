#include "FixedText.h"

#include <array>
#include <charconv>
#include <cmath>

std::string fixedText(std::optional<double> value, int decimals) {
  if (!value || !std::isfinite(*value)) return "-";
  std::array<char, 400> digits;  // the largest double has 309 of them before the point
  const auto end = std::to_chars(digits.begin(), digits.end(), *value, std::chars_format::fixed, decimals).ptr;
  return {digits.begin(), end};
}
