// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometryAdditions.h>

#include <exact/Exact.h>

#include <cmath>

#include "Kernels.h"
#include "NullOrigin.h"
#include "Numbers.h"

bool ZRMapRectIsNull(ZRMapRect rect) noexcept { return geometry::isNullOrigin(rect); }

bool ZRMapPointEqualToPoint(ZRMapPoint a, ZRMapPoint b) noexcept { return a.x == b.x && a.y == b.y; }

bool ZRMapRectEqualToRect(ZRMapRect a, ZRMapRect b) noexcept {
  return ZRMapPointEqualToPoint(a.origin, b.origin) && a.size.width == b.size.width && a.size.height == b.size.height;
}

bool ZRCoordinateRegionEqualToRegion(ZRCoordinateRegion a, ZRCoordinateRegion b) noexcept {
  return a.center.latitude == b.center.latitude && a.center.longitude == b.center.longitude &&
         a.span.latitudeDelta == b.span.latitudeDelta && a.span.longitudeDelta == b.span.longitudeDelta;
}

double ZRGreatCircleDistance(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept {
  return geometry::kernels().greatCircleDistance(from, to);
}

double ZRGroundResolutionAtLatitude(double latitude) noexcept {
  return exact::cos(geometry::radians(geometry::clampedLatitude(latitude))) * geometry::kProjectionMetersPerMapPoint;
}

CLLocationCoordinate2D ZRDestinationCoordinate(CLLocationCoordinate2D origin, double bearingDegrees,
                                               double distanceMeters) noexcept {
  const double latitude = geometry::radians(origin.latitude);
  const double bearing = geometry::radians(bearingDegrees);
  const double angle = distanceMeters / geometry::kEarthRadius;
  const auto [sinLatitude, cosLatitude] = exact::sincos(latitude);
  const auto [sinBearing, cosBearing] = exact::sincos(bearing);
  const auto [sinAngle, cosAngle] = exact::sincos(angle);
  // The destination as a unit vector: towards the origin's meridian, a quarter turn east of it, and along the axis.
  const double meridian = cosLatitude * cosAngle - sinLatitude * sinAngle * cosBearing;
  const double east = sinAngle * sinBearing;
  const double axis = sinLatitude * cosAngle + cosLatitude * sinAngle * cosBearing;
  const double longitude = origin.longitude + exact::atan2(east, meridian) * geometry::kDegreesPerRadian;
  return {exact::atan2(axis, exact::hypot(meridian, east)) * geometry::kDegreesPerRadian,
          std::remainder(longitude, 360.0)};
}
