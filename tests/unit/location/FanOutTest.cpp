// SPDX-License-Identifier: Apache-2.0
// What the clients are told, and what they may do while they are told.
#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "LocationSupport.h"
#include "TestSeed.h"
#include "WithFakePlatform.h"

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class FanOutTest : public WithFakePlatform {
 protected:
  std::shared_ptr<ZRLocationManager> started(const std::shared_ptr<CLLocationManagerDelegate>& delegate) {
    auto made = ZRLocationManager::init();
    made->setDelegate(delegate);
    made->startUpdatingLocation();
    return made;
  }
  void deliver(const CLLocations& fixes) { receiver().deliver(fixes); }

  std::shared_ptr<ZRLocationManager> first = ZRLocationManager::init();
  std::shared_ptr<Client> client = std::make_shared<Client>();
};

TEST_F(FanOutTest, EveryStartedClientGetsTheSameRecordsFromTheFirstManager) {
  const auto other = std::make_shared<Client>(), idle = std::make_shared<Client>();
  const auto a = started(client), b = started(other), c = started(idle);
  c->stopUpdatingLocation();
  deliver({fixAt(1.0, 1.0), fixAt(2.0, 2.0)});
  ASSERT_THAT(client->batches, ElementsAre(SizeIs(2)));
  EXPECT_EQ(client->batches, other->batches) << "filtered once, not once per client";
  EXPECT_THAT(client->managers, ElementsAre(first.get()));
  EXPECT_THAT(other->managers, ElementsAre(first.get()));
  EXPECT_THAT(idle->batches, IsEmpty());
  EXPECT_EQ(client->batches[0][1]->coordinate().latitude, 2.0);
  EXPECT_TRUE(client->batches[0][1]->significantChange());
}

TEST_F(FanOutTest, PlatformFixesAloneNeverSettleTheReceiverAndSmoothToSpeedZero) {
  const auto map = started(client);
  for (int i = 0; i < 5; ++i) deliver({fixAt(i * 0.001, 0.0, 5.0, 70.0)});
  for (const auto& batch : client->batches) {
    EXPECT_EQ(batch[0]->smoothSpeed(), 0.0);
    EXPECT_FALSE(batch[0]->exceedsMovementLimit());
    EXPECT_EQ(batch[0]->fix().speed, 70.0);
  }
  EXPECT_FALSE(ZRLocationManager::receiverIsStable());
  EXPECT_TRUE(client->batches[4][0]->significantChange()) << "movement follows the coordinates all the same";
}

TEST_F(FanOutTest, OnRequestPlatformFixesAreFilteredByWhatWasMeasured) {
  ZRLocationManager::setFiltersMeasuredValues(true);
  const auto map = started(client);
  for (const double speed : {10.0, 20.0, 30.0, 70.0}) deliver({fixAt(speed, 0.0, 5.0, speed)});
  EXPECT_TRUE(ZRLocationManager::receiverIsStable());
  EXPECT_EQ(client->batches[2][0]->smoothSpeed(), 20.0);
  EXPECT_TRUE(client->batches[3][0]->exceedsMovementLimit());
  EXPECT_EQ(client->batches[3][0]->speed(), 70.0);
  EXPECT_EQ(client->batches[3][0]->horizontalAccuracy(), 5.0);
  // A second later and a hundred metres away, whatever the receiver says of its speed.
  deliver({CLLocation::initWithFix({.coordinate = {30.0 + latitudeNorth(100.0), 0.0},
                                    .horizontalAccuracy = 5.0,
                                    .speed = 1.0,
                                    .timestamp = {1.0}})});
  EXPECT_TRUE(client->batches[4][0]->exceedsMovementLimit());
}

