// SPDX-License-Identifier: Apache-2.0
/// @file
/// Letters, digits and blanks of ASCII, whatever the locale. Bytes of other characters are none of them.
#ifndef ZRCORE_TEXT_ASCII_H
#define ZRCORE_TEXT_ASCII_H

#include <algorithm>
#include <string>
#include <string_view>

namespace text {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool isSmall(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool isAlphanumeric(char c) { return isDigit(c) || isCapital(c) || isSmall(c); }
constexpr bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

constexpr char lowerCase(char c) { return isCapital(c) ? static_cast<char>(c - 'A' + 'a') : c; }
constexpr char upperCase(char c) { return isSmall(c) ? static_cast<char>(c - 'a' + 'A') : c; }

inline std::string lowerCase(std::string text) {
  for (char& c : text) c = lowerCase(c);
  return text;
}

inline std::string upperCase(std::string text) {
  for (char& c : text) c = upperCase(c);
  return text;
}

constexpr bool isSameInAnyCase(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char ours, char theirs) { return lowerCase(ours) == lowerCase(theirs); });
}

/// Without the blanks, tabs and line ends around it.
constexpr std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace text

#endif
