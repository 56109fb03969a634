// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_WITHFAKEPLATFORM_H
#define ZRCORE_TESTS_SUPPORT_WITHFAKEPLATFORM_H

#include <ZRCore/ZRPlatformFake.h>
#include <gtest/gtest.h>

#include "LocationStatics.h"
#include "PlatformTestPeer.h"

/// A process that has just started, on a fake platform.
class WithFakePlatform : public testing::Test {
 protected:
  WithFakePlatform() {
    LocationTestPeer::forget();
    PlatformTestPeer::forget();
    installed_ = ZRPlatformInstall(fake.platform());
  }
  ~WithFakePlatform() override {
    LocationTestPeer::forget();
    PlatformTestPeer::forget();
  }
  void SetUp() override { ASSERT_TRUE(installed_); }

  /// The receiver behind the shared location manager.
  ZRFakeLocationManager& receiver() { return *fake.positioning->made.at(0); }

  ZRFakePlatform fake;

 private:
  bool installed_ = false;
};

#endif
