// SPDX-License-Identifier: Apache-2.0
// The geometry is called per frame and per vertex: it must never touch the heap.

#include <gtest/gtest.h>

#include "AllocationCounter.h"
#include "EveryGeometryFunction.h"

TEST(Geometry, NeverAllocates) {
  const GeometryArguments arguments = {.here = {10, 20},
                                       .there = {-30, 170},
                                       .elsewhere = {0, 0},
                                       .point = {-5, 9e7},
                                       .otherPoint = {1e6, 2e6},
                                       .rect = {{6.7e7, 0}, {-2e5, 5e6}},
                                       .otherRect = {{6.69e7, 1e3}, {3e6, 2e6}},
                                       .amount = 1000};
  const long before = allocationsSoFar();
  int calls = 0;
  callEveryGeometryFunction(arguments, [&calls](const char*, const auto&) { ++calls; });
  const long after = allocationsSoFar();
  EXPECT_EQ(after, before);
  EXPECT_GT(calls, 0);

  ::operator delete(::operator new(1));
  EXPECT_GT(allocationsSoFar(), after) << "the counter does not count";
}
