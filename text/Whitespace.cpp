// SPDX-License-Identifier: Apache-2.0
#include "Whitespace.h"

#include <cstddef>

namespace {

/// Whether these three bytes are a white space of U+1680 to U+3000.
bool isWideSpace(std::string_view bytes) noexcept {
  if (bytes == "\xE1\x9A\x80" || bytes == "\xE2\x81\x9F" || bytes == "\xE3\x80\x80") return true;
  if (bytes.substr(0, 2) != "\xE2\x80") return false;
  const auto last = static_cast<unsigned char>(bytes[2]);
  return (last >= 0x80 && last <= 0x8B) || last == 0xA8 || last == 0xA9 || last == 0xAF;
}

/// Whether these bytes are one character of white space.
bool isSpace(std::string_view bytes) noexcept {
  if (bytes.size() == 1) return bytes[0] == ' ' || (bytes[0] >= '\t' && bytes[0] <= '\r');
  if (bytes.size() == 2) return bytes == "\xC2\x85" || bytes == "\xC2\xA0";
  return isWideSpace(bytes);
}

constexpr std::size_t kLongestSpace = 3;

}  // namespace

std::string_view text::trimmedOfWhitespace(std::string_view text) noexcept {
  for (std::size_t length = 1; length <= kLongestSpace && length <= text.size();) {
    if (isSpace(text.substr(0, length))) {
      text.remove_prefix(length);
      length = 1;
    } else {
      ++length;
    }
  }
  for (std::size_t length = 1; length <= kLongestSpace && length <= text.size();) {
    if (isSpace(text.substr(text.size() - length))) {
      text.remove_suffix(length);
      length = 1;
    } else {
      ++length;
    }
  }
  return text;
}
