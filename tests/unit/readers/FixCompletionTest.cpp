// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometryAdditions.h>
#include <gtest/gtest.h>
#include <readers/FixCompletion.h>

namespace readers {
namespace {

constexpr CLLocationCoordinate2D kHere{51.0, 7.0};
constexpr CLLocationCoordinate2D kThere{51.001, 7.0};

SourceFix sourceFix(CLLocationCoordinate2D coordinate, std::optional<double> secondsSince1970 = {}) {
  SourceFix fix;
  fix.coordinate = coordinate;
  fix.secondsSince1970 = secondsSince1970;
  return fix;
}

TEST(FixCompletion, APlaceAloneBecomesWhatThePlatformMakesOfOne) {
  const auto fix = FixCompletion({}).complete(sourceFix(kHere));
  EXPECT_EQ(fix.timestamp, NSDate{0.0});
  EXPECT_EQ(fix.altitude, 0.0);
  EXPECT_EQ(fix.horizontalAccuracy, 0.0);
  EXPECT_EQ(fix.verticalAccuracy, -1.0);
  EXPECT_EQ(fix.speed, -1.0);
  EXPECT_EQ(fix.course, -1.0);
}

TEST(FixCompletion, AccuracyComesFromTheBestHint) {
  FixCompletion completion({.assumedAccuracyMeters = 12.0, .derivesSpeed = false});
  auto source = sourceFix(kHere);
  EXPECT_EQ(completion.complete(source).horizontalAccuracy, 12.0);
  source.hdop = 1.5;
  EXPECT_EQ(completion.complete(source).horizontalAccuracy, 7.5);
  source.accuracyMeters = 3.0;
  EXPECT_EQ(completion.complete(source).horizontalAccuracy, 3.0);
  source.altitudeMeters = 100.0;
  EXPECT_EQ(completion.complete(source).verticalAccuracy, 0.0) << "a known altitude is not called invalid";
}

TEST(FixCompletion, SpeedIsDerivedOnlyOnRequestAndOnlyOverTimeThatPassed) {
  const double meters = ZRGreatCircleDistance(kHere, kThere);
  for (const bool derives : {false, true}) {
    SCOPED_TRACE(derives);
    FixCompletion completion({.assumedAccuracyMeters = {}, .derivesSpeed = derives});
    const auto speed = [&](CLLocationCoordinate2D place, std::optional<double> time) {
      return completion.complete(sourceFix(place, time)).speed;
    };
    EXPECT_EQ(speed(kHere, 100.0), -1.0);
    EXPECT_EQ(speed(kThere, 104.0), derives ? meters / 4.0 : -1.0);
    EXPECT_EQ(speed(kHere, 104.0), -1.0);  // a jump in no time
    EXPECT_EQ(speed(kThere, {}), -1.0);
    EXPECT_EQ(speed(kHere, 90.0), -1.0);
    EXPECT_EQ(speed(kThere, 92.0), derives ? meters / 2.0 : -1.0);
    auto standing = sourceFix(kHere, 93.0);
    standing.speedMetersPerSecond = 0.0;
    EXPECT_EQ(completion.complete(standing).speed, 0.0) << "the receiver knows better";
  }
}

TEST(FixCompletion, AMissingTimeIsThatAtWhichItCameAndAKnownTimeIsNeverChanged) {
  FixCompletion completion({});
  const auto time = [&](std::optional<double> told, std::optional<NSDate> cameAt) {
    return completion.complete(sourceFix(kHere, told), cameAt).timestamp;
  };
  EXPECT_EQ(time(50.0, NSDate{70.0}), NSDate{50.0});
  EXPECT_EQ(time({}, NSDate{71.0}), NSDate{71.0});
  EXPECT_EQ(time({}, {}), NSDate{0.0}) << "not that of the fix before";
  EXPECT_EQ(time(40.0, {}), NSDate{40.0});
}

}  // namespace
}  // namespace readers