TEST_F(FanOutTest, AfterAResetTheNextFixIsTheFiltersFirst) {
  ZRLocationManager::setFiltersMeasuredValues(true);
  const auto map = started(client);
  const auto drive = [this] {
    for (const double speed : {10.0, 20.0, 30.0, 70.0}) deliver({fixAt(speed, speed, 5.0, speed)});
  };
  drive();
  ZRLocationManager::lockSmoothCourseToCourseUntilMoved(123.0, 1e9);
  ZRLocationManager::resetFilter();
  EXPECT_FALSE(ZRLocationManager::receiverIsStable());
  drive();
  for (std::size_t i = 0; i < 4; ++i) {
    const ZRLocation &before = *client->batches[i][0], &after = *client->batches[i + 4][0];
    EXPECT_EQ(after.smoothSpeed(), before.smoothSpeed());
    EXPECT_EQ(after.smoothCourse(), before.smoothCourse());
    EXPECT_EQ(after.significantChange(), before.significantChange());
    EXPECT_EQ(after.exceedsMovementLimit(), before.exceedsMovementLimit());
  }
}

TEST_F(FanOutTest, ASnapFilterTurnsABatchIntoOneLocationMadeFromItsLastFix) {
  const auto plain = std::make_shared<Client>();
  const auto snapping = started(client), b = started(plain);
  std::vector<std::shared_ptr<ZRLocation>> offered;
  const auto replacement = ZRLocation::initWithCLLocation(*fixAt(9.0, 9.0));
  snapping->setSnapFilter([&](const std::shared_ptr<ZRLocation>& location) {
    offered.push_back(location);
    return replacement;
  });
  deliver({fixAt(1.0, 1.0), fixAt(2.0, 2.0), fixAt(3.0, 3.0)});
  EXPECT_THAT(client->batches, ElementsAre(ElementsAre(replacement)));
  EXPECT_THAT(plain->batches, ElementsAre(SizeIs(3)));
  ASSERT_THAT(offered, SizeIs(1));
  EXPECT_EQ(offered[0]->coordinate().latitude, 3.0);
  EXPECT_TRUE(plain->batches[0][2]->significantChange());
  EXPECT_FALSE(offered[0]->significantChange()) << "the filter's results are not carried over";
  EXPECT_EQ(offered[0]->smoothCourse(), 0.0);
  EXPECT_EQ(offered[0]->speed(), 0.0);

  ZRLocationManager::setFiltersMeasuredValues(true);
  deliver({fixAt(4.0, 4.0, 5.0, 11.0)});
  EXPECT_EQ(offered[1]->speed(), 11.0) << "the snapped record, too, starts from what was measured";
}

TEST_F(FanOutTest, NothingIsDeliveredWhenTheSnapFilterHasNothing) {
  const auto map = started(client);
  int calls = 0;
  map->setSnapFilter([&](const std::shared_ptr<ZRLocation>&) {
    ++calls;
    return std::shared_ptr<ZRLocation>();
  });
  deliver({fixAt(1.0, 1.0)});
  deliver({});
  EXPECT_EQ(calls, 1) << "an empty batch has no last location";
  EXPECT_THAT(client->batches, IsEmpty());
  map->setSnapFilter(nullptr);
  deliver({});
  EXPECT_THAT(client->batches, ElementsAre(IsEmpty()));
}

TEST_F(FanOutTest, TheSnapFilterOfAClientThatDoesNotListenIsNotRun) {
  const auto silent = std::make_shared<SilentClient>();
  const auto map = started(silent), other = started(client);
  int calls = 0;
  map->setSnapFilter([&](const std::shared_ptr<ZRLocation>& location) { return ++calls, location; });
  other->setSnapFilter([&](const std::shared_ptr<ZRLocation>& location) { return ++calls, location; });
  other->stopUpdatingLocation();
  deliver({fixAt(1.0, 1.0)});
  EXPECT_EQ(calls, 0);
}

TEST_F(FanOutTest, AClientThatIsGoneIsSkipped) {
  const auto map = started(client);
  client.reset();
  deliver({fixAt(1.0, 1.0)});
  receiver().fail({.domain = "d", .code = 1, .userInfo = {}});
  EXPECT_TRUE(map->shouldUpdateLocation());
}

