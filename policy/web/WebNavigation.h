// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_WEB_WEBNAVIGATION_H
#define ZRCORE_POLICY_WEB_WEBNAVIGATION_H

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

enum class WebNavigationDecision { load, openOutside, askFirst, refuse };

/// What a host lets its views do with addresses, by their schemes in lower case.
struct WebSchemes {
  std::vector<std::string> loaded;   ///< shown by the view itself
  std::vector<std::string> outside;  ///< handed to the system's program for them without a question
};

/// What a user asks for and the view does not show itself (every new window and every download too) goes to the
/// system's own program for it, after a question unless the host has named its scheme: a click on a page is not a wish
/// to start whatever program has registered itself for "ssh". What a script alone asks for is refused, so that a page
/// can start no programs and ask no questions. Addresses that lead into this computer, or that mean something only
/// within the page, never go outside.
WebNavigationDecision decide(const WebNavigation& navigation, const WebSchemes& schemes);

}  // namespace policy

#endif
