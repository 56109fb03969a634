// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TEXT_UTF8_H
#define ZRCORE_TEXT_UTF8_H

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace text {

/// The length of the UTF-8 sequence that `text` begins with; 0 when it begins with none (RFC 3629: no overlong forms,
/// no surrogates, nothing past U+10FFFF).
constexpr std::size_t sequenceLength(std::string_view text) {
  const auto at = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const auto continues = [&](std::size_t i) { return (at(i) & 0xC0U) == 0x80U; };
  if (text.empty()) return 0;
  const unsigned first = at(0);
  const unsigned second = at(1);
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return continues(1) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const bool isOddRange = (first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F);
    return !isOddRange && continues(1) && continues(2) ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const bool isOddRange = (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F);
    return !isOddRange && continues(1) && continues(2) && continues(3) ? 4 : 0;
  }
  return 0;
}

/// How many characters (code points) the text, UTF-8, has.
constexpr std::size_t characterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

}  // namespace text

#endif
