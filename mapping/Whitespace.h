#ifndef ZRCORE_MAPPING_WHITESPACE_H
#define ZRCORE_MAPPING_WHITESPACE_H

#include <cstddef>
#include <string_view>

/// The length in bytes, 1 to 3, of the UTF-8 sequence that `bytes` begins with, when that is one of the platform's 26
/// whitespace and newline characters; else 0. They are U+0009 to U+000D, U+0020, U+0085, U+00A0, U+1680, U+2000 to
/// U+200B (the zero width space is among them), U+2028, U+2029, U+202F, U+205F and U+3000; U+FEFF is none.
constexpr std::size_t whitespaceLength(std::string_view bytes) noexcept {
  const auto at = [&](std::size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U; };
  const unsigned first = at(0);
  if ((first >= 0x09 && first <= 0x0D) || first == ' ') return 1;
  if (first == 0xC2) return at(1) == 0x85 || at(1) == 0xA0 ? 2 : 0;
  if (first < 0xE1 || first > 0xE3) return 0;
  const unsigned rest = at(1) << 8U | at(2);
  if (first == 0xE1) return rest == 0x9A80 ? 3 : 0;
  if (first == 0xE3) return rest == 0x8080 ? 3 : 0;
  const bool isSpace =
      (rest >= 0x8080 && rest <= 0x808B) || rest == 0x80A8 || rest == 0x80A9 || rest == 0x80AF || rest == 0x819F;
  return isSpace ? 3 : 0;
}

/// `text` without the whitespace and newline characters at both ends. Looks at whole characters of UTF-8; bytes that
/// are none are kept.
constexpr std::string_view trimmedOfWhitespace(std::string_view text) noexcept {
  while (const std::size_t length = whitespaceLength(text)) text.remove_prefix(length);
  for (std::size_t length = 1; length <= 3 && length <= text.size();) {
    if (whitespaceLength(text.substr(text.size() - length)) == length) {
      text.remove_suffix(length);
      length = 1;
    } else {
      ++length;
    }
  }
  return text;
}

#endif
