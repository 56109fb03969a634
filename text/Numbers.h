// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TEXT_NUMBERS_H
#define ZRCORE_TEXT_NUMBERS_H

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace text {

/// The number that the whole of a text is: digits, with a "-" before them where the type has a sign. Nothing when it
/// does not fit the type. A floating-point number may be "inf" or "nan".
/// @param how  the base of a whole number, the format of another; as `std::from_chars` has it
template <class Number, class... How>
std::optional<Number> numberIn(std::string_view text, How... how) {
  Number number{};
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number, how...);
  return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

}  // namespace text

#endif
