// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_GREATCIRCLE_H
#define ZRCORE_GEOMETRY_GREATCIRCLE_H

#include <ZRCore/ZRGeometry.h>

#include <cmath>

#include "Numbers.h"

namespace geometry {

/// Metres on the sphere, by the haversine.
inline double greatCircleDistance(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept {
  const double sinLat = std::sin(radians(to.latitude - from.latitude) * 0.5);
  const double sinLon = std::sin(radians(to.longitude - from.longitude) * 0.5);
  const double h =
      sinLat * sinLat + sinLon * sinLon * std::cos(radians(from.latitude)) * std::cos(radians(to.latitude));
  // Near antipodes h can round to just above 1; the distance is half the circumference then, and not NaN.
  return 2.0 * std::atan2(std::sqrt(h), std::sqrt(std::fmax(1.0 - h, 0.0))) * kEarthRadius;
}

/// The course at `from` of the great circle to `to`: degrees clockwise from north, in [-180, 180].
inline double initialBearing(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept {
  const double fromLat = from.latitude * kRadiansPerDegree;
  const double toLat = to.latitude * kRadiansPerDegree;
  const double deltaLon = (to.longitude - from.longitude) * kRadiansPerDegree;
  const double east = std::sin(deltaLon) * std::cos(toLat);
  const double north = std::cos(fromLat) * std::sin(toLat) - std::cos(toLat) * std::sin(fromLat) * std::cos(deltaLon);
  return std::atan2(east, north) * kDegreesPerRadian;
}

}  // namespace geometry

#endif
