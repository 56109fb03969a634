// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_HTTP_TRANSFERLIMITS_H
#define ZRCORE_LINUX_HTTP_TRANSFERLIMITS_H

#include <cstdint>

/// What a session gives its requests; ZRLinuxOptions has the words for it.
struct TransferLimits {
  std::uint64_t longestBodyBytes = 64ULL << 20;
  double longestRequestSeconds = 0.0;  ///< 0: no limit
  std::uint32_t mostConnectionsPerHost = 6;
};

#endif
