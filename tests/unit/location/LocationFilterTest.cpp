// SPDX-License-Identifier: Apache-2.0
#include "LocationFilter.h"

#include <gmock/gmock.h>

#include <limits>
#include <vector>

#include "LocationSupport.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Records with their own fields filled, as a caller who wants them filtered fills them.
class LocationFilterTest : public testing::Test {
 protected:
  std::shared_ptr<ZRLocation> pass(double northMeters, double accuracyMeters, double speedMetersPerSecond) {
    auto record = ZRLocation::initWithCLLocation(*fixAt(latitudeNorth(northMeters), 0.0));
    record->setHorizontalAccuracy(accuracyMeters);
    record->setSpeed(speedMetersPerSecond);
    filter.updateStability(record->horizontalAccuracy());
    filter.updateDynamicProperties(*record);
    return record;
  }
  void settle() {
    for (int i = 0; i < 3; ++i) pass(0.0, 5.0, 0.0);
    ASSERT_TRUE(filter.isStable());
  }

  std::vector<double> rememberedSpeeds() const {
    return {filter.state().__previousSpeeds.begin(), filter.state().__previousSpeeds.end()};
  }
  double guidanceLatitude() const { return filter.state().__previousGuidanceLocation->coordinate.latitude; }

  LocationFilter filter;
};

TEST_F(LocationFilterTest, StabilityTakesThreeFixesInARowEitherWay) {
  struct Step {
    double accuracyMeters;
    bool stableAfterwards;
  };
  const Step steps[] = {
      {50, false},   {100, false}, {0, false},   {-1, false},  {kNaN, false}, {99, true},  // invalid ones break no run
      {150, true},   {150, true},  {50, true},                  // a good one breaks the bad run
      {100.5, true}, {0, true},    {150, true},  {150, false},  // the third bad one in a row
      {50, false},   {50, false},  {150, false}, {50, false},  {50, false},   {50, true},
  };
  int number = 0;
  for (const Step& step : steps) {
    pass(0.0, step.accuracyMeters, 0.0);
    EXPECT_EQ(filter.isStable(), step.stableAfterwards) << "after step " << number;
    ++number;
  }
}

TEST_F(LocationFilterTest, JumpsAreMarkedFromTheLimitOnAndOnlyWhileStable) {
  EXPECT_FALSE(pass(0.0, 5.0, 80.0)->exceedsMovementLimit());
  settle();
  EXPECT_FALSE(pass(0.0, 5.0, 53.999)->exceedsMovementLimit());
  EXPECT_TRUE(pass(0.0, 5.0, 54.0)->exceedsMovementLimit());
  EXPECT_FALSE(pass(0.0, 5.0, kNaN)->exceedsMovementLimit());
}

TEST_F(LocationFilterTest, OnRequestAPlaceThatCouldNotBeReachedIsAJumpWhateverSpeedItTells) {
  struct Fix {
    double seconds, northMeters, speed;
    bool isJump;
  };
  const Fix fixes[] = {
      {10, 0, 1, false},     {11, 53.99, 1, false}, {12, 53.99 + 54.01, 1, true},
      {13, 161.9, 1, false},  // 54 m/s from the place before the jump, two seconds ago, would be 161.99
      {13, 900, -1, false},  {14, 1000, -1, true},  {15, 1000, -1, false},  // no time between; no speed reported
      {5, 9000, 1, false},   {0, 0, 1, false},      {60, 3000, 1, false},   // back in time, undated, after a tunnel
      {61, 3060, 70, true},  {62, 9999, 1, true},   {63, 9999, 1, true},
      {64, 9999, 1, false},  // the third was believed
  };
  for (const auto signs : {LocationFilter::JumpSigns::ownSpeedAndPlace, LocationFilter::JumpSigns::ownSpeed}) {
    filter = {};
    for (const Fix& fix : fixes) {
      SCOPED_TRACE(testing::Message() << "at " << fix.seconds << " s, " << fix.northMeters << " m");
      auto record = ZRLocation::initWithCLLocation(
          *CLLocation::initWithFix({.coordinate = {latitudeNorth(fix.northMeters), 0.0}, .timestamp = {fix.seconds}}));
      record->setSpeed(fix.speed);
      record->setHorizontalAccuracy(5.0);
      for (int i = 0; i < 3; ++i) filter.updateStability(record->horizontalAccuracy());
      const auto speeds = rememberedSpeeds();
      filter.updateDynamicProperties(*record, signs);
      const bool isJump = signs == LocationFilter::JumpSigns::ownSpeed ? fix.speed >= 54.0 : fix.isJump;
      EXPECT_EQ(record->exceedsMovementLimit(), isJump);
      EXPECT_EQ(record->speed(), fix.speed);
      if (isJump) {
        EXPECT_EQ(rememberedSpeeds(), speeds);
      }
    }
  }
}

