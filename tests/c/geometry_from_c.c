// SPDX-License-Identifier: Apache-2.0
/* A host written in C: every function and constant can be reached, and structs go through the call boundary unharmed.
 */

#include <ZRCore/ZRGeometry.h>
#include <ZRCore/ZRGeometryAdditions.h>
#include <math.h>
#include <stdio.h>
#include <string.h>

static int failures = 0;

static void expect(bool holds, const char* what) {
  if (!holds) {
    printf("failed: %s\n", what);
    failures++;
  }
}
#define EXPECT(condition) expect(condition, #condition)

static bool near(double a, double b) { return fabs(a - b) <= 1e-6; }

static bool rectIs(ZRMapRect r, double x, double y, double width, double height) {
  return r.origin.x == x && r.origin.y == y && r.size.width == width && r.size.height == height;
}

static bool regionIs(ZRCoordinateRegion r, double latitude, double longitude, double height, double width) {
  return near(r.center.latitude, latitude) && near(r.center.longitude, longitude) &&
         near(r.span.latitudeDelta, height) && near(r.span.longitudeDelta, width);
}

static void constants(void) {
  EXPECT(EarthRadius == 6378137.0 && minLat == -85.05112878 && maxLat == 85.05112878);
  EXPECT(minLon == -180.0 && maxLon == 180.0 && maxZoom == 18 && tileSize == 256);
  EXPECT(ZRMapSizeWorld.width == 67108864.0 && ZRMapSizeWorld.height == 67108864.0);
  EXPECT(rectIs(ZRMapRectWorld, 0.0, 0.0, 67108864.0, 67108864.0));
  EXPECT(rectIs(ZRMapRectNull, HUGE_VAL, HUGE_VAL, HUGE_VAL, HUGE_VAL));
  EXPECT(ZRCoordinateRegionNull.center.latitude == HUGE_VAL && ZRCoordinateRegionNull.center.longitude == HUGE_VAL);
  EXPECT(ZRCoordinateRegionNull.span.latitudeDelta == HUGE_VAL);
  EXPECT(ZRCoordinateRegionNull.span.longitudeDelta == HUGE_VAL);
  EXPECT(ZRCoordinateSpanNull.latitudeDelta == HUGE_VAL && ZRCoordinateSpanNull.longitudeDelta == HUGE_VAL);
  EXPECT(ZRCoordinateNull.latitude == HUGE_VAL && ZRCoordinateNull.longitude == HUGE_VAL);
  EXPECT(!CLLocationCoordinate2DIsValid(kCLLocationCoordinate2DInvalid));
  EXPECT(ZRMetersToMileRatio == 0.0006213711922373339 && ZRCoreVersionNumber == 1.0);
  EXPECT(memcmp(ZRCoreVersionString, "@(#)PROGRAM:ZRCore  PROJECT:ZRCore-1\n", 38) == 0);

  double sum = 0.0; /* finds a digit that went wrong anywhere in the table */
  for (int i = 0; i <= 90; i++) sum += metersPerDegreeLng[i];
  EXPECT(fabs(sum - 6425657.33) < 1e-3 && metersPerDegreeLng[45] == 78616.98 && metersPerDegreeLng[90] == 1.0);
  metersPerDegreeLat = metersPerDegreeLng[0] = 111181.91; /* both are writable */
}

static void projectionAndScale(void) {
  const CLLocationCoordinate2D here = CLLocationCoordinate2DMake(10.0, 20.0), there = {30.0, 40.0};
  const ZRMapPoint middle = ZRMapPointForCoordinate(CLLocationCoordinate2DMake(0.0, 0.0));
  EXPECT(here.latitude == 10.0 && here.longitude == 20.0 && CLLocationCoordinate2DIsValid(here));
  EXPECT(ZRDoublePointMake(1.0, 2.0).y == 2.0);
  const ZRBoundingBox box = ZRBoundingBoxMake(1.0, 2.0, 3.0, 4.0);
  EXPECT(box.a == 1.0 && box.b == 2.0 && box.c == 3.0 && box.d == 4.0);
  EXPECT(ZRCoordinateSpanIsZero(ZRCoordinateSpanMake(0.0, -0.0)));
  EXPECT(regionIs(ZRCoordinateRegionMake(here, ZRCoordinateSpanMake(1.0, 2.0)), 10.0, 20.0, 1.0, 2.0));
  EXPECT(near(mercatorTransform(0.0, 180.0).x, 20037508.342789244));
  EXPECT(near(mercatorInverseTransform(20037508.342789244, 0.0).longitude, 180.0));
  EXPECT(near(middle.x, 33554432.0) && near(middle.y, 33554432.0));
  EXPECT(near(ZRCoordinateForMapPoint(middle).latitude, 0.0));
  EXPECT(ZRMetersPerMapPointAtLatitude(0.0) == 0.5971642834779394);
  EXPECT(ZRMetersPerMapPointAtLatituteAndZoom(0.0, 18) == 0.5971642834779394);
  EXPECT(near(ZRMapPointsPerMeterAtLatitude(0.0), 1.0 / 0.5971642834779394));
  EXPECT(ZRMetersBetweenMapPoints(middle, middle) == 0.0);
  EXPECT(degreesToRads(180.0) == 3.141592653589793);
  EXPECT(degreesPerMeterAtLon() == 8.983152841195216e-06 && metersPerDegreeAtLon() == 111319.49079327355);
  EXPECT(near(degreesPerMeterAtLat(60.0), 2.0 * 8.983152841195216e-06));
  EXPECT(near(metersPerDegreeAtLat(60.0), 40075016.68557848 / 720.0));
  EXPECT(regionIs(ZRCoordinateRegionMakeWithDistance((CLLocationCoordinate2D){0.0, 0.0}, 1e5, 2e5), 0.0, 0.0,
                  0.8983152841195216, 1.7966305682390432));
  EXPECT(regionIs(ZRCoordinateRegionMakeWithCoordinates(here, there), 0.0, 30.0, 20.0, 20.0));
  EXPECT(near(ZRGreatCircleDistance(here, here), 0.0));
  EXPECT(ZRGroundResolutionAtLatitude(0.0) == 0.5971642834779395);
  EXPECT(near(ZRDestinationCoordinate(here, 0.0, 111319.49079327357).latitude, 11.0));
}

