// SPDX-License-Identifier: Apache-2.0
#include "TextDecoder.h"

#include <utility>

namespace readers {

void TextDecoder::tell() {
  encoding_ = Encoding::asItIs;
  if (held_.starts_with("\xFF\xFE") && held_[3] == '\0') encoding_ = Encoding::utf16LittleEnd;
  if (held_.starts_with("\xFE\xFF") && held_[2] == '\0') encoding_ = Encoding::utf16BigEnd;
  if (encoding_ != Encoding::asItIs) held_.erase(0, 2);
}

/// What is held, decoded, but for half a character.
std::string TextDecoder::taken() {
  if (encoding_ == Encoding::asItIs) return std::exchange(held_, {});
  const std::size_t low = encoding_ == Encoding::utf16LittleEnd ? 0 : 1;
  std::string text;
  text.reserve(held_.size() / 2);
  for (std::size_t at = 0; at + 1 < held_.size(); at += 2) {
    const char character = held_[at + low];
    const bool isAscii = held_[at + 1 - low] == '\0' && static_cast<unsigned char>(character) < 0x80;
    text += isAscii ? character : '?';
  }
  held_.erase(0, held_.size() / 2 * 2);
  return text;
}

}  // namespace readers
