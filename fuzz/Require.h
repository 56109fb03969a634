#ifndef ZRCORE_FUZZ_REQUIRE_H
#define ZRCORE_FUZZ_REQUIRE_H

#include <cstdio>
#include <cstdlib>

/// Ends the program, which a fuzzer takes for a find, when a law does not hold.
inline void require(bool holds, const char* law) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", law);
  std::abort();
}

#endif
