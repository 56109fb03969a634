// The geometry is called per frame and per vertex: it must never touch the heap. This program counts every allocation.

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "EveryGeometryFunction.h"

namespace {
std::atomic<int> allocations = 0;
}

void* operator new(std::size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size)) {
    return memory;
  }
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

TEST(Geometry, NeverAllocates) {
  const GeometryArguments arguments = {.here = {10, 20},
                                       .there = {-30, 170},
                                       .elsewhere = {0, 0},
                                       .point = {-5, 9e7},
                                       .otherPoint = {1e6, 2e6},
                                       .rect = {{6.7e7, 0}, {-2e5, 5e6}},
                                       .otherRect = {{6.69e7, 1e3}, {3e6, 2e6}},
                                       .amount = 1000};
  const int before = allocations;
  int calls = 0;
  callEveryGeometryFunction(arguments, [&calls](const char*, const auto&) { ++calls; });
  EXPECT_EQ(allocations, before);
  EXPECT_GT(calls, 0);

  ::operator delete(::operator new(1));
  EXPECT_EQ(allocations, before + 1) << "the counter does not count";
}
