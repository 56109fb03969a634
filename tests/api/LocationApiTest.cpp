// SPDX-License-Identifier: Apache-2.0
// The library as a host sees it: the shared object alone, hidden symbols hidden, callbacks found across its border.
#include <ZRCore/ZRCore.h>
#include <ZRCore/ZRPlatformFake.h>
#include <gmock/gmock.h>

namespace {

class Host : public ZRDidUpdateLocations, public ZRDidFailWithError {
 public:
  void locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) override {
    for (const auto& location : locations) latitudes.push_back(location->coordinate().latitude);
  }
  void locationManagerDidFailWithError(ZRLocationManager&, const NSError& error) override {
    domains.push_back(error.domain);
  }
  std::vector<double> latitudes;
  std::vector<std::string> domains;
};

/// A client may derive a manager of its own.
class NamedManager : public ZRLocationManager {
 public:
  static std::shared_ptr<NamedManager> init() {
    std::shared_ptr<NamedManager> manager(new NamedManager);
    enlist(manager);
    return manager;
  }
};

TEST(LocationApi, AHostInstallsItsPlatformAndHearsOfItsReceiver) {
  const ZRFakePlatform fake;
  ASSERT_TRUE(ZRPlatformInstall(fake.platform()));
  const auto host = std::make_shared<Host>();
  const auto manager = NamedManager::init();
  manager->setDelegate(host);
  manager->startUpdatingLocation();
  ZRFakeLocationManager& receiver = *fake.positioning->made.at(0);
  receiver.deliver(CLLocations{CLLocation::initWithLatitudeLongitude(1.0, 2.0)});
  fake.notificationCenter->postNotificationName(UIApplicationDidEnterBackgroundNotification);
  receiver.deliver(CLLocations{CLLocation::initWithLatitudeLongitude(3.0, 4.0)});
  receiver.fail({.domain = "sky", .code = 1, .userInfo = {}});
  EXPECT_THAT(host->latitudes, testing::ElementsAre(1.0));
  EXPECT_THAT(host->domains, testing::ElementsAre("sky"));
  EXPECT_THAT(receiver.calls, testing::ElementsAre("startUpdatingLocation", "stopUpdatingLocation"));
  EXPECT_EQ(ZRLocationManager::firstInstance(), manager);
}

}  // namespace
