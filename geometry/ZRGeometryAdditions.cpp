// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometryAdditions.h>

#include <cmath>

#include "GreatCircle.h"
#include "Numbers.h"

double ZRGreatCircleDistance(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept {
  return geometry::greatCircleDistance(from, to);
}

double ZRGroundResolutionAtLatitude(double latitude) noexcept {
  return std::cos(geometry::radians(geometry::clampedLatitude(latitude))) * geometry::kProjectionMetersPerMapPoint;
}

CLLocationCoordinate2D ZRDestinationCoordinate(CLLocationCoordinate2D origin, double bearingDegrees,
                                               double distanceMeters) noexcept {
  const double latitude = geometry::radians(origin.latitude);
  const double bearing = geometry::radians(bearingDegrees);
  const double angle = distanceMeters / geometry::kEarthRadius;
  // The destination as a unit vector: towards the origin's meridian, a quarter turn east of it, and along the axis.
  const double meridian =
      std::cos(latitude) * std::cos(angle) - std::sin(latitude) * std::sin(angle) * std::cos(bearing);
  const double east = std::sin(angle) * std::sin(bearing);
  const double axis = std::sin(latitude) * std::cos(angle) + std::cos(latitude) * std::sin(angle) * std::cos(bearing);
  const double longitude = origin.longitude + std::atan2(east, meridian) * geometry::kDegreesPerRadian;
  return {std::atan2(axis, std::hypot(meridian, east)) * geometry::kDegreesPerRadian, std::remainder(longitude, 360.0)};
}
