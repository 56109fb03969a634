// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MAPPING_SIPHASH_H
#define ZRCORE_MAPPING_SIPHASH_H

#include <cstdint>
#include <string_view>

struct SipHashKey {
  std::uint64_t low = 0, high = 0;
};

/// SipHash-1-3 (Aumasson and Bernstein, "SipHash: a fast short-input PRF", 2012; one round a word, three at the end):
/// who does not know the key cannot find texts with equal hashes. Pure.
std::uint64_t sipHash13(SipHashKey key, std::string_view text) noexcept;

#endif
