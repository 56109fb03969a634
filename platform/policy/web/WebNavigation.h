// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_POLICY_WEB_WEBNAVIGATION_H
#define ZRCORE_PLATFORM_POLICY_WEB_WEBNAVIGATION_H

#include <string>
#include <string_view>
#include <vector>

namespace policy {

/// What a page, or the host, wants of an address.
struct WebNavigation {
  enum class Purpose {
    page,      ///< to be shown in this view
    window,    ///< to be shown in a window of its own
    download,  ///< to be kept as a file
  };

  std::string_view address;
  Purpose purpose = Purpose::page;
  bool isUsersWish = false;  ///< follows from a click, a key or the host, not from a script alone
};

enum class WebNavigationDecision { load, openOutside, refuse };

/// Decides for a view that loads the schemes `loaded` (lower case) itself. What else a user asks for goes to the
/// system's own program for it, and so does every new window and every download; what a script alone asks for is
/// refused, so that a page can start no programs. Addresses that lead into this computer, or that mean something only
/// within the page, never go outside.
WebNavigationDecision decide(const WebNavigation& navigation, const std::vector<std::string>& loaded);

}  // namespace policy

#endif
