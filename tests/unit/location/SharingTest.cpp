// SPDX-License-Identifier: Apache-2.0
// How many managers share one receiver: who starts it, who stops it, what the application's life does to it.
#include <gmock/gmock.h>

#include <utility>

#include "LocationSupport.h"
#include "WithFakePlatform.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SharingTest : public WithFakePlatform {
 protected:
  std::shared_ptr<ZRLocationManager> manager() {
    auto made = ZRLocationManager::init();
    made->setDelegate(client);
    return made;
  }
  void toBackground() { fake.notificationCenter->postNotificationName(UIApplicationDidEnterBackgroundNotification); }
  void toForeground() { fake.notificationCenter->postNotificationName(UIApplicationWillEnterForegroundNotification); }
  /// What was asked of the receiver since the last time.
  std::vector<std::string> newCalls() { return std::exchange(receiver().calls, {}); }

  std::shared_ptr<Client> client = std::make_shared<Client>();
};

TEST_F(SharingTest, TheReceiverRunsFromTheFirstTakerToTheLast) {
  fake.bundle->infoKeys = {"NSLocationWhenInUseUsageDescription", "NSLocationAlwaysUsageDescription"};
  const auto map = manager(), guidance = manager();
  EXPECT_EQ(fake.positioning->made.size(), 1u);
  map->startUpdatingLocation();
  EXPECT_THAT(newCalls(), ElementsAre("requestWhenInUseAuthorization", "startUpdatingLocation"));
  guidance->startUpdatingLocation();
  guidance->startUpdatingHeading();
  EXPECT_THAT(newCalls(), ElementsAre("startUpdatingHeading"));
  EXPECT_EQ(map->countInstancesGettingLocationUpdates(), 2);
  EXPECT_EQ(map->countInstancesGettingHeadingUpdates(), 1);
  map->stopUpdatingLocation();
  map->stopUpdatingHeading();
  EXPECT_THAT(newCalls(), IsEmpty());
  guidance->stopUpdatingHeading();
  guidance->stopUpdatingLocation();
  guidance->stopUpdatingLocation();
  EXPECT_THAT(newCalls(), ElementsAre("stopUpdatingHeading", "stopUpdatingLocation"));
}

TEST_F(SharingTest, AStartWithoutADelegateIsForgottenButAHeadingStartIsNot) {
  const auto orphan = ZRLocationManager::init();
  orphan->startUpdatingLocation();
  EXPECT_FALSE(orphan->shouldUpdateLocation());
  orphan->startUpdatingHeading();
  EXPECT_TRUE(orphan->shouldUpdateHeading());
  EXPECT_THAT(newCalls(), ElementsAre("startUpdatingHeading"));
  orphan->setDelegate(std::make_shared<Client>());  // gone at once
  orphan->startUpdatingLocation();
  EXPECT_FALSE(orphan->shouldUpdateLocation());
}

TEST_F(SharingTest, PermissionIsAskedForByTheDescriptionThatTheHostGives) {
  EXPECT_FALSE(ZRLocationManager::hasAlwaysDescription());
  fake.bundle->infoKeys = {"NSLocationAlwaysUsageDescription"};
  const auto map = manager();
  map->startUpdatingLocation();
  EXPECT_THAT(newCalls(), ElementsAre("requestAlwaysAuthorization", "startUpdatingLocation"));
  EXPECT_TRUE(ZRLocationManager::hasAlwaysDescription());
  EXPECT_FALSE(ZRLocationManager::hasWhenInUseUsageDescription());
  EXPECT_THAT(fake.log->lines, IsEmpty());
}

TEST_F(SharingTest, WithoutADescriptionOneLineIsLoggedPerStartAndTheReceiverStartsAllTheSame) {
  const auto map = manager();
  map->startUpdatingLocation();
  map->stopUpdatingLocation();
  map->startUpdatingLocation();
  EXPECT_THAT(newCalls(), ElementsAre("startUpdatingLocation", "stopUpdatingLocation", "startUpdatingLocation"));
  ZRLocationManager::ios8Authorization(*map);  // a manager that cannot ask: there is nothing to complain of
  const std::string line =
      "VELMARIS ERROR:you must have a NSLocationWhenInUseUsageDescription or NSLocationAlwaysUsageDescription to "
      "request "
      "when location authorization";
  EXPECT_THAT(fake.log->lines, ElementsAre(line, line));
}

