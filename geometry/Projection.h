// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_PROJECTION_H
#define ZRCORE_GEOMETRY_PROJECTION_H

#include <ZRCore/ZRGeometry.h>

#include <cmath>

#include "Numbers.h"

/// The projection as inline functions, so that the conversions built on it cost one call from outside and none within.
namespace geometry {

inline ZRDoublePoint mercator(double latitude, double longitude) noexcept {
  return {longitude * kProjectionMetersPerDegree,
          std::log(std::tan((latitude + 90.0) * 0.5 * kRadiansPerDegree)) * kEarthRadius};
}

inline CLLocationCoordinate2D inverseMercator(double x, double y) noexcept {
  return {(2.0 * std::atan(std::exp(y / kEarthRadius)) + -kHalfPi) * kDegreesPerRadian, x * kProjectionDegreesPerMeter};
}

inline ZRMapPoint mapPoint(CLLocationCoordinate2D coordinate) noexcept {
  const ZRDoublePoint meters = mercator(clampedLatitude(coordinate.latitude), clampedLongitude(coordinate.longitude));
  return {(meters.x + kHalfEquator) / kProjectionMetersPerMapPoint,
          (kHalfEquator - meters.y) / kProjectionMetersPerMapPoint};
}

inline CLLocationCoordinate2D coordinate(ZRMapPoint point) noexcept {
  const double longitude = clampedLongitude((clamped(point.x, 0.0, kGreatestMapX) * kPerWorldWidth + -0.5) * 360.0);
  const double t = point.y * -kTwoPi * kPerWorldWidth + kPi;
  const double latitude = clampedLatitude(std::atan((std::exp(t) - std::exp(-t)) * 0.5) * kDegreesPerRadian);
  return {latitude, longitude};
}

}  // namespace geometry

#endif
