// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_QUICKBEARING_H
#define ZRCORE_GEOMETRY_QUICKBEARING_H

#include <cmath>
#include <optional>

#include "Bearing.h"
#include "KnownPlace.h"
#include "Numbers.h"

/// Bearings between places at most a degree apart, in the single precision in which they are told. Most are decided by
/// an angle that is known to 1e-8 degrees: all numbers that near to it are rounded to the same single one.
namespace geometry {

/// atan2 to 4.3e-14. A Chebyshev fit of (atan(t)/t - 1)/t^2 in t^2, |t| <= tan(pi/8), which is off by 4.2e-14, and its
/// roundings. Not for two zeros.
inline double roughAngle(double y, double x) {
  const double far = std::fabs(y), near = std::fabs(x);
  const double larger = far > near ? far : near, smaller = far > near ? near : far;
  constexpr double kEighthTurnTangent = 0.41421356237309503;
  const bool isSteep = smaller > kEighthTurnTangent * larger;  // atan t = pi/4 + atan((t - 1)/(t + 1))
  const double t = (isSteep ? smaller - larger : smaller) / (isSteep ? smaller + larger : larger);
  const double u = t * t, v = u * u;
  const double low =
      -0.33333333333266196 + u * 0.19999999949854794 + v * (-0.142857081103604 + u * 0.11110819716745676);
  const double high =
      -0.09084101895346429 + u * 0.07604800046078292 + v * (-0.06027307460946675 + u * 0.03295679541870136);
  const double angle = t + t * u * (low + v * v * high) + (isSteep ? kPi / 4.0 : 0.0);
  const double fromNorth = far > near ? kHalfPi - angle : angle;
  return std::copysign(x < 0.0 ? kPi - fromNorth : fromNorth, y);
}

/// Degrees clockwise from north, in [-180, 180], which differ from those of `initialBearing` by `error` at most. Where
/// the way leads south, they may be 180 and -180.
struct RoughBearing {
  double degrees, error;
};

/// Nothing for places more than a degree or less than 6 mm apart, and latitudes past a pole.
///
/// The formula's own numbers are followed, with the documented order and the same rounded difference of longitudes d,
/// |d| <= 0.0175, but for three: the sine of d (a series cut off at d^7/5040, 5.6e-15 of it), its cosine (cut off at
/// 2.1e-19; off by 2^-53 by its rounding, the formula's by 2^-54) and the angle.
/// - east is off by 7e-15 of itself, which turns the angle by half as much at most.
/// - north is off by 0.51 times the cosine's 1.5 2^-53, by twice 2^-54 for the product's rounding and less for the
///   difference's: together below 2.5e-16. At a distance r (in radians) this turns the angle by 2.5e-16/r.
/// - roughAngle is off by 4.3e-14, and the formula's rounded angle and degrees by 8e-16.
/// In degrees, with the roundings here: less than 1.5e-14/r + 4e-12. r is at least the longer of north and east.
inline std::optional<RoughBearing> roughBearing(const KnownPlace& from, const KnownPlace& to) {
  const double eastDegrees = to.coordinate.longitude - from.coordinate.longitude;
  const double northDegrees = to.coordinate.latitude - from.coordinate.latitude;
  const bool isNear = std::fabs(eastDegrees) <= 1.0 && std::fabs(northDegrees) <= 1.0;
  if (!(isNear && std::fabs(from.coordinate.latitude) <= 90.0)) return std::nullopt;
  const double d = eastDegrees * kRadiansPerDegree, dd = d * d;
  const double sine = d + d * dd * (-1.0 / 6.0 + dd * (1.0 / 120.0));
  const double cosine = 1.0 - dd * (0.5 - dd * (1.0 / 24.0 - dd * (1.0 / 720.0)));
  const double east = sine * to.cosine;
  const double north = from.cosine * to.sine - to.cosine * from.sine * cosine;
  const double distance = std::fabs(east) > std::fabs(north) ? std::fabs(east) : std::fabs(north);
  if (!(distance > 1e-9)) return std::nullopt;
  return RoughBearing{roughAngle(east, north) * kDegreesPerRadian, 1.5e-14 / distance + 4e-12};
}

/// The course that `compassBearing` makes of `initialBearing`; nothing where it is not certain.
inline std::optional<float> quickBearing(const KnownPlace& from, const KnownPlace& to) {
  const auto rough = roughBearing(from, to);
  if (!rough) return std::nullopt;
  const float low = compassBearing(rough->degrees - rough->error), high = compassBearing(rough->degrees + rough->error);
  if (low != high) return std::nullopt;
  return low;
}

}  // namespace geometry

#endif
