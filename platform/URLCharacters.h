// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_URLCHARACTERS_H
#define ZRCORE_PLATFORM_URLCHARACTERS_H

#include <string_view>

/// Whether a byte may stand in a URL as it is: the letters, digits, unreserved and reserved marks of RFC 2396. Neither
/// "%" nor "#" nor any byte of a character beyond ASCII is among them.
constexpr bool isLegalURLCharacter(unsigned char byte) {
  const bool isAlphanumeric =
      (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
  constexpr std::string_view kMarks = "-_.!~*'();/?:@&=+$,";
  return isAlphanumeric || kMarks.find(static_cast<char>(byte)) != std::string_view::npos;
}

#endif