TEST_F(FanOutTest, ErrorsGoToEveryListenerHeadingsOnlyToThoseThatAsked) {
  const auto other = std::make_shared<Client>();
  const auto map = ZRLocationManager::init(), guidance = ZRLocationManager::init();
  map->setDelegate(client);
  guidance->setDelegate(other);
  guidance->startUpdatingHeading();
  const NSError error{.domain = "kCLErrorDomain", .code = 7, .userInfo = {{"k", "v"}}};
  receiver().fail(error);
  receiver().deliver(CLHeading{.trueHeading = 42.0});
  EXPECT_THAT(client->errors, ElementsAre(error));
  EXPECT_THAT(other->errors, ElementsAre(error));
  EXPECT_THAT(client->headings, IsEmpty());
  ASSERT_THAT(other->headings, SizeIs(1));
  EXPECT_EQ(other->headings[0].trueHeading, 42.0);
  EXPECT_THAT(client->managers, Each(first.get()));
  EXPECT_THAT(other->managers, Each(first.get()));
  receiver().changeAuthorization(CLAuthorizationStatus::denied);
  EXPECT_THAT(client->errors, SizeIs(1));
  EXPECT_TRUE(receiver().isUpdatingHeading()) << "an error, or a change of permission, stops nothing";
}

TEST_F(FanOutTest, ADelegateMayMakeStartStopAndReleaseManagers) {
  const auto later = std::make_shared<Client>(), doomed = std::make_shared<Client>();
  std::shared_ptr<ZRLocationManager> made, released;
  auto map = started(client);
  released = started(doomed);
  client->onLocations = [&] {
    if (!made) made = started(later);
    released.reset();
    map->stopUpdatingLocation();
    map.reset();
  };
  deliver({fixAt(1.0, 1.0)});
  EXPECT_THAT(client->batches, SizeIs(1));
  EXPECT_THAT(doomed->batches, IsEmpty()) << "it was released before its turn";
  EXPECT_THAT(later->batches, IsEmpty()) << "it was not in the list when the walk began";
  deliver({fixAt(2.0, 2.0)});
  EXPECT_THAT(client->batches, SizeIs(1));
  EXPECT_THAT(later->batches, SizeIs(1));
  EXPECT_EQ(ZRLocationManager::instanceCount(), 2);
}

TEST_F(FanOutTest, AWaitingClientIsToldWithoutAReferenceAndEndsWhenNobodyIsTold) {
  struct Ending : Client {
    explicit Ending(std::vector<std::string>& shared) : log(shared) {}
    ~Ending() override { log.push_back("ended"); }
    std::vector<std::string>& log;
  };
  std::vector<std::string> log;
  auto itself = ZRMakeLocationClient<Ending>(log), other = ZRMakeLocationClient<Ending>(log);
  const auto a = started(itself), b = started(other), c = started(client);
  other->onLocations = [&] { log.push_back("never told"); };
  itself->onLocations = [&, token = std::make_shared<int>(7)] {
    other.reset();
    itself.reset();
    log.push_back("told " + std::to_string(*token));
  };
  client->onLocations = [&] { log.push_back("next"); };
  deliver({fixAt(1.0, 1.0)});
  EXPECT_THAT(log, ElementsAre("told 7", "ended", "ended", "next")) << "the ends waited for the one that was told";
  EXPECT_TRUE(a->delegate().expired());
  deliver({fixAt(2.0, 2.0)});
  EXPECT_THAT(client->batches, SizeIs(2));

  auto idle = ZRMakeLocationClient<Ending>(log);
  b->setDelegate(idle);
  b->setDelegate(client);
  idle.reset();
  EXPECT_EQ(log.back(), "ended") << "at once where nobody is told";
  const auto snapping = ZRMakeLocationClient<Client>();
  a->setDelegate(snapping);
  a->setSnapFilter([](const std::shared_ptr<ZRLocation>& location) { return location; });
  deliver({fixAt(3.0, 3.0), fixAt(4.0, 4.0)});
  EXPECT_THAT(snapping->batches, ElementsAre(SizeIs(1)));

  struct Owner : Client {
    Client part;
  };
  auto owner = ZRMakeLocationClient<Owner>();
  b->setDelegate(std::shared_ptr<CLLocationManagerDelegate>(owner, &owner->part));
  owner.reset();
  deliver({fixAt(5.0, 5.0)});  // a part of such a client is held as any other, and has gone with it
}

