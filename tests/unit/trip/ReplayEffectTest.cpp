// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <trip/replay/FilterEffectCounter.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace trip {
namespace {

/// A walk on the equator of two metres a fix, into directions in whole degrees.
class Walk {
 public:
  void step(double degrees, double smoothedDegrees, double speed = 2.0, double seconds = 1.0) {
    constexpr double kDegreesPerStep = 2.0 / 111319.49;
    row_.coordinate.latitude += kDegreesPerStep * std::cos(degrees * M_PI / 180.0);
    row_.coordinate.longitude += kDegreesPerStep * std::sin(degrees * M_PI / 180.0);
    row_.smoothCourseDegrees = smoothedDegrees;
    row_.speedMetersPerSecond = speed;
    row_.smoothSpeedMetersPerSecond = speed / 2.0;
    row_.secondsSince1970 = row_.secondsSince1970.value_or(1e9) + seconds;
    counter.row(row_);
  }
  void stay() {
    *row_.secondsSince1970 += 1.0;
    counter.row(row_);
  }

  FilterEffectCounter counter;

 private:
  TripRow row_;
};

TEST(FilterEffect, CountsTheTurnsFromFixToFixOnlyWhileMovingAndNotOverGaps) {
  Walk walk;
  walk.step(0, 0);  // the first places, and the first course
  walk.step(350, 0);
  walk.step(10, 5);           // 20 against 5, over north
  walk.step(100, 80, 0.9);    // slow
  walk.step(90, 60);          // 10 against 20
  walk.step(180, 70, 2, 60);  // 60 seconds later: no turn, and no course to compare the next one with
  walk.step(185, 75);
  walk.step(155, 76);  // 30 against 1
  walk.stay();         // no course leads there, nor from there on
  walk.step(0, 90);
  const FilterEffect effect = walk.counter.effect();
  EXPECT_EQ(effect.turns, 3u);
  EXPECT_NEAR(effect.rawTurn->median, 20.0, 0.1);
  EXPECT_NEAR(effect.rawTurn->percentile90, 30.0, 0.1);
  EXPECT_NEAR(effect.smoothedTurn->median, 5.0, 0.1);
  EXPECT_NEAR(effect.smoothedTurn->percentile90, 20.0, 0.1);
  EXPECT_EQ(effect.topRawSpeed, 2.0);
  EXPECT_EQ(effect.topSmoothedSpeed, 1.0);
}

TEST(FilterEffect, SaysNothingWhereNothingIsKnown) {
  FilterEffectCounter counter;
  TripRow row;
  row.speedMetersPerSecond = NAN;
  row.smoothSpeedMetersPerSecond = -1.0;
  for (int i = 0; i < 5; ++i, row.coordinate.latitude += 0.1) counter.row(row);
  const FilterEffect effect = counter.effect();
  EXPECT_EQ(effect.turns, 0u);
  EXPECT_FALSE(effect.rawTurn || effect.smoothedTurn || effect.topRawSpeed || effect.topSmoothedSpeed);
}

TEST(AngleCounter, GivesTheQuantilesOfWhatItWasGiven) {
  std::mt19937 random(3);
  AngleCounter counter;
  std::vector<double> angles;
  for (const int length : {1, 2, 10, 11, 5000}) {
    while (static_cast<int>(angles.size()) < length) {
      angles.push_back(static_cast<double>(random() % 1801) / 10.0);
      counter.add(angles.back());
    }
    counter.add(NAN);
    auto sorted = angles;
    std::sort(sorted.begin(), sorted.end());
    for (const double fraction : {0.5, 0.9, 1.0}) {
      const auto rank = static_cast<std::size_t>(std::ceil(fraction * length));
      EXPECT_NEAR(counter.quantileDegrees(fraction), sorted[rank - 1], 1e-9) << fraction << " of " << length;
    }
  }
}

}  // namespace
}  // namespace trip
