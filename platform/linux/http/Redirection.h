// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_HTTP_REDIRECTION_H
#define ZRCORE_LINUX_HTTP_REDIRECTION_H

#include <string>

/// What following a redirection would give away.
struct Redirection {
  bool leavesTLS = false;     ///< from https to http
  bool leavesOrigin = false;  ///< to another scheme, host or port, or nobody can tell where
};

/// @param from      the address that answers
/// @param location  where to, as the answer has it: an address, or one relative to `from`. Pure.
Redirection redirection(const std::string& from, const std::string& location);

#endif
