#include "PercentEscape.h"

#include <platform/URLCharacters.h>

#include <array>
#include <cstdint>

namespace {

/// 1 for each byte that is to be escaped, for adding up.
using EscapeTable = std::array<std::uint8_t, 256>;

constexpr EscapeTable makeTable(std::string_view leftAlone) {
  constexpr std::string_view kEscapedThoughLegal = ":/?&=;+!@#$()',*";
  EscapeTable table{};
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    const char c = static_cast<char>(byte);
    const bool passes =
        isLegalURLCharacter(static_cast<unsigned char>(byte)) && kEscapedThoughLegal.find(c) == std::string_view::npos;
    table[byte] = passes || leftAlone.find(c) != std::string_view::npos ? 0 : 1;
  }
  return table;
}

constexpr EscapeTable kValueTable = makeTable("%");
constexpr EscapeTable kKeyTable = makeTable("%[].");

const EscapeTable& tableOf(QueryPart part) { return part == QueryPart::value ? kValueTable : kKeyTable; }

/// The length of the UTF-8 sequence that `text` begins with; 0 when it begins with none (RFC 3629: no overlong forms,
/// no surrogates, nothing past U+10FFFF).
std::size_t sequenceLength(std::string_view text) {
  const auto at = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const auto continues = [&](std::size_t i) { return (at(i) & 0xC0U) == 0x80U; };
  const unsigned first = at(0);
  const unsigned second = at(1);
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return continues(1) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const bool isOddRange = (first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F);
    return !isOddRange && continues(1) && continues(2) ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const bool isOddRange = (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F);
    return !isOddRange && continues(1) && continues(2) && continues(3) ? 4 : 0;
  }
  return 0;
}

bool isUTF8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = sequenceLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace

std::optional<std::size_t> escapedLength(std::string_view text, QueryPart part) noexcept {
  const EscapeTable& table = tableOf(part);
  std::size_t escapes = 0;
  unsigned allBits = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    escapes += table[byte];
    allBits |= byte;
  }
  if ((allBits & 0x80U) != 0 && !isUTF8(text)) return std::nullopt;
  return text.size() + 2 * escapes;
}

bool appendEscaped(std::string& to, std::string_view text, QueryPart part) {
  const auto length = escapedLength(text, part);
  if (!length) return false;
  if (*length == text.size()) {
    to.append(text);
    return true;
  }
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  const EscapeTable& table = tableOf(part);
  const std::size_t start = to.size();
  to.resize(start + *length);
  char* out = to.data() + start;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (table[byte] == 0) {
      *out++ = c;
    } else {
      *out++ = '%';
      *out++ = kHexDigits[byte >> 4U];
      *out++ = kHexDigits[byte & 0xFU];
    }
  }
  return true;
}
