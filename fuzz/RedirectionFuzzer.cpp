// SPDX-License-Identifier: Apache-2.0
// Any bytes as the address that a redirection leads to: nothing that leaves https or the origin passes for staying.
#include <cstdint>
#include <string>

#include "FuzzLaws.h"
#include "http/Redirection.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string location(reinterpret_cast<const char*>(data), size);
  if (location.find('\0') != std::string::npos) return 0;  // no header's value has one
  for (const std::string from : {"https://example.org/a/b?c#d", "http://user@[::1]:8080/"}) {
    const Redirection to = redirection(from, location);
    require(to.leavesOrigin || !to.leavesTLS, "who leaves https leaves the origin");
    require(from.starts_with("https") || !to.leavesTLS, "what is not in use cannot be left");
    const bool leadsElsewhere = location.starts_with("http://example.com") || location.starts_with("https://other.") ||
                                location.starts_with("//evil") || location.starts_with("ftp://");
    require(!leadsElsewhere || to.leavesOrigin, "another host is another origin");
    require(!from.starts_with("https") || !location.starts_with("http://") || to.leavesOrigin,
            "plain http is left https");
    const bool isPath = location.starts_with('/') && !location.starts_with("//") && !location.starts_with("/\\");
    const bool isPlain = location.find_first_not_of("/abcdefghijklmnopqrstuvwxyz0123456789.-_?=&") == location.npos;
    require(!isPath || !isPlain || !to.leavesOrigin, "a path of this host stays");
    const Redirection again = redirection(from, location + "#there");
    require(again.leavesOrigin == to.leavesOrigin && again.leavesTLS == to.leavesTLS,
            "a place in the page changes nothing");
  }
  std::string often;
  while (often.size() < 8 * size) often += location;
  requireLinear(often.size(), [&] { redirection("https://example.org/", often); });
  return 0;
}
