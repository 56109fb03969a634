// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatform.h>
#include <gmock/gmock.h>

#include <cstddef>

#include "WithFakePlatform.h"

using testing::ElementsAre;

namespace {

class InstallTest : public testing::Test {
 protected:
  InstallTest() { PlatformTestPeer::forget(); }
  ~InstallTest() override { PlatformTestPeer::forget(); }
};

TEST_F(InstallTest, ServicesThatTheHostLeavesOutAreHeadless) {
  const auto clock = std::make_shared<ZRFakeClock>();
  ZRPlatform platform;
  platform.clock = clock;
  ASSERT_TRUE(ZRPlatformInstall(platform));
  EXPECT_EQ(ZRPlatformInUse().clock, clock);
  EXPECT_FALSE(ZRPlatformInUse().bundle->hasInfoValueForKey("CFBundleVersion"));
  EXPECT_EQ(CLLocationManager::authorizationStatus(), CLAuthorizationStatus::notDetermined);
  EXPECT_EQ(CLLocationManager::init()->location(), nullptr);
}

TEST_F(InstallTest, WithoutAMainQueueRequestsAreNeverAnsweredAndNothingIsKept) {
  auto held = std::make_shared<int>();
  auto task = NSURLSession::sharedSession()->dataTaskWithRequest(
      {}, [held](const auto&, const auto&, const auto&) { FAIL() << "there is no loop to run this"; });
  task->resume();
  task.reset();
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(InstallTest, TheFirstPlatformStays) {
  ZRFakePlatform first, second;
  ASSERT_TRUE(ZRPlatformInstall(first.platform()));
  EXPECT_FALSE(ZRPlatformInstall(second.platform()));
  EXPECT_EQ(ZRPlatformInUse().log, first.log);
}

TEST_F(InstallTest, APlatformThatWasAskedForStays) {
  const ZRPlatform& headless = ZRPlatformInUse();
  EXPECT_FALSE(ZRPlatformInstall(ZRFakePlatform().platform()));
  EXPECT_EQ(&ZRPlatformInUse(), &headless);
}

TEST_F(InstallTest, APlatformOfAnOlderHostIsReadOnlyAsFarAsItReaches) {
  const ZRFakePlatform fake;
  ZRPlatform older = fake.platform();
  older.size = offsetof(ZRPlatform, log) + sizeof(older.log);
  ASSERT_TRUE(ZRPlatformInstall(older));
  EXPECT_EQ(ZRPlatformInUse().log, fake.log);
  EXPECT_NE(ZRPlatformInUse().clock, fake.clock) << "past what the older host knew";
  EXPECT_NE(ZRPlatformInUse().clock, nullptr);
}

TEST(NotificationCenterTest, APostReachesTheObserversOfItsNameInOrderBeforeItReturns) {
  NSNotificationCenter center;
  std::vector<std::string> heard;
  const auto observer = std::make_shared<int>();
  center.addObserver(observer, "a", [&](const std::string& name) { heard.push_back("first " + name); });
  center.addObserver(observer, "b", [&](const std::string& name) { heard.push_back("other " + name); });
  center.addObserver(observer, "a", [&](const std::string& name) { heard.push_back("second " + name); });
  center.postNotificationName("a");
  EXPECT_THAT(heard, ElementsAre("first a", "second a"));
}

TEST(NotificationCenterTest, HandlersMayObservePostAndEndObservers) {
  NSNotificationCenter center;
  std::vector<std::string> heard;
  const auto observer = std::make_shared<int>();
  auto doomed = std::make_shared<int>();
  center.addObserver(observer, "a", [&](const std::string&) {
    heard.emplace_back("a");
    doomed.reset();
    center.addObserver(observer, "a", [&](const std::string&) { heard.emplace_back("late"); });
    center.postNotificationName("b");
  });
  center.addObserver(doomed, "a", [&](const std::string&) { heard.emplace_back("doomed"); });
  center.addObserver(observer, "b", [&](const std::string&) { heard.emplace_back("b"); });
  // What a handler holds may post, too, when it goes; this one goes when the next observer comes.
  std::shared_ptr<void> last(&heard, [&center](void*) { center.postNotificationName("b"); });
  center.addObserver(std::make_shared<int>(), "c", [last = std::move(last)](const std::string&) {});
  center.postNotificationName("a");
  EXPECT_THAT(heard, ElementsAre("a", "b", "b"));
}

TEST(NotificationCenterTest, APostCarriesItsObjectAndFactsAndMayBeHeardOfOneObjectAlone) {
  NSNotificationCenter center;
  std::vector<std::string> heard;
  const auto observer = std::make_shared<int>(), other = std::make_shared<int>();
  auto poster = std::make_shared<int>();
  const auto hear = [&heard](const char* who) {
    return [&heard, who](const NSNotification& post) {
      heard.push_back(who + post.name + std::to_string(post.integerForKey("k")) + (post.object ? "o" : ""));
    };
  };
  center.addObserver(observer, "a", hear("all "));
  center.addObserver(observer, "a", poster, hear("poster's "));
  center.postNotification({.name = "a", .object = poster, .userInfo = {{"k", 7}}});
  center.postNotification({.name = "a", .object = other, .userInfo = {}});
  center.postNotificationName("a");
  poster.reset();
  center.postNotificationName("a");
  EXPECT_THAT(heard, ElementsAre("all a7o", "poster's a7o", "all a0o", "all a0", "all a0"));
}

TEST(NSErrorTest, SaysItsSentenceOrWhoAndWhat) {
  EXPECT_EQ((NSError{.domain = "gps", .code = 3, .userInfo = {}}).localizedDescription(), "gps error 3");
  EXPECT_EQ(
      (NSError{.domain = "gps", .code = 3, .userInfo = {{NSLocalizedDescriptionKey, "no sky"}}}).localizedDescription(),
      "no sky");
}

}  // namespace
