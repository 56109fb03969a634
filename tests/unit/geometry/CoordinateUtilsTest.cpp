// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometryAdditions.h>
#include <geometry/CoordinateDirections.h>
#include <gtest/gtest.h>
#include <ZRCore/ZRGeometry.hpp>

#include <cmath>

#include "GeometryValues.h"

namespace {

using Utils = ZRCoordinateUtils;

TEST(Bearing, RunsClockwiseFromNorthAndCanRoundUpToAFullTurn) {
  struct {
    CLLocationCoordinate2D from, to;
    float degrees;
  } const rows[] = {
      {{0, 0}, {1, 0}, 0.0F},        // north
      {{0, 0}, {0, 1}, 90.0F},       // east
      {{0, 0}, {-1, 0}, 180.0F},     // south
      {{0, 0}, {0, -1}, 270.0F},     // west
      {{0, 179}, {0, -179}, 90.0F},  // the short way, across the antimeridian
      {{50, 7}, {50, 7}, 0.0F},      // nowhere
      {{0, 0}, {1, -1e-9}, 360.0F},  // a hair west of north: rounded first, then turned
      {{kNaN, 0}, {kNaN, 0}, NAN},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.from)) + testing::PrintToString(values(row.to)));
    const float bearing = Utils::bearingFromTo(row.from, row.to);
    if (std::isnan(row.degrees)) {
      EXPECT_TRUE(std::isnan(bearing));
    } else {
      EXPECT_FLOAT_EQ(bearing, row.degrees);
    }
  }
}

TEST(Directions, CoordinateAtDistanceKeepsItsFactorAndItsDivisor) {
  struct {
    CLLocationCoordinate2D from, to;
    double distance;
    CLLocationCoordinate2D result;
  } const rows[] = {
      {{0, 0}, {0, 90}, 6e+11, {-5.3898316069991, -0.26982687474244}},
      {{52.5, 13.4}, {48.1, 11.6}, 6e+11, {50.294844545017, 21.301054852646}},
      {{52.5, 13.4}, {48.1, 11.6}, 1e+06, {52.499996780335, 13.400013795637}},
      {{-33.9, 151.2}, {60, -10}, -2e+12, {-48.509231743533, 165.29288754881}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.distance);
    const CLLocationCoordinate2D result = geometry::coordinateAtDistance(row.from, row.distance, row.to);
    EXPECT_NEAR(result.latitude, row.result.latitude, 1e-9);
    EXPECT_NEAR(result.longitude, row.result.longitude, 1e-9);
  }
}

TEST(ApproximateDistance, InterpolatesTheTableByMeanLatitude) {
  struct {
    CLLocationCoordinate2D from, to;
    double meters;
  } const rows[] = {
      {{0, 0}, {0, 1}, 111181.91},
      {{60, 0}, {60, 1}, 55590.42},
      {{-60, 0}, {-60, 1}, 55590.42},
      {{45, 0}, {46, 0}, 111181.91},
      {{45.5, 0}, {45.5, -1}, (78616.98 + 77232.93) / 2.0},
      {{0, -179.5}, {0, 179.5}, 359.0 * 111181.91},
      {{89.5, 0}, {89.5, 1}, (1940.37 + 1.0) / 2.0},
      {{90, 0}, {90, 1}, 1.0},
      {{91, 0}, {91, 1}, 1.0 - 1939.37},  // the last interval goes on
      {{1e300, 0}, {1e300, 0}, 0.0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.from)));
    EXPECT_NEAR(Utils::approximateDistanceFromTo(row.from, row.to), std::fabs(row.meters), 1e-6);
  }
  EXPECT_TRUE(std::isnan(Utils::approximateDistanceFromTo({kNaN, 0}, {0, 0})));
  EXPECT_TRUE(std::isnan(Utils::approximateDistanceFromTo({kInf, 0}, {kInf, 0})));
}

TEST(ApproximateDistance, ReadsTheMutableTablesAtTheTimeOfTheCall) {
  const double before[] = {metersPerDegreeLat, metersPerDegreeLng[10]};
  metersPerDegreeLat = 4.0;
  metersPerDegreeLng[10] = 3.0;
  EXPECT_DOUBLE_EQ(Utils::approximateDistanceFromTo({9.5, 0}, {10.5, 1}), 5.0);
  metersPerDegreeLat = before[0];
  metersPerDegreeLng[10] = before[1];
}

TEST(Interpolation, TakesAFractionAndGoesOnBeyondTheEnds) {
  const CLLocationCoordinate2D from = {10, 20}, to = {30, -20};
  EXPECT_EQ(values(Utils::interpolateFromToPercent(from, to, 0.0F)), values(from));
  EXPECT_EQ(values(Utils::interpolateFromToPercent(from, to, 1.0F)), values(to));
  EXPECT_EQ(values(Utils::interpolateFromToPercent(from, to, 0.5F)), values(CLLocationCoordinate2D{20, 0}));
  EXPECT_EQ(values(Utils::interpolateFromToPercent(from, to, 2.0F)), values(CLLocationCoordinate2D{50, -60}));
}

