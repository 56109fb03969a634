// SPDX-License-Identifier: Apache-2.0
#include "ScreenContract.h"

#include <ZRCore/ZRPlatformFake.h>

#include "PlatformTestPeer.h"
#include "headless/HeadlessPlatform.h"

namespace {

/// With a main queue that runs, through which both report.
std::function<void(std::function<bool()>)> installed(ZRPlatform platform, std::shared_ptr<ZRFakeMainQueue> queue) {
  platform.mainQueue = queue;
  PlatformTestPeer::forget();
  EXPECT_TRUE(ZRPlatformInstall(platform));
  return [queue](const std::function<bool()>&) { queue->run(); };
}

INSTANTIATE_TEST_SUITE_P(
    , ScreenContract,
    testing::Values(ScreenImplementation{"fake",
                                         [] {
                                           const ZRFakePlatform fake;
                                           return installed(fake.platform(), fake.mainQueue);
                                         }},
                    ScreenImplementation{
                        "headless", [] { return installed(headlessPlatform(), std::make_shared<ZRFakeMainQueue>()); }}),
    [](const auto& row) { return row.param.name; });

}  // namespace
