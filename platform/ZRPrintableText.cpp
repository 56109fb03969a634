// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPrintableText.h>
#include <text/UTF8.h>

namespace {

/// U+0080 to U+009F, which terminals may obey as they obey escape sequences.
bool isControlOfTwoBytes(std::string_view character) {
  return character[0] == '\xC2' && static_cast<unsigned char>(character[1]) < 0xA0;
}

bool isLineOrDirection(std::string_view character) {
  const auto last = static_cast<unsigned char>(character[2]);
  if (character.starts_with("\xE2\x80")) return last >= 0xA8 && last <= 0xAE;  // U+2028 to U+202E
  return character.starts_with("\xE2\x81") && last >= 0xA6 && last <= 0xA9;    // U+2066 to U+2069
}

void appendEscaped(std::string& to, char c) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  to.append("\\x").append(1, kDigits[byte >> 4U]).append(1, kDigits[byte & 0xFU]);
}

}  // namespace

std::size_t ZRPrintableLength(std::string_view text) noexcept {
  const std::size_t length = text::sequenceLength(text);
  if (length == 1) return text[0] >= 0x20 && text[0] != 0x7F ? 1 : 0;
  if (length == 2 && isControlOfTwoBytes(text)) return 0;
  if (length == 3 && isLineOrDirection(text)) return 0;
  return length;
}

std::string ZRPrintableText(std::string_view text, std::size_t mostBytes) {
  std::string shown;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = ZRPrintableLength(text.substr(at, 4));
    const std::size_t taken = length > 0 ? length : 1;
    if (at + taken > mostBytes) return shown += "...";
    if (length > 0) {
      shown.append(text.substr(at, length));
    } else {
      appendEscaped(shown, text[at]);
    }
    at += taken;
  }
  return shown;
}
