// SPDX-License-Identifier: Apache-2.0
#include "WebNavigation.h"

#include <algorithm>
#include <array>

namespace policy {

namespace {

/// The scheme in lower case (RFC 3986); empty for an address without one.
std::string schemeOf(std::string_view address) {
  const auto end = address.find(':');
  if (end == std::string_view::npos) return {};
  std::string scheme(address.substr(0, end));
  for (char& c : scheme) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    const bool mayStand = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
    if (!mayStand) return {};
  }
  return scheme;
}

bool mayGoOutside(std::string_view scheme) {
  constexpr std::array<std::string_view, 11> kInside = {
      "", "about", "blob", "data", "file", "ftp", "javascript", "resource", "vbscript", "view-source", "webkit"};
  return std::find(kInside.begin(), kInside.end(), scheme) == kInside.end();
}

}  // namespace

WebNavigationDecision decide(const WebNavigation& navigation, const std::vector<std::string>& loaded) {
  const std::string scheme = schemeOf(navigation.address);
  const bool isLoaded = std::find(loaded.begin(), loaded.end(), scheme) != loaded.end();
  if (navigation.purpose == WebNavigation::Purpose::page && isLoaded) return WebNavigationDecision::load;
  return navigation.isUsersWish && mayGoOutside(scheme) ? WebNavigationDecision::openOutside
                                                        : WebNavigationDecision::refuse;
}

}  // namespace policy
