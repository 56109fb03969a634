// SPDX-License-Identifier: Apache-2.0
#include "PercentEscape.h"

#include <platform/URLCharacters.h>
#include <text/UTF8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace {

/// What a byte becomes: one character, or "%" and two digits. In the order of memory, so that four bytes are copied at
/// once; the last tells how many of the others count.
struct Escape {
  char text[3];
  unsigned char length;
};
static_assert(sizeof(Escape) == 4);

using EscapeTable = std::array<Escape, 256>;

constexpr EscapeTable makeTable(std::string_view leftAlone) {
  constexpr std::string_view kEscapedThoughLegal = ":/?&=;+!@#$()',*";
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  EscapeTable table{};
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    const char c = static_cast<char>(byte);
    const bool passes =
        isLegalURLCharacter(static_cast<unsigned char>(byte)) && kEscapedThoughLegal.find(c) == std::string_view::npos;
    if (passes || leftAlone.find(c) != std::string_view::npos) {
      table[byte] = {{c, 0, 0}, 1};
    } else {
      table[byte] = {{'%', kHexDigits[byte >> 4U], kHexDigits[byte & 0xFU]}, 3};
    }
  }
  return table;
}

constexpr EscapeTable kValueTable = makeTable("%");
constexpr EscapeTable kKeyTable = makeTable("%[].");

const EscapeTable& tableOf(QueryPart part) { return part == QueryPart::value ? kValueTable : kKeyTable; }

bool isUTF8(std::string_view text) {
  while (!text.empty()) {
    // Eight bytes of ASCII at once; else characters, until eight bytes are passed.
    std::uint64_t eight = 0;
    if (text.size() >= sizeof eight) {
      std::memcpy(&eight, text.data(), sizeof eight);
      if ((eight & 0x8080808080808080U) == 0) {
        text.remove_prefix(sizeof eight);
        continue;
      }
    }
    for (std::size_t passed = 0; passed < sizeof eight && !text.empty();) {
      const std::size_t length = text::sequenceLength(text);
      if (length == 0) return false;
      text.remove_prefix(length);
      passed += length;
    }
  }
  return true;
}

/// Whether letters, digits and "-._~" are left alone everywhere, on which the next function relies.
constexpr bool leavesPlainCharactersAlone(const EscapeTable& table) {
  for (const char c : std::string_view("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~")) {
    if (table[static_cast<unsigned char>(c)].length != 1) return false;
  }
  return true;
}
static_assert(leavesPlainCharactersAlone(kValueTable) && leavesPlainCharactersAlone(kKeyTable));

/// How many bytes at the beginning are plain characters: a multiple of 16, so that 16 are judged at once.
std::size_t plainPrefix(std::string_view text) {
  using Bytes [[gnu::vector_size(16)]] = unsigned char;
  using Words [[gnu::vector_size(16)]] = std::uint64_t;
  std::size_t length = 0;
  for (; text.size() - length >= sizeof(Bytes); length += sizeof(Bytes)) {
    Bytes of;
    std::memcpy(&of, text.data() + length, sizeof of);
    const auto isPlain =
        (((of | 0x20) - 'a') <= 25) | ((of - '0') <= 9) | (of == '-') | (of == '.') | (of == '_') | (of == '~');
    const auto words = reinterpret_cast<Words>(isPlain);
    if ((words[0] & words[1]) != ~std::uint64_t{0}) break;
  }
  return length;
}

/// Texts of up to this size are escaped without having been measured.
constexpr std::size_t kChunk = 4096;
constexpr std::size_t kShort = 128;  // for which less of the stack is touched

/// Escapes. @param begin  has room for three times as many, and one more. @return how much it took.
std::size_t escapeChunk(std::string_view chunk, const EscapeTable& table, char* const begin) {
  char* out = begin;
  for (const char c : chunk) {
    // Copied whole, because a branch on the length would be foreseen by no processor.
    const Escape& escape = table[static_cast<unsigned char>(c)];
    std::memcpy(out, &escape, sizeof escape);
    out += escape.length;
  }
  return static_cast<std::size_t>(out - begin);
}

template <std::size_t kSize>
void appendChunks(std::string& to, std::string_view text, const EscapeTable& table) {
  std::array<char, 3 * kSize + 1> buffer;
  for (; !text.empty(); text.remove_prefix(std::min(kSize, text.size()))) {
    to.append(buffer.data(), escapeChunk(text.substr(0, kSize), table, buffer.data()));
  }
}

}  // namespace

std::size_t escapedLength(std::string_view text, QueryPart part) noexcept {
  const EscapeTable& table = tableOf(part);
  std::size_t length = 0;
  for (const char c : text) length += table[static_cast<unsigned char>(c)].length;
  return length;
}

bool appendEscaped(std::string& to, std::string_view text, QueryPart part) {
  const std::size_t plain = plainPrefix(text);
  const std::string_view rest = text.substr(plain);
  if (!isUTF8(rest)) return false;
  if (text.size() > kChunk) to.reserve(to.size() + plain + escapedLength(rest, part));
  to.append(text.substr(0, plain));
  if (rest.size() <= kShort) {
    appendChunks<kShort>(to, rest, tableOf(part));
  } else {
    appendChunks<kChunk>(to, rest, tableOf(part));
  }
  return true;
}

std::optional<std::size_t> escapeInto(char* buffer, std::size_t capacity, std::string_view text, QueryPart part) {
  if (!isUTF8(text)) return std::nullopt;
  if (capacity > 3 * text.size()) return escapeChunk(text, tableOf(part), buffer);
  const std::size_t length = escapedLength(text, part);
  for (std::size_t written = 0; length <= capacity && !text.empty(); text.remove_prefix(1)) {
    const Escape& escape = tableOf(part)[static_cast<unsigned char>(text.front())];
    std::memcpy(buffer + written, escape.text, escape.length);
    written += escape.length;
  }
  return length;
}
