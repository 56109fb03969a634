// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <ZRCore/ZRRuler.hpp>
#include <cmath>

#include "GeodesicLengths.h"
#include "GeometryValues.h"

namespace {

double turnBetween(double a, double b) { return std::fabs(std::remainder(a - b, 360.0)); }

TEST(Ruler, MeasuresGeodesicsWithinItsBoundsAndFindsTheWayBack) {
  for (const GeodesicLength& row : kGeodesicLengths) {
    SCOPED_TRACE(testing::Message() << row.from.latitude << " " << row.from.longitude << ", " << row.meters << " m");
    const ZRRuler ruler(row.rulerLatitude);
    const double bound = row.meters > 1000.001 ? 1e-3 : 1e-5;
    EXPECT_NEAR(ruler.distance(row.from, row.to), row.meters, bound);
    EXPECT_EQ(ruler.distance(row.to, row.from), ruler.distance(row.from, row.to));
    const double middle = row.startDegrees + 0.5 * std::remainder(row.endDegrees - row.startDegrees, 360.0);
    const double bearing = ruler.bearing(row.from, row.to);
    EXPECT_LE(turnBetween(bearing, middle), row.meters > 1000.001 ? 1e-4 : 2e-6);
    EXPECT_LE(turnBetween(ruler.bearing(row.to, row.from), bearing + 180.0), 1e-12);
    const auto reached = ruler.destination(row.from, bearing, row.meters);
    EXPECT_LE(ruler.distance(reached, row.to), bound);
  }
}

TEST(Ruler, FindsTheNearestPointOfALine) {
  const ZRRuler ruler(10.0);
  const CLLocationCoordinate2D line[] = {{10.0, 179.99}, {10.0, -179.99}, {10.0, -179.99}, {10.02, -179.99}};
  struct {
    CLLocationCoordinate2D place;
    std::uint64_t segment;
    double fraction;
    CLLocationCoordinate2D nearest;
  } const rows[] = {
      {{9.99, 179.98}, 0, 0.0, {10.0, 179.99}},        // before the start
      {{9.995, -179.995}, 0, 0.75, {10.0, -179.995}},  // across the antimeridian
      {{9.99, -179.98}, 0, 1.0, {10.0, -179.99}},      // the corner, and a segment without length
      {{10.01, -179.98}, 2, 0.5, {10.01, -179.99}},   {{10.5, -179.99}, 2, 1.0, {10.02, -179.99}},
  };
  for (const auto& row : rows) {
    const auto found = ruler.nearestPoint(row.place, line, std::size(line));
    SCOPED_TRACE(testing::Message() << row.place.latitude << " " << row.place.longitude);
    EXPECT_EQ(found.segment, row.segment);
    EXPECT_NEAR(found.fraction, row.fraction, 1e-4);
    EXPECT_NEAR(found.coordinate.latitude, row.nearest.latitude, 1e-5);
    EXPECT_NEAR(found.coordinate.longitude, row.nearest.longitude, 1e-5);
    EXPECT_NEAR(found.distanceMeters, ruler.distance(row.place, found.coordinate), 0.01);
  }
  EXPECT_TRUE(std::isnan(ruler.nearestPoint({10.0, 0.0}, nullptr, 0).distanceMeters));
  EXPECT_EQ(ruler.nearestPoint(line[3], line + 3, 1).distanceMeters, 0.0);
}

TEST(Ruler, ComputesThroughWhatIsNoPlace) {
  const ZRRuler ruler(50.0);
  for (const double odd : {kNaN, kInf}) {
    EXPECT_TRUE(std::isnan(ruler.distance({odd, 1.0}, {2.0, 3.0})));
    EXPECT_TRUE(std::isnan(ruler.distance({2.0, 3.0}, {1.0, odd})));
    EXPECT_TRUE(std::isnan(ruler.destination({odd, 1.0}, 2.0, 3.0).latitude));
    EXPECT_TRUE(std::isnan(ZRRuler(odd).distance({50.0, 1.0}, {50.0, 1.1})));
    const CLLocationCoordinate2D line[] = {{50.0, 7.0}, {odd, 7.0}, {50.0, 8.0}};
    EXPECT_EQ(ruler.nearestPoint({50.0, 8.0}, line, 3).segment, 0U);
    EXPECT_TRUE(std::isnan(ruler.nearestPoint({50.0, 8.0}, line + 1, 2).distanceMeters));
  }
  EXPECT_EQ(ruler.distance({50.0, 7.0}, {50.0, 7.0}), 0.0);
  EXPECT_EQ(ruler.bearing({50.0, 7.0}, {50.0, 7.0}), 0.0);
}

}  // namespace
