// SPDX-License-Identifier: Apache-2.0
#include "WebAddress.h"

#include <ZRCore/NSString_ZR.h>
#include <text/ASCII.h>
#include <trip/OutputText.h>

#include <string>

namespace demo {

namespace {

/// The scheme in small letters; empty where there is none: "example.com:8080" has a port.
std::string schemeOf(const std::string& address) {
  const std::size_t colon = address.find_first_of(":/?#[");  // a path, a query or an IPv6 address may have colons too
  if (colon == std::string::npos || address[colon] != ':') return {};
  const bool isPort = colon + 1 < address.size() && text::isDigit(address[colon + 1]);
  if (isPort) return {};
  return text::lowerCase(address.substr(0, colon));
}

}  // namespace

std::optional<NSURL> webAddress(std::string_view typed) {
  std::string address = NSString_ZR::stripWhitespace(typed);
  const std::string scheme = schemeOf(address);
  if (scheme.empty()) address = "https://" + address;
  const std::size_t slashes = address.find("://");
  const std::size_t host = slashes == std::string::npos ? address.size() : slashes + 3;
  const bool hasHost = host < address.size() && address[host] != '/' && address[host] != '?' && address[host] != '#';
  const bool isOfTheWeb = scheme == "about" || ((scheme.empty() || scheme == "http" || scheme == "https") && hasHost);
  return isOfTheWeb ? NSURL::URLWithString(address) : std::nullopt;
}

std::string webAddressFault(std::string_view typed) {
  constexpr std::size_t kMostShown = 80;
  const std::string address = NSString_ZR::stripWhitespace(typed);
  if (address.empty()) return "Type an address, for instance example.org.";
  const bool isLong = address.size() > kMostShown;
  return "\u201C" + trip::asUtf8(address.substr(0, kMostShown)) + (isLong ? "…" : "") +
         "\u201D cannot be opened: it is no address of the web, such as example.org.";
}

}  // namespace demo
