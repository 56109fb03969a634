// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>
#include <gtest/gtest.h>

#include <cmath>

#include "GeometryValues.h"

namespace {

constexpr double kMiddle = kWorld / 2.0;

TEST(Projection, PutsCoordinatesOutsideTheWorldOnItsEdge) {
  struct {
    CLLocationCoordinate2D outside, edge;
  } const rows[] = {
      {{90.0, 200.0}, {85.05112878, 180.0}},
      {{-90.0, -200.0}, {-85.05112878, -180.0}},
      {{kInf, -kInf}, {85.05112878, -180.0}},
      {{kNaN, kNaN}, {-85.05112878, -180.0}},  // a NaN counts as the lower bound
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.outside)));
    EXPECT_EQ(bits(ZRMapPointForCoordinate(row.outside)), bits(ZRMapPointForCoordinate(row.edge)));
  }
}

TEST(Projection, MapsTheWorldOntoTheSquareWithItsOriginInTheNorthWest) {
  struct {
    CLLocationCoordinate2D coordinate;
    ZRMapPoint point;
  } const rows[] = {
      {{0.0, 0.0}, {kMiddle, kMiddle}},
      {{85.05112878, 180.0}, {kWorld, 0.0}},
      {{-85.05112878, -180.0}, {0.0, kWorld}},
      {{66.51326044311186, -90.0}, {kWorld / 4.0, kWorld / 4.0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.coordinate)));
    EXPECT_NEAR(ZRMapPointForCoordinate(row.coordinate).x, row.point.x, 1e-6);
    EXPECT_NEAR(ZRMapPointForCoordinate(row.coordinate).y, row.point.y, 0.01);  // the latitude limit is rounded
  }
}

TEST(Projection, TakesMapPointsBackToClampedCoordinates) {
  const double justBelow180 = ((kWorld - 1.0) / kWorld - 0.5) * 360.0;
  struct {
    ZRMapPoint point;
    CLLocationCoordinate2D coordinate;
  } const rows[] = {
      {{kWorld, -1e12}, {85.05112878, justBelow180}},
      {{kInf, -kInf}, {85.05112878, justBelow180}},
      {{-5.0, 1e12}, {-85.05112878, -180.0}},
      {{kNaN, kNaN}, {-85.05112878, -180.0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.point)));
    EXPECT_EQ(values(ZRCoordinateForMapPoint(row.point)), values(row.coordinate));
  }
  EXPECT_LT(justBelow180, 180.0);
}

TEST(Projection, ReturnsToWhereItCameFrom) {
  Dice dice;
  for (int i = 0; i < 1000; ++i) {
    const CLLocationCoordinate2D place = {dice.between(-85.0, 85.0), dice.between(-180.0, 179.999)};
    const CLLocationCoordinate2D throughThePlane = ZRCoordinateForMapPoint(ZRMapPointForCoordinate(place));
    EXPECT_NEAR(throughThePlane.latitude, place.latitude, 1e-12 * 180.0);
    EXPECT_NEAR(throughThePlane.longitude, place.longitude, 1e-12 * 180.0);
    const ZRDoublePoint meters = mercatorTransform(place.latitude, place.longitude);
    const CLLocationCoordinate2D throughMeters = mercatorInverseTransform(meters.x, meters.y);
    EXPECT_NEAR(throughMeters.latitude, place.latitude, 1e-12 * 180.0);
    EXPECT_NEAR(throughMeters.longitude, place.longitude, 1e-12 * 180.0);
  }
}

TEST(Projection, InMetersClampsNothingAndIsFiniteAtTheNorthPoleOnly) {
  const double atNorthPole = mercatorTransform(90.0, 0.0).y;
  EXPECT_GT(atNorthPole, 2.3e8);
  EXPECT_LT(atNorthPole, 2.5e8);
  EXPECT_EQ(mercatorTransform(-90.0, 0.0).y, -kInf);
  EXPECT_EQ(mercatorTransform(0.0, 720.0).x, 720.0 * 111319.49079327357);
  EXPECT_EQ(mercatorInverseTransform(1e9, kInf).longitude, 1e9 * 8.983152841195214e-06);
  EXPECT_DOUBLE_EQ(mercatorInverseTransform(1e9, kInf).latitude, 90.0);
}

TEST(Scale, KeepsEachTwinConstantInItsOwnFormula) {
  EXPECT_EQ(ZRMapPointForCoordinate({0.0, 0.0}).x, 20037508.342789244 / 0.5971642834779395);
  EXPECT_EQ(mercatorTransform(0.0, 1.0).x, 111319.49079327357);
  EXPECT_EQ(metersPerDegreeAtLon(), 111319.49079327355);
  EXPECT_EQ(mercatorInverseTransform(1.0, 0.0).longitude, 8.983152841195214e-06);
  EXPECT_EQ(degreesPerMeterAtLon(), 8.983152841195216e-06);
  EXPECT_EQ(degreesPerMeterAtLat(0.0), 8.983152841195216e-06);
  EXPECT_EQ(ZRMetersPerMapPointAtLatitude(0.0), 0.5971642834779394);
}

