// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_WEB_WEBTEXT_H
#define ZRCORE_POLICY_WEB_WEBTEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace policy {

/// A page's text as a bar or a dialogue of the host's may show it: one line of at most `mostBytes`, then "…"; controls,
/// line ends and bytes that are no UTF-8 are blanks, and the characters that turn the direction of what follows (U+202A
/// to U+202E, U+2066 to U+2069) are left out: with them a title could pass for an address. Writing from right to left
/// stays as it is.
std::string shownText(std::string_view text, std::size_t mostBytes);

/// Whose page an address leads to: "example.org", "example.org:8080", "[::1]:80". A name and a password in front of it
/// do not count. An address without a host is shown up to its first "?" or "#": "about:blank".
std::string shownHost(std::string_view address);

}  // namespace policy

#endif
