// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_FUZZ_FUZZLAWS_H
#define ZRCORE_FUZZ_FUZZLAWS_H

#include <cstdio>
#include <cstdlib>

/// Stops the fuzzer where a law is broken.
inline void require(bool holds, const char* law) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", law);
  std::abort();
}

#endif