TEST_F(SharingTest, TheBackgroundStopsTheReceiverAndTheForegroundStartsItAgain) {
  const auto map = manager();
  map->startUpdatingLocation();
  map->startUpdatingHeading();
  newCalls();
  toBackground();
  EXPECT_THAT(newCalls(), ElementsAre("stopUpdatingLocation", "stopUpdatingHeading"));
  EXPECT_EQ(map->countInstancesGettingLocationUpdates(), 1);
  EXPECT_EQ(map->countInstancesGettingLocationUpdatesInBackground(), 0);
  EXPECT_EQ(map->countInstancesGettingHeadingUpdatesInBackground(), 0);
  toForeground();
  EXPECT_THAT(newCalls(), ElementsAre("startUpdatingLocation", "startUpdatingHeading"));
  toForeground();
  EXPECT_THAT(newCalls(), IsEmpty());
}

TEST_F(SharingTest, AWishMadeInTheBackgroundIsGrantedInTheForeground) {
  const auto map = manager();
  toBackground();
  map->startUpdatingLocation();
  map->startUpdatingHeading();
  EXPECT_TRUE(map->shouldUpdateLocation());
  EXPECT_THAT(newCalls(), IsEmpty());
  toForeground();
  EXPECT_THAT(newCalls(), ElementsAre("startUpdatingLocation", "startUpdatingHeading"));
  map->stopUpdatingHeading();
  map->startUpdatingHeading();
  EXPECT_THAT(newCalls(), ElementsAre("stopUpdatingHeading", "startUpdatingHeading")) << "the background is over";
}

TEST_F(SharingTest, WithPermissionForTheBackgroundUpdatesGoOnThere) {
  CLLocationManager_ZR::setShouldUpdateInBackground(true);
  const auto map = manager();
  map->startUpdatingLocation();
  map->startUpdatingHeading();
  newCalls();
  toBackground();
  EXPECT_THAT(newCalls(), IsEmpty());
  EXPECT_EQ(map->countInstancesGettingLocationUpdatesInBackground(), 1);
  EXPECT_EQ(map->countInstancesGettingHeadingUpdatesInBackground(), 1);
  map->stopUpdatingLocation();
  map->stopUpdatingHeading();
  EXPECT_THAT(newCalls(), ElementsAre("stopUpdatingLocation", "stopUpdatingHeading"));
}

TEST_F(SharingTest, ReleasingTheLastTakerLeavesTheReceiverRunningUntilSomebodyAsks) {
  const auto first = manager();
  auto map = manager();
  map->startUpdatingLocation();
  newCalls();
  map.reset();
  EXPECT_THAT(newCalls(), IsEmpty());
  first->stopUpdatingLocation();
  EXPECT_THAT(newCalls(), ElementsAre("stopUpdatingLocation"));
}

TEST_F(SharingTest, TheFirstManagerIsPermanentAndCounted) {
  EXPECT_EQ(ZRLocationManager::firstInstance(), nullptr);
  auto first = manager();
  const ZRLocationManager* const address = first.get();
  first->startUpdatingLocation();
  first.reset();
  EXPECT_EQ(ZRLocationManager::firstInstance().get(), address);
  {
    const auto second = manager();
    EXPECT_EQ(ZRLocationManager::instanceCount(), 2);
    EXPECT_NE(ZRLocationManager::firstInstance(), second);
  }
  EXPECT_EQ(ZRLocationManager::instanceCount(), 1);
  receiver().deliver(CLLocations{fixAt(1.0, 1.0)});
  EXPECT_EQ(client->batches.size(), 1u) << "it still works for the client that let it go";
}

TEST_F(SharingTest, ADelegateThatOnlyThePlatformsManagerWouldCallIsReported) {
  struct OfThePlatform : public virtual CLDidUpdateLocations {
    void locationManagerDidUpdateLocations(CLLocationManager&, const CLLocations&) override {}
  };
  struct OfBoth : OfThePlatform, ZRDidFailWithError {
    void locationManagerDidFailWithError(ZRLocationManager&, const NSError&) override {}
  };
  const auto map = manager();
  map->setDelegate(std::make_shared<OfBoth>());
  map->setDelegate(std::make_shared<SilentClient>());
  map->setDelegate({});
  EXPECT_THAT(fake.log->lines, IsEmpty());
  map->setDelegate(std::make_shared<OfThePlatform>());
  EXPECT_THAT(fake.log->lines, ElementsAre(testing::HasSubstr("ZRDidUpdateLocations")));
}

TEST_F(SharingTest, ADelegateIsTakenAwayByNull) {
  const auto map = manager();
  map->startUpdatingLocation();
  map->setDelegate(nullptr);
  receiver().deliver(CLLocations{fixAt(1.0, 1.0)});
  EXPECT_THAT(client->batches, IsEmpty());
  EXPECT_TRUE(map->delegate().expired());
  receiver().setDelegate(nullptr);
  EXPECT_TRUE(receiver().delegate().expired());
}