TEST(Scale, FallsToNothingInTheNorthAndDoublesInTheSouth) {
  const double atNorthernLimit = ZRMetersPerMapPointAtLatitude(85.05112878);
  EXPECT_LT(atNorthernLimit, 0.0);
  EXPECT_NEAR(atNorthernLimit, 0.0, 1e-9);
  EXPECT_NEAR(ZRMetersPerMapPointAtLatitude(-85.05112878), 2.0 * 0.5971642834779394, 1e-9);
  EXPECT_EQ(ZRMetersPerMapPointAtLatitude(90.0), atNorthernLimit);
  EXPECT_EQ(ZRMapPointsPerMeterAtLatitude(90.0), 1.0 / atNorthernLimit);
  EXPECT_EQ(ZRMetersPerMapPointAtLatitude(kNaN), ZRMetersPerMapPointAtLatitude(-90.0));
}

TEST(Scale, HalvesWithEveryZoomLevelFromWholeTileDownToOnePointPerPixel) {
  for (const double latitude : {-60.0, 0.0, 45.0}) {
    for (int zoom = 0; zoom <= maxZoom; ++zoom) {
      EXPECT_EQ(ZRMetersPerMapPointAtLatituteAndZoom(latitude, zoom),
                std::ldexp(ZRMetersPerMapPointAtLatitude(latitude), 18 - zoom));
    }
  }
  EXPECT_EQ(ZRMetersPerMapPointAtLatituteAndZoom(0.0, INT32_MAX), 0.0);
}

TEST(MetersBetweenMapPoints, AreThoseOfTheGreatCircleInBothDirections) {
  constexpr double kQuarter = kWorld / 4.0;
  struct {
    ZRMapPoint a, b;
    double meters, tolerance;
  } const rows[] = {
      {{kMiddle, kMiddle}, {kMiddle, kMiddle}, 0.0, 0.0},
      {{kMiddle, kMiddle}, {kMiddle + kQuarter, kMiddle}, 10018754.171394622, 1e-6},
      {{0.0, kMiddle}, {kMiddle, kMiddle}, 20037508.342789244, 1e-6},
      {{0.0, kMiddle}, {kWorld, kMiddle}, 0.5971642834779395, 1e-6},  // across the seam, one clamped map point short
      {{kWorld - 1.0, kMiddle}, {7e7, kMiddle}, 0.0, 0.0},
      {{kNaN, kNaN}, {0.0, kWorld}, 0.0, 1e-3},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.meters);
    EXPECT_NEAR(ZRMetersBetweenMapPoints(row.a, row.b), row.meters, row.tolerance);
    EXPECT_DOUBLE_EQ(ZRMetersBetweenMapPoints(row.a, row.b), ZRMetersBetweenMapPoints(row.b, row.a));
  }
}

TEST(RegionMaking, WithDistanceTakesFullExtentsRoundAClampedCenter) {
  const ZRCoordinateRegion region = ZRCoordinateRegionMakeWithDistance({89.0, -190.0}, -1000.0, 500.0);
  EXPECT_EQ(values(region.center), values(CLLocationCoordinate2D{85.05112878, -180.0}));
  EXPECT_EQ(region.span.latitudeDelta, -1000.0 * 8.983152841195216e-06);
  EXPECT_EQ(region.span.longitudeDelta, 500.0 * degreesPerMeterAtLat(85.05112878));
}

TEST(RegionMaking, WithCoordinatesAlwaysGoesSouthAndEastOfTheFirst) {
  const ZRCoordinateRegion fromSouth = ZRCoordinateRegionMakeWithCoordinates({10.0, 40.0}, {30.0, 20.0});
  EXPECT_EQ(values(fromSouth), values(ZRCoordinateRegion{{0.0, 50.0}, {20.0, 20.0}}));
}

TEST(Coordinate, IsValidUpToAndWithItsBoundsAndASpanZeroOnlyAtZero) {
  EXPECT_TRUE(CLLocationCoordinate2DIsValid({90.0, -180.0}));
  EXPECT_TRUE(CLLocationCoordinate2DIsValid({-90.0, 180.0}));
  for (const double bad : {kNaN, kInf, -kInf, 180.0 + 1e-9}) {
    EXPECT_FALSE(CLLocationCoordinate2DIsValid({bad, 0.0}));
    EXPECT_FALSE(CLLocationCoordinate2DIsValid({0.0, bad}));
  }
  EXPECT_FALSE(CLLocationCoordinate2DIsValid({90.0 + 1e-9, 0.0}));
  EXPECT_FALSE(ZRCoordinateSpanIsZero({0.0, 1e-300}));
  EXPECT_FALSE(ZRCoordinateSpanIsZero({kNaN, 0.0}));
}

}  // namespace
