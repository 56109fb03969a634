// SPDX-License-Identifier: Apache-2.0
#include "web/WebText.h"

#include <text/UTF8.h>

#include <array>

namespace policy {

namespace {

using namespace std::string_view_literals;

/// The characters, as UTF-8, that turn the direction of the text after them.
constexpr std::array kTurns = {"\u202A"sv, "\u202B"sv, "\u202C"sv, "\u202D"sv, "\u202E"sv,
                               "\u2066"sv, "\u2067"sv, "\u2068"sv, "\u2069"sv};
constexpr std::array kLineEnds = {"\u2028"sv, "\u2029"sv};

/// The length of the one of `characters` that `text` begins with; 0: none.
template <std::size_t count>
std::size_t beginsWith(std::string_view text, const std::array<std::string_view, count>& characters) {
  for (const std::string_view character : characters) {
    if (text.starts_with(character)) return character.size();
  }
  return 0;
}

std::size_t controlAt(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x20 || first == 0x7F) return 1;
  const bool isLate = first == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0;  // U+0080 on
  return isLate ? 2 : beginsWith(text, kLineEnds);
}

bool isWithinCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

}  // namespace

std::string shownText(std::string_view text, std::size_t mostBytes) {
  std::size_t end = text.size();
  if (end > mostBytes) {
    end = mostBytes;
    while (end > 0 && isWithinCharacter(text[end])) --end;
  }
  std::string shown;
  for (std::size_t at = 0; at < end;) {
    const std::string_view rest = text.substr(at, end - at);
    if (const std::size_t turn = beginsWith(rest, kTurns)) {
      at += turn;
    } else if (const std::size_t control = controlAt(rest)) {
      shown += ' ';
      at += control;
    } else if (const std::size_t length = text::sequenceLength(rest)) {
      shown += rest.substr(0, length);
      at += length;
    } else {
      shown += ' ';  // or bytes on both sides of what is left out could be one that is not
      ++at;
    }
  }
  return end < text.size() ? shown + "…" : shown;
}

std::string shownHost(std::string_view address) {
  const std::size_t slashes = address.find("://");
  const bool hasHost = slashes != std::string_view::npos && slashes < address.find_first_of("/?#");
  const std::string_view rest = hasHost ? address.substr(slashes + 3) : address;
  std::string_view host = rest.substr(0, rest.find_first_of(hasHost ? "/?#\\" : "?#"));
  if (hasHost) host.remove_prefix(host.rfind('@') + 1);  // npos + 1 is 0
  return std::string(host.empty() ? address.substr(0, address.find_first_of("?#")) : host);
}

}  // namespace policy