TEST_F(SharingTest, AFakeReceiverStandsForASystemWithoutPermissionsAndWritesOneListWithTheLog) {
  const auto mine = std::make_shared<ZRFakeReceiver>();
  mine->journal = fake.journal;
  fake.positioning->make = [&] { return mine; };
  const auto map = manager();
  EXPECT_THAT(fake.positioning->made, IsEmpty());
  map->startUpdatingLocation();
  fake.log->writeLine("between");
  map->setUseAutomotiveNavigationMode(true);
  map->stopUpdatingLocation();
  EXPECT_THAT(*fake.journal, ElementsAre("startUpdatingLocation", "log between", "setActivityType automotiveNavigation",
                                         "stopUpdatingLocation"));
  map->setShouldUpdateLocation(true);  // wants locations, though nobody started the receiver
  for (const bool delivers : {false, true}) {
    mine->deliversWhileStopped = delivers;
    mine->deliver(CLLocations{fixAt(1.0, 1.0)});
    EXPECT_EQ(client->batches.size(), delivers ? 1U : 0U);
  }
}

TEST_F(SharingTest, AutomotiveModeIsToldToTheSharedReceiver) {
  const auto map = manager();
  map->setUseAutomotiveNavigationMode(true);
  EXPECT_TRUE(map->useAutomotiveNavigationMode());
  EXPECT_EQ(receiver().activityType(), CLActivityType::automotiveNavigation);
  map->setUseAutomotiveNavigationMode(false);
  EXPECT_THAT(newCalls(), ElementsAre("setActivityType automotiveNavigation", "setActivityType other"));
}

TEST_F(SharingTest, ASimulatorTakesTheReceiversPlaceAndLocationsRunOn) {
  const auto map = manager();
  map->startUpdatingLocation();
  map->startUpdatingHeading();
  newCalls();
  const auto simulator = std::make_shared<ZRFakeLocationManager>();
  ZRLocationManager::setTripSimulator(simulator);
  EXPECT_THAT(newCalls(), ElementsAre("stopUpdatingLocation"));
  EXPECT_TRUE(receiver().delegate().expired());
  EXPECT_THAT(simulator->calls, ElementsAre("startUpdatingLocation")) << "headings are not moved over";

  ZRLocationManager::setTripSimulator(nullptr);
  ZRLocationManager::setTripSimulator(simulator);
  EXPECT_THAT(simulator->calls, ElementsAre("startUpdatingLocation")) << "neither changes anything";
  simulator->deliver(CLLocations{fixAt(1.0, 1.0)});
  EXPECT_EQ(client->batches.size(), 1u);

  const auto next = std::make_shared<ZRFakeLocationManager>();
  map->stopUpdatingLocation();
  ZRLocationManager::setTripSimulator(next);
  EXPECT_THAT(next->calls, IsEmpty()) << "nobody wants locations now";
}

TEST_F(SharingTest, ASimulatorInstalledBeforeTheFirstManagerIsUsedFromTheStart) {
  const auto simulator = std::make_shared<ZRFakeLocationManager>();
  ZRLocationManager::setTripSimulator(simulator);
  const auto map = manager();
  map->startUpdatingLocation();
  EXPECT_THAT(fake.positioning->made, IsEmpty());
  EXPECT_THAT(simulator->calls, ElementsAre("startUpdatingLocation"));
  simulator->deliver(CLLocations{fixAt(1.0, 1.0)});
  EXPECT_EQ(client->batches.size(), 1u);
}

TEST_F(SharingTest, ThePlainSharedInstanceIsOneObjectOfTheFirstAskersClass) {
  const auto shared = CLLocationManager_ZR::sharedInstance<ZRLocationManager>();
  EXPECT_EQ(shared, ZRLocationManager::firstInstance());
  EXPECT_EQ(CLLocationManager_ZR::sharedInstance(), shared);
}

TEST_F(SharingTest, ThePlainSharedInstanceTellsThePlatformsLastFix) {
  EXPECT_EQ(CLLocationManager_ZR::lastLocation(), nullptr);
  receiver().startUpdatingLocation();
  const auto fix = fixAt(1.0, 2.0);
  receiver().deliver(CLLocations{fix});
  EXPECT_EQ(CLLocationManager_ZR::lastLocation(), fix);
}

TEST_F(SharingTest, OnlyTwoOfTheFiveStatusValuesAuthorize) {
  const bool authorizes[] = {false, false, false, true, true};
  for (int status = 0; status < 5; ++status) {
    fake.positioning->status = static_cast<CLAuthorizationStatus>(status);
    EXPECT_EQ(CLLocationManager_ZR::locationIsAuthorized(), authorizes[status]) << "status " << status;
  }
}

}  // namespace
