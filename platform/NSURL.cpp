// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSURL.h>
#include <text/ASCII.h>

#include <array>
#include <cstddef>
#include <string_view>

#include "URLCharacters.h"

namespace {

enum class Role : unsigned char { refused, plain, percent, hash };

constexpr std::array<Role, 256> makeRoles() {
  std::array<Role, 256> roles{};
  for (std::size_t byte = 0; byte < roles.size(); ++byte) {
    const bool isPlain = isLegalURLCharacter(static_cast<unsigned char>(byte)) || byte == '[' || byte == ']';
    roles[byte] = isPlain ? Role::plain : Role::refused;
  }
  roles['%'] = Role::percent;
  roles['#'] = Role::hash;
  return roles;
}

constexpr std::array<Role, 256> kRoles = makeRoles();

bool isAddress(std::string_view text) {
  bool sawHash = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    switch (kRoles[static_cast<unsigned char>(text[i])]) {
      case Role::plain:
        break;
      case Role::percent:
        if (text.size() - i < 3 || !text::isHexDigit(text[i + 1]) || !text::isHexDigit(text[i + 2])) return false;
        break;
      case Role::hash:
        if (sawHash) return false;
        sawHash = true;
        break;
      case Role::refused:
        return false;
    }
  }
  return true;
}

}  // namespace

std::optional<NSURL> NSURL::URLWithString(std::string text) {
  if (!isAddress(text)) return std::nullopt;
  return NSURL(std::move(text));
}
