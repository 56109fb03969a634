// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MODEL_TEXT_H
#define ZRCORE_MODEL_TEXT_H

#include <algorithm>
#include <cstddef>
#include <string_view>

/// How many characters (code points) the text, UTF-8, has.
inline std::size_t characterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

inline char asciiLowerCase(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

/// Whether the text is `lowerCase` when its Latin capitals are written small.
inline bool isInAnyCase(std::string_view text, std::string_view lowerCase) {
  return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(),
                    [](char ours, char theirs) { return asciiLowerCase(ours) == theirs; });
}

#endif
