// SPDX-License-Identifier: Apache-2.0
#include "NumberText.h"

#include <text/ASCII.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;

/// More than any text has digits: an exponent this large decides whatever stands before it.
constexpr long long kMostDigits = 1LL << 40;

std::string_view withoutLeadingBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  return text;
}

/// Takes a sign off. @return whether it was a minus.
bool takeSign(std::string_view& text) {
  const bool isMinus = text.starts_with('-');
  if (isMinus || text.starts_with('+')) text.remove_prefix(1);
  return isMinus;
}

/// Whether the magnitude of a decimal number beyond the range of doubles is large, and not next to nothing.
bool isHuge(std::string_view number) {
  const std::size_t exponentMark = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, exponentMark);
  std::string_view exponent = number.substr(std::min(exponentMark + 1, number.size()));
  const bool isNegative = takeSign(exponent);
  long long shift = 0;
  const auto end = exponent.data() + exponent.size();
  if (std::from_chars(exponent.data(), end, shift).ec == std::errc::result_out_of_range) shift = kMostDigits;
  shift = std::min(shift, kMostDigits);  // so that the sum below cannot overflow
  if (isNegative) shift = -shift;
  // The power of ten of the first digit that counts.
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::size_t first = std::min(digits.find_first_of("123456789"), digits.size());
  return static_cast<long long>(point) - static_cast<long long>(first) + shift > 0;
}

}  // namespace

double doublePrefix(std::string_view text) noexcept {
  text = withoutLeadingBlanks(text);
  const bool isNegative = takeSign(text);
  // from_chars also reads "inf", "nan" and another sign, which are not numbers here.
  const std::size_t firstDigit = text.starts_with('.') ? 1 : 0;
  if (text.size() <= firstDigit || !text::isDigit(text[firstDigit])) return 0.0;
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    const std::string_view number = text.substr(0, static_cast<std::size_t>(end - text.data()));
    value = isHuge(number) ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return isNegative ? -value : value;
}

std::uint64_t integerPrefixBits(std::string_view text) noexcept {
  text = withoutLeadingBlanks(text);
  const bool isNegative = takeSign(text);
  if (text.empty() || !text::isDigit(text.front())) return 0;
  constexpr std::uint64_t kLowest = std::uint64_t{1} << 63;
  std::uint64_t magnitude = 0;
  const bool isTooLong =
      std::from_chars(text.data(), text.data() + text.size(), magnitude).ec == std::errc::result_out_of_range;
  if (isTooLong) magnitude = std::numeric_limits<std::uint64_t>::max();
  return isNegative ? 0 - std::min(magnitude, kLowest) : magnitude;
}

std::uint64_t truncatedBits(double value) noexcept {
  if (std::isnan(value)) return 0;
  if (value >= 2.0 * kTwoTo63) return std::numeric_limits<std::uint64_t>::max();
  if (value >= 0.0) return static_cast<std::uint64_t>(value);
  if (value <= -kTwoTo63) return std::uint64_t{1} << 63;
  return static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
}

std::string doubleText(double value) {
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 16);
  return {text, result.ptr};
}
