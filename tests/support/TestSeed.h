// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_TESTSEED_H
#define ZRCORE_TESTS_SUPPORT_TESTSEED_H

#include <cstdlib>

/// Where a test's random numbers begin: at its own seed, so that a failure comes again; from ZRCORE_TEST_SEED where
/// scripts/soak looks for others.
inline unsigned testSeed(unsigned usual) {
  const char* const other = std::getenv("ZRCORE_TEST_SEED");
  return other != nullptr ? static_cast<unsigned>(std::strtoul(other, nullptr, 10)) : usual;
}

#endif
