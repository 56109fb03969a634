// SPDX-License-Identifier: Apache-2.0
#include "loop/FromC.h"

#include <exception>
#include <utility>

namespace from_c {

namespace {
thread_local int runs = 0;  // a callback may run the loop in turn
thread_local std::exception_ptr thrown;
}  // namespace

void keepThrown() noexcept {
  if (runs == 0) std::terminate();
  if (!thrown) thrown = std::current_exception();
}

LoopRun::LoopRun() { ++runs; }

LoopRun::~LoopRun() { --runs; }

void LoopRun::rethrow() const {
  if (thrown) std::rethrow_exception(std::exchange(thrown, nullptr));
}

}  // namespace from_c
