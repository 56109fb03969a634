// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_URLCHARACTERS_H
#define ZRCORE_PLATFORM_URLCHARACTERS_H

#include <text/ASCII.h>

#include <string_view>

/// Whether a byte may stand in a URL as it is: the letters, digits, unreserved and reserved marks of RFC 2396. Neither
/// "%" nor "#" nor any byte of a character beyond ASCII is among them.
constexpr bool isLegalURLCharacter(unsigned char byte) {
  constexpr std::string_view kMarks = "-_.!~*'();/?:@&=+$,";
  const char c = static_cast<char>(byte);
  return text::isAlphanumeric(c) || kMarks.find(c) != std::string_view::npos;
}

#endif
