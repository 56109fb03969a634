// SPDX-License-Identifier: Apache-2.0
// What every implementation of the services for requests, documents, settings and the device promises.
#include <gmock/gmock.h>

#include <functional>

#include "Implementations.h"
#include "PlatformTestPeer.h"
#ifdef ZRCORE_TESTS_LINUX
#include "LinuxContract.h"
#endif

using testing::ElementsAre;

namespace {

#ifdef ZRCORE_TESTS_LINUX
/// On a main context of its own.
Running runningLinux() {
  const std::shared_ptr<GMainContext> context(g_main_context_new(), g_main_context_unref);
  return {linuxPlatform(context.get()), [context] {
            while (g_main_context_iteration(context.get(), FALSE)) {
            }
          }};
}
#endif

class ServicesContract : public testing::TestWithParam<Implementation> {
 protected:
  ServicesContract() {
    PlatformTestPeer::forget();
    installed_ = ZRPlatformInstall(running.platform);
  }
  ~ServicesContract() override { PlatformTestPeer::forget(); }
  void SetUp() override { ASSERT_TRUE(installed_); }

  std::shared_ptr<NSURLSessionDataTask> makeTask(NSMutableURLRequest request) {
    return platform.httpSession->dataTaskWithRequest(
        std::move(request), [this, held = held](const auto& data, const auto& response, const auto& error) {
          EXPECT_FALSE(data);
          EXPECT_EQ(response, nullptr);
          ASSERT_TRUE(error);
          EXPECT_EQ(error->domain, NSURLErrorDomain);
          codes.push_back(error->code);
        });
  }

  Running running = GetParam().start();
  const ZRPlatform& platform = running.platform;
  std::vector<long> codes;
  std::shared_ptr<int> held = std::make_shared<int>();  ///< by each task's handler

 private:
  bool installed_ = false;
};

TEST_P(ServicesContract, TheMainQueueRunsPostsInOrderAndNeverInsideThem) {
  std::vector<int> order;
  platform.mainQueue->post([&] {
    order.push_back(1);
    platform.mainQueue->post([&] { order.push_back(3); });
    EXPECT_THAT(order, ElementsAre(1));
  });
  platform.mainQueue->post(nullptr);
  platform.mainQueue->post([&] { order.push_back(2); });
  EXPECT_THAT(order, ElementsAre());
  running.settle();
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST_P(ServicesContract, ATaskWaitsForItsResumeAndLetsGoWhenItIsDropped) {
  auto task = makeTask({});
  running.settle();
  EXPECT_EQ(task->state(), NSURLSessionTaskState::suspended);
  EXPECT_THAT(codes, ElementsAre());
  task.reset();
  EXPECT_EQ(held.use_count(), 1);
}

TEST_P(ServicesContract, ARequestWithoutAnAddressFailsOnceAndLaterAndIsHeldUntilThen) {
  auto task = makeTask({});
  task->resume();
  task->resume();
  EXPECT_THAT(codes, ElementsAre());
  task.reset();
  running.settle();
  EXPECT_THAT(codes, ElementsAre(NSURLErrorBadURL));
  EXPECT_EQ(held.use_count(), 1);
}

TEST_P(ServicesContract, ACancelledTaskCompletesAsCancelledOnceAndLater) {
  const NSMutableURLRequest request{.URL = NSURL::URLWithString("http://127.0.0.1:9/")};
  for (const bool isResumed : {true, false}) {
    const auto task = makeTask(request);
    if (isResumed) task->resume();
    task->cancel();
    task->cancel();
    task->resume();
    EXPECT_THAT(codes, ElementsAre());
    EXPECT_EQ(task->state(), NSURLSessionTaskState::canceling);
    running.settle();
    EXPECT_THAT(codes, ElementsAre(NSURLErrorCancelled));
    EXPECT_EQ(task->state(), NSURLSessionTaskState::completed);
    EXPECT_EQ(held.use_count(), 1);
    task->cancel();
    running.settle();
    EXPECT_EQ(codes.size(), 1U);
    codes.clear();
  }
}

TEST_P(ServicesContract, BytesThatAreNoPictureDecodeToNone) {
  for (const std::string_view bytes : {"", "<html>", "\x89PNG\r\n\x1a\n", "\xFF\xD8\xFF"}) {
    EXPECT_EQ(platform.images->imageWithData(bytes), nullptr);
  }
}

TEST_P(ServicesContract, AParserIsHandedOverUnstartedAndParsesOnce) {
  const auto parser = platform.xml->parserWithData("<a>");
  if (!parser) return;  // a system without XML
  EXPECT_EQ(parser->parserError(), std::nullopt);
  EXPECT_FALSE(parser->parse()) << "not well formed";
  EXPECT_NE(parser->parserError(), std::nullopt);
  EXPECT_FALSE(parser->parse());
}

TEST_P(ServicesContract, SettingsKeepAnyBytesFromTheMomentTheyAreSet) {
  ZRUserDefaults& defaults = *platform.userDefaults;
  EXPECT_EQ(defaults.stringForKey("contract.none"), std::nullopt);
  const std::string odd("=\n\0 ü\"", 7);
  defaults.setStringForKey(odd, "contract.a b=c");
  defaults.setStringForKey("", "contract.empty");
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(defaults.stringForKey("contract.a b=c"), odd);
    EXPECT_EQ(defaults.stringForKey("contract.empty"), "");
    defaults.synchronize();
  }
}

TEST_P(ServicesContract, WhatNobodyDeclaredIsAbsent) {
  EXPECT_EQ(platform.bundle->infoStringForKey("no such key"), std::nullopt);
  EXPECT_EQ(platform.bundle->localizedStringForKey("no such text"), std::nullopt);
  for (const char* name : {"", "no such file", "../tile_config", "/etc/hosts"}) {
    EXPECT_EQ(platform.bundle->frameworkResource(name, "json"), std::nullopt);
  }
}

TEST_P(ServicesContract, TheDeviceTellsTheSameEachTime) {
  const ZRDevice& device = *platform.device;
  EXPECT_EQ(device.identifierForVendor(), device.identifierForVendor());
  EXPECT_EQ(device.advertisingIdentifier(), device.advertisingIdentifier());
  for (const auto& fact : {device.identifierForVendor(), device.systemVersion(), device.machineIdentifier()}) {
    EXPECT_NE(fact, "") << "what is not known is absent";
  }
}

const Implementation servicesImplementations[] = {
    {"fake", runningFake},
    {"headless", runningHeadless},
#ifdef ZRCORE_TESTS_LINUX
    {"linux", runningLinux},
#endif
};
INSTANTIATE_TEST_SUITE_P(, ServicesContract, testing::ValuesIn(servicesImplementations),
                         [](const auto& row) { return row.param.name; });

}  // namespace
