// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_UNIT_DEMO_HANDCLOCK_H
#define ZRCORE_TESTS_UNIT_DEMO_HANDCLOCK_H

#include <ZRCore/ZRPlatform.h>

namespace demo {

/// A clock that a test sets.
class HandClock final : public ZRClock {
 public:
  NSDate now() const override { return {seconds}; }
  double seconds = 1e9;
};

}  // namespace demo

#endif
