// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_HTTP_TRANSFEROPTIONS_H
#define ZRCORE_LINUX_HTTP_TRANSFEROPTIONS_H

#include <cstdint>
#include <string>

/// What a session gives its requests; ZRLinuxOptions has the words for it.
struct TransferOptions {
  std::uint64_t longestBodyBytes = 64ULL << 20;
  double longestRequestSeconds = 0.0;  ///< 0: no limit
  std::uint32_t mostConnectionsPerHost = 6;
  std::string certificatesFile = {};  ///< empty: the system's
};

#endif