TEST_F(FanOutTest, AWaitingClientMayEndOnAnotherThreadWhileFixesArrive) {
  const auto manager = ZRLocationManager::init();
  for (int round = 0; round < 200; ++round) {
    auto waiting = ZRMakeLocationClient<Client>();
    manager->setDelegate(waiting);
    manager->startUpdatingLocation();
    std::thread ending([&waiting] { waiting.reset(); });
    deliver({fixAt(round * 0.01, 0.0)});
    ending.join();
    deliver({fixAt(round * 0.01, 1.0)});
    EXPECT_TRUE(manager->delegate().expired());
  }
}

TEST_F(FanOutTest, ASnapFilterMayReplaceItself) {
  const auto map = started(client);
  map->setSnapFilter([&, big = std::vector<int>(1000, 7)](const std::shared_ptr<ZRLocation>& location) {
    map->setSnapFilter(nullptr);
    return big.back() == 7 ? location : nullptr;
  });
  deliver({fixAt(1.0, 1.0), fixAt(2.0, 2.0)});
  deliver({fixAt(1.0, 1.0), fixAt(2.0, 2.0)});
  EXPECT_THAT(client->batches, ElementsAre(SizeIs(1), SizeIs(2)));
}

TEST_F(FanOutTest, ACourseCanBeLockedThroughTheClass) {
  const auto map = started(client);
  deliver({fixAt(0.0, 0.0)});
  ZRLocationManager::lockSmoothCourseToCourseUntilMoved(77.0, 500.0);
  deliver({fixAt(latitudeNorth(100.0), 0.0)});
  deliver({fixAt(latitudeNorth(600.0), 0.0)});
  EXPECT_EQ(client->batches[1][0]->smoothCourse(), 77.0);
  EXPECT_EQ(client->batches[2][0]->smoothCourse(), 0.0);
}

TEST_F(FanOutTest, RandomStartsAndStopsKeepCountsAndReceiverInBalance) {
  std::vector<std::shared_ptr<ZRLocationManager>> managers;
  for (int i = 0; i < 8; ++i) {
    managers.push_back(ZRLocationManager::init());
    managers.back()->setDelegate(client);
  }
  unsigned random = testSeed(1);
  for (int step = 0; step < 2000; ++step) {
    random = random * 1664525u + 1013904223u;
    auto& manager = managers[(random >> 8) % managers.size()];
    if ((random >> 16) % 2 == 0) {
      manager->startUpdatingLocation();
    } else {
      manager->stopUpdatingLocation();
    }
    int wanting = 0;
    for (const auto& each : managers) wanting += each->shouldUpdateLocation() ? 1 : 0;
    ASSERT_EQ(manager->countInstancesGettingLocationUpdates(), wanting);
    ASSERT_EQ(receiver().isUpdatingLocation(), wanting > 0);
  }
}

TEST_F(FanOutTest, ManagersMayComeAndGoOnOtherThreadsWhileFixesArrive) {
  const auto map = started(client);
  std::atomic<bool> done = false;
  std::vector<std::thread> threads;
  for (int i = 0; i < 2; ++i) {
    threads.emplace_back([&] {
      do {
        const auto manager = ZRLocationManager::init();
        EXPECT_GE(manager->countInstancesGettingLocationUpdates(), 0);
      } while (!done);
    });
  }
  for (int i = 0; i < 500; ++i) deliver({fixAt(i * 0.01, 0.0)});
  done = true;
  for (auto& thread : threads) thread.join();
  EXPECT_THAT(client->batches, SizeIs(500));
  EXPECT_EQ(ZRLocationManager::instanceCount(), 2);
}

}  // namespace
