// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_CONTRACT_IMPLEMENTATIONS_H
#define ZRCORE_TESTS_CONTRACT_IMPLEMENTATIONS_H

#include <ZRCore/ZRPlatformFake.h>

#include <functional>
#include <memory>
#include <ostream>
#include <utility>

#include "headless/HeadlessPlatform.h"

/// A platform under test, and how to let it do what it has put off.
struct Running {
  ZRPlatform platform;
  std::function<void()> settle;
};

struct Implementation {
  const char* name;
  std::function<Running()> start;
};

inline void PrintTo(const Implementation& implementation, std::ostream* out) { *out << implementation.name; }

inline Running runningFake() {
  const ZRFakePlatform fake;
  return {fake.platform(), [queue = fake.mainQueue] { queue->run(); }};
}

/// Headless, but for a main queue that runs: its services report through it.
inline Running runningHeadless() {
  const auto queue = std::make_shared<ZRFakeMainQueue>();
  Running running{headlessPlatform(), [queue] { queue->run(); }};
  running.platform.mainQueue = queue;
  return running;
}

#endif
