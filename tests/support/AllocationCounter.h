// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_ALLOCATIONCOUNTER_H
#define ZRCORE_TESTS_SUPPORT_ALLOCATIONCOUNTER_H

/// How often operator new has run so far. Programs that ask must be built with AllocationCounter.cpp, which replaces
/// it.
long allocationsSoFar();

#endif