static void rectangles(void) {
  const ZRMapRect a = {{0.0, 0.0}, {10.0, 10.0}}, b = {{5.0, 5.0}, {10.0, 10.0}};
  const ZRMapRect seam = {{67108854.0, 0.0}, {20.0, 5.0}}, west = {{0.0, 0.0}, {33554432.0, 67108864.0}};
  const ZRMapPoint corners[2] = {{1.0, 2.0}, {4.0, 6.0}};
  ZRMapRect part, remainder;
  EXPECT(rectIs(ZRMapRectUnion(a, b), 0.0, 0.0, 15.0, 15.0));
  EXPECT(rectIs(ZRMapRectIntersection(a, b), 5.0, 5.0, 5.0, 5.0));
  EXPECT(rectIs(ZRMapRectInset(a, 2.0, 4.0), 1.0, 2.0, 8.0, 6.0));
  EXPECT(rectIs(ZRMapRectOffset(a, 2.0, 4.0), 2.0, 4.0, 10.0, 10.0));
  ZRMapRectDivide(a, &part, &remainder, 3.0, CGRectMaxXEdge);
  EXPECT(rectIs(part, 7.0, 0.0, 3.0, 10.0) && rectIs(remainder, 0.0, 0.0, 7.0, 10.0));
  EXPECT(ZRMapRectContainsPoint(a, (ZRMapPoint){10.0, 10.0}));
  EXPECT(!ZRMapRectContainsRect(a, b) && ZRMapRectIntersectsRect(a, b));
  EXPECT(ZRMapPointNormalized((ZRMapPoint){-1.5, 67108866.0}).x == 67108862.5);
  EXPECT(ZRMapRectSpans180thMeridian(seam) && rectIs(ZRMapRectRemainder(seam), 0.0, 0.0, 10.0, 5.0));
  EXPECT(regionIs(ZRCoordinateRegionForMapRect(west), 0.0, -90.0, 0.0, 180.0));
  EXPECT(ZRMapRectForZRCoordinateRegion(ZRCoordinateRegionNull).size.height == HUGE_VAL);
  EXPECT(regionIs(
      ZRCoordinateRegionBetweenCoords((CLLocationCoordinate2D){10.0, 1.0}, (CLLocationCoordinate2D){20.0, 2.0}), 15.0,
      1.5, 10.0, 1.0));
  EXPECT(rectIs(ZRMBR(corners, 2), 1.0, 2.0, 3.0, 4.0));
  EXPECT(distanceBetweenPoints(corners[0], corners[1]) == 5.0);
  EXPECT(ZRMapRectIsNull(ZRMapRectNull) && !ZRMapRectIsNull(a));
  EXPECT(ZRMapPointEqualToPoint(corners[0], corners[0]) && !ZRMapPointEqualToPoint(corners[0], corners[1]));
  EXPECT(ZRMapRectEqualToRect(a, a) && !ZRMapRectEqualToRect(a, b));
  EXPECT(ZRCoordinateRegionEqualToRegion(ZRCoordinateRegionNull, ZRCoordinateRegionForMapRect(ZRMapRectNull)));
}

static void batches(void) {
  const CLLocationCoordinate2D line[3] = {{0.0, 0.0}, {0.0, 90.0}, {0.0, 180.0}};
  CLLocationCoordinate2D back[3];
  ZRMapPoint points[3];
  double meters[3];
  float degrees[2];
  ZRMapPointsForCoordinates(line, points, 3);
  EXPECT(points[2].x == ZRMapPointForCoordinate(line[2]).x);
  ZRCoordinatesForMapPoints(points, back, 3);
  EXPECT(back[1].longitude == ZRCoordinateForMapPoint(points[1]).longitude);
  ZRMapPointsForCoordinatesFast(line, points, 3);
  ZRCoordinatesForMapPointsFast(points, back, 3);
  EXPECT(near(back[1].longitude, 90.0));
  ZRGreatCircleDistancesFrom(line[1], line, meters, 3);
  EXPECT(meters[1] == 0.0 && meters[0] == ZRGreatCircleDistance(line[1], line[0]));
  ZRGreatCircleDistancesAlong(line, 3, meters);
  EXPECT(meters[1] == ZRGreatCircleDistance(line[1], line[2]));
  ZRBearingsAlong(line, 3, degrees);
  EXPECT(degrees[0] == 90.0F && degrees[1] == 90.0F);
  const ZRMapRect rects[2] = {{{0.0, 0.0}, {2.0, 2.0}}, {{5.0, 5.0}, {-1.0, -1.0}}};
  uint64_t bits = 0;
  ZRMapRectIntersectsRects(rects[1], rects, 2, &bits);
  EXPECT(bits == 2);
  EXPECT(rectIs(ZRMapRectUnionOfRects(rects, 2), 0.0, 0.0, 5.0, 5.0));
}

int main(void) {
  constants();
  projectionAndScale();
  rectangles();
  batches();
  return failures == 0 ? 0 : 1;
}