TEST_F(LocationFilterTest, TheThirdJumpInARowIsBelievedButStaysMarkedAndEntersNoHistory) {
  settle();
  const auto before = pass(0.0, 5.0, 3.0);
  const auto speeds = rememberedSpeeds();
  for (int jump = 1; jump <= 2; ++jump) {
    pass(1000.0 * jump, 5.0, 60.0);
    EXPECT_EQ(guidanceLatitude(), before->coordinate().latitude) << "jump " << jump;
  }
  const auto third = pass(3000.0, 5.0, 60.0);
  EXPECT_EQ(guidanceLatitude(), third->coordinate().latitude);
  EXPECT_TRUE(third->exceedsMovementLimit());
  EXPECT_FALSE(third->significantChange());
  EXPECT_EQ(filter.state().__significantLocations.size(), 1u);
  EXPECT_EQ(rememberedSpeeds(), speeds);
  EXPECT_EQ(third->smoothSpeed(), 1.0) << "the mean of the speeds 0, 0 and 3 before the jumps";
  // The count has started again: the next two are rejected.
  pass(4000.0, 5.0, 60.0);
  EXPECT_EQ(guidanceLatitude(), third->coordinate().latitude);
}

TEST_F(LocationFilterTest, MovementIsSignificantEightMetresFromTheLastSignificantPlace) {
  EXPECT_FALSE(pass(0.0, 5.0, 1.0)->significantChange()) << "the first place is where the trip begins";
  EXPECT_FALSE(pass(5.0, 5.0, 1.0)->significantChange());
  EXPECT_FALSE(pass(7.9, 5.0, 1.0)->significantChange());
  EXPECT_TRUE(pass(8.1, 5.0, 1.0)->significantChange()) << "slow movement adds up";
  EXPECT_FALSE(pass(15.9, 5.0, 1.0)->significantChange());
  EXPECT_TRUE(pass(0.0, 5.0, 1.0)->significantChange());
}

TEST_F(LocationFilterTest, AnEmptyListOfSignificantPlacesTakesEvenAJump) {
  auto jump = ZRLocation::initWithCLLocation(*fixAt(1.0, 1.0));
  jump->setExceedsMovementLimit(true);
  filter.updateDynamicProperties(*jump);
  ASSERT_EQ(filter.state().__significantLocations.size(), 1u);
  EXPECT_EQ(filter.state().__significantLocations.front().coordinate.latitude, 1.0);
  EXPECT_FALSE(jump->significantChange());
}

TEST_F(LocationFilterTest, TheCourseIsTheBearingFromTheOldestOfThreeSignificantPlaces) {
  EXPECT_EQ(pass(0.0, 5.0, 1.0)->smoothCourse(), 0.0);
  EXPECT_EQ(pass(0.0, 5.0, 1.0)->smoothCourse(), 0.0) << "on the reference itself";
  EXPECT_EQ(pass(100.0, 5.0, 1.0)->smoothCourse(), 0.0);
  pass(200.0, 5.0, 1.0);
  EXPECT_EQ(pass(-50.0, 5.0, 1.0)->smoothCourse(), 180.0) << "seen from 100 m: the start has been forgotten";
  EXPECT_EQ(filter.state().__significantLocations.size(), 3u);
}

TEST_F(LocationFilterTest, SpeedsAreAveragedOverTheLastThreeValidOnes) {
  const double passed[] = {10, 20, 30, 40, -1, kNaN, 50};
  const double smoothed[] = {10, 15, 20, 30, -1, kNaN, 40};
  for (std::size_t i = 0; i < std::size(passed); ++i) {
    EXPECT_THAT(pass(0.0, 0.0, passed[i])->smoothSpeed(), testing::NanSensitiveDoubleEq(smoothed[i])) << "speed " << i;
  }
}

TEST_F(LocationFilterTest, AJumpWithoutAnySpeedBeforeItKeepsItsOwnSpeed) {
  for (int i = 0; i < 3; ++i) pass(0.0, 5.0, -1.0);
  EXPECT_EQ(pass(0.0, 5.0, 70.0)->smoothSpeed(), 70.0);
}

TEST_F(LocationFilterTest, ALockedCourseHoldsUntilTheDistanceIsReachedAndThenEndsForGood) {
  pass(0.0, 5.0, 1.0);
  pass(5.0, 5.0, 1.0);  // not significant, but it is from here that the distance counts
  filter.lockSmoothCourse(123.0, 50.0);
  EXPECT_EQ(pass(54.0, 5.0, 1.0)->smoothCourse(), 123.0);
  EXPECT_EQ(pass(56.0, 5.0, 1.0)->smoothCourse(), 0.0);
  EXPECT_EQ(pass(10.0, 5.0, 1.0)->smoothCourse(), 0.0) << "coming back does not lock again";
}

TEST_F(LocationFilterTest, ALockWithoutAGuidanceLocationTakesNoEffectButReplacesTheOneBefore) {
  filter.lockSmoothCourse(123.0, 1e9);
  EXPECT_FALSE(filter.state().__smoothCourseStartPoint.has_value());
  EXPECT_EQ(filter.state().__smoothCourseLock, 123.0);
  EXPECT_EQ(filter.state().__smoothCourseMinDistance, 1e9);
  EXPECT_EQ(pass(0.0, 5.0, 1.0)->smoothCourse(), 0.0);
}

}  // namespace
