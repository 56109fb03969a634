// SPDX-License-Identifier: Apache-2.0
#include "TileTemplate.h"

#include <ZRCore/NSString_ZR.h>
#include <ZRCore/ZRPrintableText.h>
#include <text/ASCII.h>

#include <algorithm>
#include <array>

namespace demo {

namespace {

constexpr std::string_view kExample = "https://tiles.example.org/{z}/{x}/{y}.png";

TileSourceError errorOf(std::string_view text, const std::string& fault) {
  return TileSourceError("\u201C" + ZRPrintableText(text, ZRLongestExcerpt) + "\u201D " + fault +
                         ". An address of tiles looks like " + std::string(kExample) + ".");
}

/// The name in braces that begins at `at`, braces included; empty when they do not close.
std::string_view placeholderAt(std::string_view text, std::size_t at) {
  const std::size_t end = text.find('}', at);
  return end == std::string_view::npos ? std::string_view() : text.substr(at, end + 1 - at);
}

void requirePlaceholders(std::string_view text) {
  constexpr std::array<std::string_view, 4> kKnown{"{z}", "{x}", "{y}", "{-y}"};
  for (std::size_t at = text.find('{'); at != std::string_view::npos; at = text.find('{', at + 1)) {
    const std::string_view name = placeholderAt(text, at);
    if (name.empty()) throw errorOf(text, "has a brace that does not close");
    if (std::ranges::find(kKnown, name) != kKnown.end()) continue;
    throw errorOf(text, "has " + ZRPrintableText(name, ZRLongestExcerpt) +
                            ", which is not known here: write what the server's page gives for it");
  }
  const auto lacks = [text](std::string_view name) { return text.find(name) == std::string_view::npos; };
  if (lacks("{z}")) throw errorOf(text, "does not say where the zoom level stands ({z})");
  if (lacks("{x}")) throw errorOf(text, "does not say where the column stands ({x})");
  if (lacks("{y}") && lacks("{-y}")) throw errorOf(text, "does not say where the row stands ({y})");
}

}  // namespace

TileTemplate::TileTemplate(std::string_view text) : text_(NSString_ZR::stripWhitespace(text)) {
  requirePlaceholders(text_);
  if (!NSURL::URLWithString(expanded({}))) {
    throw errorOf(text_, "has characters that may not stand in an address, such as blanks");
  }
}

TileTemplate TileTemplate::ofServer(std::string_view text) {
  TileTemplate address(text);
  const std::string scheme = text::lowerCase(address.text_.substr(0, address.text_.find("://")));
  if (scheme != "http" && scheme != "https") throw errorOf(address.text_, "begins with neither http:// nor https://");
  const std::string host = address.host();
  if (host.empty()) throw errorOf(address.text_, "names no server");
  if (host.find('{') != std::string::npos) throw errorOf(address.text_, "has a tile's place in the server's name");
  return address;
}

NSURL TileTemplate::addressOf(const Tile& tile) const { return *NSURL::URLWithString(expanded(tile)); }

std::string TileTemplate::host() const {
  const std::size_t slashes = text_.find("://");
  if (slashes == std::string::npos) return {};
  std::string authority = text_.substr(slashes + 3);
  authority.resize(std::min(authority.find_first_of("/?#"), authority.size()));
  authority.erase(0, authority.rfind('@') + 1);  // without one: nothing
  const bool isIPv6 = authority.starts_with('[');
  authority.resize(std::min(isIPv6 ? authority.find(']') + 1 : authority.find(':'), authority.size()));
  return authority;
}

std::string TileTemplate::expanded(const Tile& tile) const {
  std::string address;
  for (std::size_t at = 0; at < text_.size();) {
    if (text_[at] != '{') {
      address += text_[at++];
      continue;
    }
    const std::string_view name = placeholderAt(text_, at);
    const std::int32_t rows = std::int32_t{1} << tile.zoom;
    const std::int32_t number = name == "{z}"   ? tile.zoom
                                : name == "{x}" ? tile.column
                                : name == "{y}" ? tile.row
                                                : rows - 1 - tile.row;
    address += std::to_string(number);
    at += name.size();
  }
  return address;
}

}  // namespace demo
