// SPDX-License-Identifier: Apache-2.0
#include "KnownPlace.h"

#include <ZRCore/ZRGeometryAdditions.h>
#include <gtest/gtest.h>
#include <ZRCore/ZRGeometry.hpp>

#include <algorithm>
#include <cmath>
#include <random>

#include "Kernels.h"
#include "QuickBearing.h"

using geometry::knownPlace;

namespace {

/// Calls `with(a, b)` for pairs of places, millimetres to degrees apart, everywhere.
template <class Visit>
void forManyPairs(Visit&& visit) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> one(-1.0, 1.0);
  for (int i = 0; i < 200'000; ++i) {
    const double latitude =
        i % 5 == 0 ? std::copysign(90.0 - std::pow(10.0, -6.0 * (one(random) + 1.0)), one(random)) : 90.0 * one(random);
    const double scale = std::pow(10.0, 4.0 * one(random) - 3.7);
    const double east = i % 7 == 0 ? 1e-4 * one(random) : i % 11 == 0 ? 0.0 : one(random);
    const CLLocationCoordinate2D a{latitude, 180.0 * one(random)};
    visit(a, CLLocationCoordinate2D{a.latitude + scale * one(random), a.longitude + scale * east});
  }
}

TEST(KnownPlace, RoughBearingsKeepWithinTheirErrorAndDecideMost) {
  double worst = 0.0;
  int decided = 0, pairs = 0;
  forManyPairs([&](CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
    const auto from = knownPlace(a), to = knownPlace(b);
    ASSERT_EQ(geometry::bearingFromTo(from, to), ZRCoordinateUtils::bearingFromTo(a, b));
    ++pairs;
    const auto rough = geometry::roughBearing(from, to);
    if (!rough) return;
    const double off = std::remainder(rough->degrees - geometry::kernels().initialBearing(a, b), 360.0);
    worst = std::max(worst, std::fabs(off) / rough->error);
    decided += geometry::quickBearing(from, to).has_value() ? 1 : 0;
  });
  EXPECT_LE(worst, 1.0);
  EXPECT_GT(worst, 0.05) << "the error is stated far too great, or the pairs are too easy";
  EXPECT_GT(decided, pairs / 2);
}

TEST(KnownPlace, DistancesAreComparedAsTheyAreComputed) {
  for (const double meters : {1.0, 8.0, 100000.0}) {
    forManyPairs([&](CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
      const double distance = ZRGreatCircleDistance(a, b);
      // Moved so that the distance is next to the limit.
      const double share = meters / distance * (1.0 + 3e-4 * std::sin(1e6 * distance));  // on both sides of the margin
      b = {a.latitude + (b.latitude - a.latitude) * share, a.longitude + (b.longitude - a.longitude) * share};
      ASSERT_EQ(geometry::isAtLeast(knownPlace(a), knownPlace(b), meters), ZRGreatCircleDistance(a, b) >= meters);
    });
  }
}

}  // namespace
