// SPDX-License-Identifier: Apache-2.0
#include "web/MailtoAddress.h"

#include <text/ASCII.h>

#include <cstddef>

namespace policy {

namespace {

constexpr std::size_t kLongestSubject = 200;
constexpr std::size_t kLongestBody = 10000;

bool isUnreserved(char c) { return text::isAlphanumeric(c) || c == '-' || c == '.' || c == '_' || c == '~'; }

void appendEscaped(std::string& out, std::string_view text, std::size_t longest, std::string_view lineBreak) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::size_t characters = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    const bool beginsCharacter = (c & 0xC0U) != 0x80U;
    if (beginsCharacter && ++characters > longest) return;
    if (c == '\n' || c == '\r') {
      if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
      out += lineBreak;
    } else if (isUnreserved(text[i])) {
      out += text[i];
    } else if ((c >= 0x20 && c != 0x7F) || c == '\t') {
      out += {'%', kDigits[c >> 4U], kDigits[c & 0xFU]};
    }
  }
}

}  // namespace

std::string mailtoAddress(std::string_view subject, std::string_view body) {
  std::string address = "mailto:?subject=";
  appendEscaped(address, subject, kLongestSubject, "%20");
  address += "&body=";
  appendEscaped(address, body, kLongestBody, "%0D%0A");
  return address;
}

}  // namespace policy
