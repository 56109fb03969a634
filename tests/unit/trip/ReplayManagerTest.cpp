// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometryAdditions.h>
#include <gtest/gtest.h>
#include <trip/replay/ManagerPipeline.h>

// Each case runs in a process of its own: the location service keeps its state as long as the process lives.

namespace trip {
namespace {

ZRPositionFix fixAt(double latitude, double longitude) {
  ZRPositionFix fix;
  fix.coordinate = {latitude, longitude};
  fix.timestamp = {1.7e9};
  return fix;
}

class CountingClient final : public ZRDidUpdateLocations {
 public:
  void locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) override {
    fixes += locations.size();
  }
  std::size_t fixes = 0;
};

TEST(TripSimulator, DeliversOnlyWhileTheServiceWantsPositions) {
  const auto simulator = std::make_shared<TripSimulator>();
  ZRLocationManager::setTripSimulator(simulator);
  const auto client = std::make_shared<CountingClient>();
  const auto manager = ZRLocationManager::init();
  manager->setDelegate(client);
  EXPECT_FALSE(simulator->deliver(fixAt(1.0, 2.0)));
  EXPECT_FALSE(simulator->location());

  manager->startUpdatingLocation();
  EXPECT_EQ(client->fixes, 0u);  // never from inside the call that starts it
  EXPECT_TRUE(simulator->deliver(fixAt(1.0, 2.0)));
  manager->stopUpdatingLocation();
  EXPECT_FALSE(simulator->deliver(fixAt(3.0, 4.0)));
  EXPECT_EQ(client->fixes, 1u);
  ASSERT_TRUE(simulator->location());
  EXPECT_EQ(simulator->location()->coordinate().latitude, 1.0);
}

TEST(ManagerPipeline, TakesOverAServiceThatIsRunningAlready) {
  const auto client = std::make_shared<CountingClient>();
  const auto manager = ZRLocationManager::init();
  manager->setDelegate(client);
  manager->startUpdatingLocation();

  ManagerPipeline pipeline({});
  EXPECT_TRUE(pipeline.deliver(fixAt(1.0, 2.0)));
  EXPECT_EQ(client->fixes, 1u);
}

TEST(ManagerPipeline, WhatTheFixDoesNotTellIsMissingInTheRow) {
  ManagerPipeline pipeline({});
  ZRPositionFix fix = fixAt(1.0, 2.0);
  fix.timestamp = {};
  const auto bare = pipeline.deliver(fix);
  ASSERT_TRUE(bare);
  EXPECT_FALSE(bare->secondsSince1970 || bare->altitudeMeters || bare->accuracyMeters || bare->speedMetersPerSecond ||
               bare->courseDegrees);

  fix.timestamp = {1.7e9};
  fix.altitude = -3.0;
  fix.horizontalAccuracy = 5.0;
  fix.verticalAccuracy = fix.speed = fix.course = 0.0;
  const auto full = pipeline.deliver(fix);
  ASSERT_TRUE(full);
  EXPECT_EQ(full->secondsSince1970, 1.7e9);
  EXPECT_EQ(full->altitudeMeters, -3.0);
  EXPECT_EQ(full->accuracyMeters, 5.0);
  EXPECT_EQ(full->speedMetersPerSecond, 0.0);
  EXPECT_EQ(full->courseDegrees, 0.0);
}

TEST(ManagerPipeline, TheSecondClientIsSnappedToTheGivenRoute) {
  ManagerPipeline::Options options;
  options.route.append({46.0, 7.0});
  options.route.append({46.0, 8.0});
  ManagerPipeline pipeline(std::move(options));
  const auto row = pipeline.deliver(fixAt(46.001, 7.5));
  ASSERT_TRUE(row);
  EXPECT_EQ(row->coordinate.latitude, 46.001);
  ASSERT_TRUE(row->snapped);
  EXPECT_DOUBLE_EQ(row->snapped->latitude, 46.0);
  EXPECT_DOUBLE_EQ(row->snapped->longitude, 7.5);
}

TEST(ManagerPipeline, WithoutARouteTheSecondClientIsSnappedToTheWayThatLedToTheFix) {
  ManagerPipeline pipeline({});
  const auto first = pipeline.deliver(fixAt(46.0, 7.0));
  EXPECT_EQ(first->snapped->longitude, 7.0);  // there is no way yet
  for (const double longitude : {7.001, 7.002, 7.003}) pipeline.deliver(fixAt(46.0, longitude));
  const auto back = pipeline.deliver(fixAt(46.0004, 7.0015));  // back along the same road, 44 m beside it
  ASSERT_TRUE(back->snapped);
  EXPECT_NEAR(ZRGreatCircleDistance(*back->snapped, {46.0, 7.0015}), 0.0, 0.5);
}

TEST(ManagerPipeline, TheHalfWayClientGetsItsPartAndTheOthersAll) {
  ManagerPipeline pipeline({});
  for (int i = 0; i < 8; ++i) {
    if (i == 2) pipeline.letHalfWayClientListen(true);
    if (i == 6) pipeline.letHalfWayClientListen(false);
    EXPECT_TRUE(pipeline.deliver(fixAt(46.0, 7.0 + i)));
  }
  const std::map<std::string, std::uint64_t> expected{{"half-way", 4}, {"plain", 8}, {"snapped", 8}};
  EXPECT_EQ(pipeline.deliveredByClient(), expected);
}

}  // namespace
}  // namespace trip
