// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WEBADDRESS_H
#define ZRCORE_HOSTS_DEMO_WEBADDRESS_H

#include <ZRCore/NSURL.h>

#include <optional>
#include <string>
#include <string_view>

namespace demo {

/// The address that a person means: blanks around it do not count, and one without a scheme is a secure web page.
/// @return nullopt for what cannot be an address, or is none of the web.
std::optional<NSURL> webAddress(std::string_view typed);

/// Why `typed` is not such an address, in a sentence that names it.
std::string webAddressFault(std::string_view typed);

}  // namespace demo

#endif
