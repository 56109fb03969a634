// SPDX-License-Identifier: Apache-2.0
#include "StrictNumber.h"

#include <mapping/NumberText.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

/// Takes the decimal digits off the front. @return how many there were.
std::size_t takeDigits(std::string_view& text) {
  const std::size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
  text.remove_prefix(count);
  return count;
}

bool takeOneOf(std::string_view& text, std::string_view characters) {
  if (text.empty() || characters.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

bool isDecimalNumber(std::string_view text) {
  takeOneOf(text, "-");
  std::size_t digits = takeDigits(text);
  if (takeOneOf(text, ".")) digits += takeDigits(text);
  if (digits == 0) return false;
  if (takeOneOf(text, "eE")) {
    takeOneOf(text, "+-");
    if (takeDigits(text) == 0) return false;
  }
  return text.empty();
}

}  // namespace

std::optional<double> strictNumber(std::string_view text) noexcept {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  if (!isDecimalNumber(text)) return std::nullopt;
  const double value = doublePrefix(text);
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}
