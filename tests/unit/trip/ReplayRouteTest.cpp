// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometryAdditions.h>
#include <gtest/gtest.h>
#include <trip/replay/NearestOnLine.h>
#include <trip/replay/ReplayedRoute.h>
#include <trip/replay/RouteSnapper.h>

#include <cmath>
#include <random>
#include <vector>

namespace trip {
namespace {

using Line = std::vector<CLLocationCoordinate2D>;

/// A way that wanders and turns back on itself, about 20 m a step.
Line wanderingLine(std::size_t count, CLLocationCoordinate2D start) {
  std::mt19937 random(7);
  double course = 0.0;
  Line line{start};
  while (line.size() < count) {
    course += static_cast<double>(random() % 121) - 60.0;
    line.push_back(ZRDestinationCoordinate(line.back(), course, 20.0));
  }
  return line;
}

double metersFrom(CLLocationCoordinate2D place, const Line& line) {
  NearestOnLine nearest(place);
  for (std::size_t i = 1; i < line.size(); ++i) {
    CLLocationCoordinate2D end = line[i];
    end.longitude = longitudeNear(end.longitude, line[i - 1].longitude);
    nearest.consider(line[i - 1], end);
  }
  return nearest.meters();
}

TEST(RouteSnapper, FindsNoWorsePlaceThanASearchThroughAllSegments) {
  for (const CLLocationCoordinate2D start : {CLLocationCoordinate2D{46.8, 7.4}, {-65.0, 179.999}, {0.0, -180.0}}) {
    SCOPED_TRACE(start.longitude);
    const Line line = wanderingLine(1000, start);
    RouteSnapper route;
    for (const auto vertex : line) route.append(vertex);
    for (std::size_t i = 0; i < line.size(); i += 7) {
      const auto place = ZRDestinationCoordinate(line[i], static_cast<double>(i), static_cast<double>(i % 500));
      const auto snapped = route.snap(place);
      ASSERT_TRUE(snapped);
      EXPECT_LE(std::abs(snapped->longitude), 180.0);
      const double expected = metersFrom(place, line);
      EXPECT_NEAR(ZRGreatCircleDistance(place, *snapped), expected, 0.01 + expected * 1e-3);
      EXPECT_LT(metersFrom(*snapped, line), 0.01);
    }
  }
}

TEST(RouteSnapper, ARouteOfOnePlaceIsThatPlaceAndAnEmptyOneIsNowhere) {
  RouteSnapper route;
  EXPECT_FALSE(route.snap({1.0, 2.0}));
  route.append({10.0, 20.0});
  const auto snapped = route.snap({1.0, 2.0});
  ASSERT_TRUE(snapped);
  EXPECT_EQ(snapped->latitude, 10.0);
  EXPECT_EQ(snapped->longitude, 20.0);
}

TEST(ReplayedRoute, EachPlaceOfTheRecentWayLiesWithinTheToleranceOfIt) {
  for (const double longitude : {7.4, 179.9995}) {
    SCOPED_TRACE(longitude);
    const Line line = wanderingLine(200, {46.8, longitude});
    ReplayedRoute route;
    for (std::size_t i = 0; i < line.size(); ++i) {
      route.append(line[i]);
      for (std::size_t passed = 0; passed <= i; ++passed) {
        const auto snapped = route.snap(line[passed]);
        ASSERT_TRUE(snapped);
        ASSERT_LE(ZRGreatCircleDistance(line[passed], *snapped), ReplayedRoute::kToleranceMeters * 1.001);
      }
    }
    EXPECT_LT(route.segmentCount(), line.size());
  }
}

TEST(ReplayedRoute, StandingStillCostsNothingAndAStraightRoadLittle) {
  ReplayedRoute route;
  const CLLocationCoordinate2D start{46.8, 7.4};
  for (int i = 0; i < 10000; ++i) route.append(ZRDestinationCoordinate(start, i, i % 7));
  EXPECT_EQ(route.segmentCount(), 0u);
  for (int i = 1; i <= 500; ++i) route.append(ZRDestinationCoordinate(start, 45.0, 10.0 * i));
  EXPECT_LE(route.segmentCount(), 10u);
}

TEST(ReplayedRoute, TheOldestPartOfALongWayIsForgotten) {
  ReplayedRoute route;
  const Line line = wanderingLine(5000, {46.8, 7.4});
  for (const auto place : line) {
    route.append(place);
    ASSERT_LE(route.segmentCount(), ReplayedRoute::kMaximumSegments);
  }
  EXPECT_EQ(route.segmentCount(), ReplayedRoute::kMaximumSegments);
}

}  // namespace
}  // namespace trip
