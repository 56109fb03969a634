// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.hpp>

#include <cmath>

#include "Bearing.h"
#include "Kernels.h"

float ZRCoordinateUtils::bearingFromTo(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept {
  if (geometry::isSamePlace(from, to)) return 0.0F;
  return geometry::compassBearing(geometry::kernels().initialBearing(from, to));
}

double ZRCoordinateUtils::approximateDistanceFromTo(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept {
  constexpr int kLastInterval = 89;
  const double dy = (from.latitude - to.latitude) * metersPerDegreeLat;
  const double meanLatitude = std::fabs(from.latitude + to.latitude) * 0.5;
  // Anything past the table, NaN included, belongs to its last interval.
  const int row = meanLatitude < kLastInterval ? static_cast<int>(meanLatitude) : kLastInterval;
  const double metersPerDegree =
      metersPerDegreeLng[row] - (meanLatitude - row) * (metersPerDegreeLng[row] - metersPerDegreeLng[row + 1]);
  const double dx = (from.longitude - to.longitude) * metersPerDegree;
  return std::sqrt(dy * dy + dx * dx);
}

CLLocationCoordinate2D ZRCoordinateUtils::interpolateFromToPercent(CLLocationCoordinate2D from,
                                                                   CLLocationCoordinate2D to, float percent) noexcept {
  const double fraction = percent;
  return {from.latitude + (to.latitude - from.latitude) * fraction,
          from.longitude + (to.longitude - from.longitude) * fraction};
}

CLLocationCoordinate2D ZRCoordinateUtils::closestCoordToCoordAlongLineWithStartingCoordAndEndingCoord(
    CLLocationCoordinate2D coord, CLLocationCoordinate2D start, CLLocationCoordinate2D end) noexcept {
  const double dx = end.latitude - start.latitude;
  const double dy = end.longitude - start.longitude;
  if (dx == 0.0 && dy == 0.0) return start;
  const double along = (coord.latitude - start.latitude) * dx + (coord.longitude - start.longitude) * dy;
  if (along <= 0.0) return start;
  const double t = along / (dx * dx + dy * dy);
  if (t >= 1.0) return end;
  return {start.latitude + dx * t, start.longitude + dy * t};
}

bool ZRCoordinateUtils::coordIsEqualTo(CLLocationCoordinate2D a, CLLocationCoordinate2D b) noexcept {
  return geometry::isSamePlace(a, b);
}
