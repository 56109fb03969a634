// SPDX-License-Identifier: Apache-2.0
#include "JSONBytes.h"

namespace {

constexpr std::size_t kLongestWord = 65536;

bool isBlankByte(char byte) { return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t'; }

bool isStructure(char byte) { return std::string_view(",:[]{}").find(byte) != std::string_view::npos; }

}  // namespace

bool isOrdinary(std::string_view document) {
  for (std::size_t at = 0; at + kLongestWord <= document.size(); at += kLongestWord) {
    const std::string_view piece = document.substr(at, kLongestWord);
    const bool hasWord = piece.find_last_of("\"0123456789-") != piece.npos;
    const bool hasEnd = piece.find_last_not_of("0123456789-+.eE") != piece.npos;
    if (!hasWord || !hasEnd) return false;
  }
  return true;
}

bool JSONBytes::isBlank() const { return !isInText_ && isBlankByte(document_[at_]); }

void JSONBytes::advance() {
  const char byte = document_[at_];
  last_ = at_++;
  ++given_;
  if (isInText_) {
    isInText_ = byte != '"' || isEscaped_;
    isEscaped_ = byte == '\\' && !isEscaped_;
    wordBegin_ = at_;
    return;
  }
  isInText_ = byte == '"';
  if (isBlankByte(byte)) {
    while (at_ != document_.size() && isBlankByte(document_[at_])) ++at_;
  }
  if (isBlankByte(byte) || isStructure(byte)) wordBegin_ = at_;
  if (at_ - wordBegin_ > kLongestWord) {
    isCutOff_ = true;
    document_ = document_.substr(0, at_);
  }
}
