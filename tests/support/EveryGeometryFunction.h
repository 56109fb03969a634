// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_EVERYGEOMETRYFUNCTION_H
#define ZRCORE_TESTS_SUPPORT_EVERYGEOMETRYFUNCTION_H

#include <ZRCore/ZRGeometryAdditions.h>
#include <exact/Exact.h>
#include <geometry/CoordinateDirections.h>
#include <ZRCore/ZRGeometry.hpp>

#include <array>
#include <cstdint>

/// What the functions are called with.
struct GeometryArguments {
  CLLocationCoordinate2D here, there, elsewhere;
  ZRMapPoint point, otherPoint;
  ZRMapRect rect, otherRect;
  double amount;
};

/// Calls each function that computes something, once, and hands its name and result to `take`.
template <class Take>
void callEveryGeometryFunction(const GeometryArguments& with, Take&& take) {
  const auto& [here, there, elsewhere, point, otherPoint, rect, otherRect, amount] = with;
  const ZRCoordinateRegion region = {here, {there.latitude, there.longitude}};

  take("CLLocationCoordinate2DIsValid", CLLocationCoordinate2DIsValid(here));
  take("ZRCoordinateSpanIsZero", ZRCoordinateSpanIsZero(region.span));
  take("mercatorTransform", mercatorTransform(here.latitude, here.longitude));
  take("mercatorInverseTransform", mercatorInverseTransform(point.x, point.y));
  take("ZRMapPointForCoordinate", ZRMapPointForCoordinate(here));
  take("ZRCoordinateForMapPoint", ZRCoordinateForMapPoint(point));
  take("ZRMetersPerMapPointAtLatitude", ZRMetersPerMapPointAtLatitude(here.latitude));
  take("ZRMetersPerMapPointAtLatituteAndZoom", ZRMetersPerMapPointAtLatituteAndZoom(here.latitude, 7));
  take("ZRMapPointsPerMeterAtLatitude", ZRMapPointsPerMeterAtLatitude(here.latitude));
  take("ZRMetersBetweenMapPoints", ZRMetersBetweenMapPoints(point, otherPoint));
  take("degreesToRads", degreesToRads(here.latitude));
  take("degreesPerMeterAtLat", degreesPerMeterAtLat(here.latitude));
  take("metersPerDegreeAtLat", metersPerDegreeAtLat(here.latitude));
  take("ZRCoordinateRegionMakeWithDistance", ZRCoordinateRegionMakeWithDistance(here, amount, point.x));
  take("ZRCoordinateRegionMakeWithCoordinates", ZRCoordinateRegionMakeWithCoordinates(here, there));

  take("ZRMapRectUnion", ZRMapRectUnion(rect, otherRect));
  take("ZRMapRectIntersection", ZRMapRectIntersection(rect, otherRect));
  take("ZRMapRectInset", ZRMapRectInset(rect, amount, point.y));
  take("ZRMapRectOffset", ZRMapRectOffset(rect, amount, point.y));
  for (CGRectEdge edge = CGRectMinXEdge; edge <= CGRectMaxYEdge; ++edge) {
    std::array<ZRMapRect, 2> pieces = {rect, otherRect};
    ZRMapRectDivide(rect, &pieces[0], &pieces[1], amount, edge);
    take("ZRMapRectDivide", pieces);
  }
  take("ZRMapRectContainsPoint", ZRMapRectContainsPoint(rect, point));
  take("ZRMapRectContainsRect", ZRMapRectContainsRect(rect, otherRect));
  take("ZRMapRectIntersectsRect", ZRMapRectIntersectsRect(rect, otherRect));
  take("ZRMapPointNormalized", ZRMapPointNormalized(point));
  take("ZRMapRectSpans180thMeridian", ZRMapRectSpans180thMeridian(rect));
  take("ZRMapRectRemainder", ZRMapRectRemainder(rect));
  take("ZRCoordinateRegionForMapRect", ZRCoordinateRegionForMapRect(rect));
  take("ZRMapRectForZRCoordinateRegion", ZRMapRectForZRCoordinateRegion(region));
  take("ZRCoordinateRegionBetweenCoords", ZRCoordinateRegionBetweenCoords(here, there));
  const std::array<ZRMapPoint, 4> points = {point, otherPoint, rect.origin, otherRect.origin};
  for (const std::uint64_t count : {0U, 1U, 4U}) take("ZRMBR", ZRMBR(points.data(), count));
  take("distanceBetweenPoints", distanceBetweenPoints(point, otherPoint));
  const std::array<ZRMapRect, 5> rects = {rect, otherRect, {point, rect.size}, {otherPoint, rect.size}, otherRect};
  std::uint64_t meeting = 0;
  ZRMapRectIntersectsRects(rect, rects.data(), rects.size(), &meeting);
  take("ZRMapRectIntersectsRects", static_cast<double>(meeting));
  take("ZRMapRectUnionOfRects", ZRMapRectUnionOfRects(rects.data(), rects.size()));

  take("bearingFromTo", ZRCoordinateUtils::bearingFromTo(here, there));
  take("approximateDistanceFromTo", ZRCoordinateUtils::approximateDistanceFromTo(here, there));
  take("interpolateFromToPercent", ZRCoordinateUtils::interpolateFromToPercent(here, there, 0.3F));
  take("closestCoordToCoordAlongLineWithStartingCoordAndEndingCoord",
       ZRCoordinateUtils::closestCoordToCoordAlongLineWithStartingCoordAndEndingCoord(elsewhere, here, there));
  take("coordIsEqualTo", ZRCoordinateUtils::coordIsEqualTo(here, there));
  take("directionWithTurn", geometry::directionWithTurn(here, there));
  take("coordinateAtDistance", geometry::coordinateAtDistance(here, amount * 1e6, there));
  take("ZRMapRectIsNull", ZRMapRectIsNull(rect));
  take("ZRMapPointEqualToPoint", ZRMapPointEqualToPoint(point, otherPoint));
  take("ZRMapRectEqualToRect", ZRMapRectEqualToRect(rect, otherRect));
  take("ZRCoordinateRegionEqualToRegion", ZRCoordinateRegionEqualToRegion(region, region));
  take("ZRGreatCircleDistance", ZRGreatCircleDistance(here, there));
  take("ZRGroundResolutionAtLatitude", ZRGroundResolutionAtLatitude(here.latitude));
  take("ZRDestinationCoordinate", ZRDestinationCoordinate(here, there.longitude, amount));

  // An odd number, so that some elements are left over by any number of lanes.
  constexpr std::uint64_t kCount = 11;
  std::array<CLLocationCoordinate2D, kCount> line, unprojected;
  std::array<ZRMapPoint, kCount> projected;
  std::array<double, kCount> meters;
  std::array<float, kCount - 1> degrees;
  for (std::uint64_t i = 0; i < kCount; ++i) {
    const double part = static_cast<double>(i) * 0.09;
    line[i] = {here.latitude + part * there.latitude, there.longitude - part * elsewhere.longitude};
  }
  ZRMapPointsForCoordinates(line.data(), projected.data(), kCount);
  take("ZRMapPointsForCoordinates", projected);
  ZRCoordinatesForMapPoints(projected.data(), unprojected.data(), kCount);
  take("ZRCoordinatesForMapPoints", unprojected);
  ZRGreatCircleDistancesFrom(here, line.data(), meters.data(), kCount);
  take("ZRGreatCircleDistancesFrom", meters);
  ZRGreatCircleDistancesAlong(line.data(), kCount, meters.data());
  take("ZRGreatCircleDistancesAlong", meters);
  ZRBearingsAlong(line.data(), kCount, degrees.data());
  for (const float bearing : degrees) take("ZRBearingsAlong", bearing);

  const double angle = point.x * 1e-6;
  const double sine = here.latitude * (1.0 / 95.0);
  take("exact::sin", exact::sin(angle));
  take("exact::cos", exact::cos(angle));
  take("exact::sincos", exact::sincos(amount));
  take("exact::tan", exact::tan(angle));
  take("exact::asin", exact::asin(sine));
  take("exact::acos", exact::acos(sine));
  take("exact::atan", exact::atan(there.latitude));
  take("exact::atan2", exact::atan2(here.longitude, there.longitude));
  take("exact::exp", exact::exp(elsewhere.longitude));
  take("exact::log", exact::log(otherPoint.x));
  take("exact::hypot", exact::hypot(point.y, otherPoint.y));
}

#endif
