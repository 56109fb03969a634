// SPDX-License-Identifier: Apache-2.0
#include <exact/Exact.h>

#include <ZRCore/ZRRuler.hpp>
#include <limits>

#include "Numbers.h"

namespace {

// WGS 84.
constexpr double kFlattening = 1.0 / 298.257223563;
constexpr double kSquareEccentricity = kFlattening * (2.0 - kFlattening);

}  // namespace

ZRRuler::ZRRuler(double latitude) noexcept : latitude_(latitude) {
  using geometry::kRadiansPerDegree;
  const auto [sine, cosine] = exact::sincos(latitude * kRadiansPerDegree);
  const double square = 1.0 - kSquareEccentricity * sine * sine;  // W^2
  const double parallel = geometry::kEarthRadius / std::sqrt(square);
  const double meridian = parallel * (1.0 - kSquareEccentricity) / square;
  // M = a (1 - e^2) / W^3 and its derivatives by the latitude; that of N cos(lat) is -M sin(lat).
  const double k = kSquareEccentricity / square;
  const double first = 3.0 * meridian * k * sine * cosine;
  const double second = 3.0 * meridian * k * (cosine * cosine - sine * sine + 5.0 * k * sine * sine * cosine * cosine);
  const double d = kRadiansPerDegree;
  north_[0] = meridian * d;
  north_[1] = first * d * d;
  north_[2] = second * d * d * d / 2.0;
  east_[0] = parallel * cosine * d;
  east_[1] = -meridian * sine * d * d;
  east_[2] = -(first * sine + meridian * cosine) * d * d * d / 2.0;
  const double squareTangent = sine * sine / (cosine * cosine);
  arc_ = 1.0 / (24.0 * meridian * parallel);
  bend_ = arc_ * squareTangent;
  rise_ = arc_ * (2.0 + 3.0 * squareTangent);
}

double ZRRuler::bearing(CLLocationCoordinate2D from, CLLocationCoordinate2D to) const noexcept {
  const Way way = wayBetween(from, to);
  const double degrees = exact::atan2(way.east, way.north) * geometry::kDegreesPerRadian;
  return degrees < 0.0 ? degrees + 360.0 : degrees;
}

CLLocationCoordinate2D ZRRuler::destination(CLLocationCoordinate2D from, double bearingDegrees,
                                            double distanceMeters) const noexcept {
  const auto [sine, cosine] = exact::sincos(bearingDegrees * geometry::kRadiansPerDegree);
  const Way wanted = {distanceMeters * sine, distanceMeters * cosine};
  double north = 0.0, east = 0.0;
  // Each step leaves a thousandth of the error, the first one a whole.
  for (int step = 0; step < 4; ++step) {
    const double middle = from.latitude + 0.5 * north;
    const Scale scale = scaleAt(middle);
    const Way reached = wayOf(middle, north, east);
    north += (wanted.north - reached.north) / scale.north;
    east += (wanted.east - reached.east) / scale.east;
  }
  return {from.latitude + north, std::remainder(from.longitude + east, 360.0)};
}

ZRRuler::NearestPoint ZRRuler::nearestPoint(CLLocationCoordinate2D place, const CLLocationCoordinate2D* line,
                                            std::uint64_t count) const noexcept {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  NearestPoint nearest = {{kNaN, kNaN}, kNaN, 0, 0.0};
  if (count == 0) return nearest;
  Way start = wayBetween(place, line[0]);
  nearest = {line[0], std::sqrt(start.east * start.east + start.north * start.north), 0, 0.0};
  for (std::uint64_t i = 1; i < count; ++i) {
    const Way end = wayBetween(place, line[i]);
    const double east = end.east - start.east, north = end.north - start.north;
    const double square = east * east + north * north;
    const double along = square > 0.0 ? -(start.east * east + start.north * north) / square : 0.0;
    const double fraction = geometry::clamped(along, 0.0, 1.0);
    const double x = start.east + fraction * east, y = start.north + fraction * north;
    const double distance = std::sqrt(x * x + y * y);
    if (distance < nearest.distanceMeters) {
      const CLLocationCoordinate2D &a = line[i - 1], &b = line[i];
      const double turn = std::remainder(b.longitude - a.longitude, 360.0);
      nearest = {
          {a.latitude + fraction * (b.latitude - a.latitude), std::remainder(a.longitude + fraction * turn, 360.0)},
          distance,
          i - 1,
          fraction};
    }
    start = end;
  }
  return nearest;
}
