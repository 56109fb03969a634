// SPDX-License-Identifier: Apache-2.0
#include "web/WebNavigation.h"

#include <text/ASCII.h>

#include <algorithm>
#include <array>

namespace policy {

namespace {

/// The scheme in lower case (RFC 3986); empty for an address without one.
std::string schemeOf(std::string_view address) {
  const auto end = address.find(':');
  if (end == std::string_view::npos) return {};
  const std::string_view scheme = address.substr(0, end);
  const auto mayStand = [](char c) { return text::isAlphanumeric(c) || c == '+' || c == '-' || c == '.'; };
  return std::ranges::all_of(scheme, mayStand) ? text::lowerCase(std::string(scheme)) : std::string();
}

bool mayGoOutside(std::string_view scheme) {
  constexpr std::array<std::string_view, 11> kInside = {
      "", "about", "blob", "data", "file", "ftp", "javascript", "resource", "vbscript", "view-source", "webkit"};
  return std::find(kInside.begin(), kInside.end(), scheme) == kInside.end();
}

}  // namespace

WebNavigationDecision decide(const WebNavigation& navigation, const WebSchemes& schemes) {
  const std::string scheme = schemeOf(navigation.address);
  const auto isOneOf = [&scheme](const std::vector<std::string>& named) {
    return std::find(named.begin(), named.end(), scheme) != named.end();
  };
  if (navigation.purpose == WebNavigation::Purpose::page && isOneOf(schemes.loaded)) return WebNavigationDecision::load;
  if (!navigation.isUsersWish || !mayGoOutside(scheme)) return WebNavigationDecision::refuse;
  return isOneOf(schemes.outside) ? WebNavigationDecision::openOutside : WebNavigationDecision::askFirst;
}

}  // namespace policy