TEST(ClosestCoordinate, IsTheFootOfThePerpendicularOrAnEndOfTheSegment) {
  const CLLocationCoordinate2D start = {0.1, 0.2}, end = {4.1, 8.2}, north = {4.1, 0.2}, east = {0.1, 8.2};
  struct {
    CLLocationCoordinate2D end, coord, closest;
  } const rows[] = {
      {end, {-3, -3}, start},    {end, {4.2, 8.3}, end},   {end, {4.1, 3.2}, {2.1, 4.2}}, {end, {2.1, 4.2}, {2.1, 4.2}},
      {north, {3, 5}, {3, 0.2}}, {east, {3, 5}, {0.1, 5}}, {start, {9, 9}, start},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.coord)));
    const auto closest = Utils::closestCoordToCoordAlongLineWithStartingCoordAndEndingCoord(row.coord, start, row.end);
    EXPECT_DOUBLE_EQ(closest.latitude, row.closest.latitude);
    EXPECT_DOUBLE_EQ(closest.longitude, row.closest.longitude);
  }
}

TEST(CoordinateEquality, HasNoToleranceAndFollowsTheFloatingPointRules) {
  EXPECT_TRUE(Utils::coordIsEqualTo({0.0, 1.0}, {-0.0, 1.0}));
  EXPECT_FALSE(Utils::coordIsEqualTo({0.0, 1.0}, {0.0, std::nextafter(1.0, 2.0)}));
  EXPECT_FALSE(Utils::coordIsEqualTo({kNaN, 1.0}, {kNaN, 1.0}));
}

TEST(PlaneDistance, IsTheSameForMapPointsAndPlainPairs) {
  EXPECT_EQ(distanceBetweenPoints(ZRMapPoint{1, 2}, ZRMapPoint{4, 6}), 5.0);
  EXPECT_EQ(distanceBetweenPoints(ZRDoublePoint{4, 6}, ZRDoublePoint{1, 2}), 5.0);
  EXPECT_EQ(distanceBetweenPoints(ZRMapPoint{0, 0}, ZRMapPoint{-kInf, 0}), kInf);
}

TEST(GreatCircleDistance, IsNeverNaNNearAntipodes) {
  Dice dice;
  for (int i = 0; i < 20000; ++i) {
    const CLLocationCoordinate2D place = {dice.between(-90.0, 90.0), dice.between(-180.0, 0.0)};
    const double distance = ZRGreatCircleDistance(place, {-place.latitude, place.longitude + 180.0});
    EXPECT_NEAR(distance, 20037508.342789244, 1.0);
  }
}

TEST(GroundResolution, IsTheDistanceBetweenNeighbouringMapPointsInBothHemispheres) {
  for (const double latitude : {-80.0, -45.0, 0.0, 10.0, 60.0, 85.0}) {
    SCOPED_TRACE(latitude);
    const ZRMapPoint point = ZRMapPointForCoordinate({latitude, 10.0});
    const double meters = ZRMetersBetweenMapPoints(point, {point.x + 100.0, point.y}) / 100.0;
    EXPECT_NEAR(ZRGroundResolutionAtLatitude(latitude), meters, 1e-8);
  }
  EXPECT_EQ(ZRGroundResolutionAtLatitude(90.0), ZRGroundResolutionAtLatitude(85.05112878));
}

TEST(Destination, LiesAtTheDistanceAndInTheDirectionAskedFor) {
  Dice dice;
  for (int i = 0; i < 2000; ++i) {
    const CLLocationCoordinate2D origin = {dice.between(-89.0, 89.0), dice.between(-180.0, 180.0)};
    const double bearing = dice.between(0.0, 360.0), distance = dice.between(10.0, 1.9e7);
    const CLLocationCoordinate2D there = ZRDestinationCoordinate(origin, bearing, distance);
    SCOPED_TRACE(testing::PrintToString(values(origin)) + testing::PrintToString(values(there)));
    EXPECT_TRUE(CLLocationCoordinate2DIsValid(there));
    EXPECT_NEAR(ZRGreatCircleDistance(origin, there), distance, 1e-3);
    const double found = geometry::directionWithTurn(origin, there);
    EXPECT_NEAR(std::remainder(found - bearing, 360.0), 0.0, 1e-4);
  }
}

TEST(Destination, CrossesTheAntimeridianAndThePole) {
  constexpr double kDegree = 111319.49079327357;
  struct {
    CLLocationCoordinate2D origin;
    double bearingDegrees, distanceMeters;
    CLLocationCoordinate2D there;
  } const rows[] = {
      {{0, 179}, 90, 2 * kDegree, {0, -179}},
      {{0, -179}, 90, -2 * kDegree, {0, 179}},
      {{80, 10}, 0, 20 * kDegree, {80, -170}},
      {{90, 30}, 180, kDegree, {89, 30}},  // leaving the pole along the origin's meridian
      {{40, 20}, 123, 360 * kDegree, {40, 20}},
      {{40, 180}, 0, 0, {40, 180}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.origin)));
    const CLLocationCoordinate2D there = ZRDestinationCoordinate(row.origin, row.bearingDegrees, row.distanceMeters);
    EXPECT_NEAR(there.latitude, row.there.latitude, 1e-9);
    EXPECT_NEAR(there.longitude, row.there.longitude, 1e-9);
  }
}

}  // namespace
