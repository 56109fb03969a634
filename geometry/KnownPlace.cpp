// SPDX-License-Identifier: Apache-2.0
#include "KnownPlace.h"

#include <exact/Exact.h>

#include <cmath>

#include "Bearing.h"
#include "Kernels.h"
#include "Numbers.h"
#include "QuickBearing.h"

namespace geometry {

KnownPlace knownPlace(CLLocationCoordinate2D coordinate) noexcept {
  const exact::SineCosine latitude = exact::sincos(coordinate.latitude * kRadiansPerDegree);
  return {coordinate, latitude.sine, latitude.cosine};
}

float bearingFromTo(const KnownPlace& from, const KnownPlace& to) noexcept {
  if (isSamePlace(from.coordinate, to.coordinate)) return 0.0F;
  if (const auto bearing = quickBearing(from, to)) [[likely]]
    return *bearing;
  return compassBearing(kernels().bearingBetween(from, to));
}

// The distance is D = 2 R asin(sqrt(h)), h = sin^2(x) + sin^2(y) C, where x and y are half the differences of latitude
// and longitude in radians and C the product of the latitudes' cosines. `square` is the square of the flat distance in
// degrees, so that H = x^2 + y^2 C is square (pi/360)^2. For differences of at most one degree, x^2 and y^2 are at most
// 7.7e-5, and with C >= 0:
//   sin^2(t) is between t^2 (1 - t^2/3) and t^2, so h between H (1 - 2.6e-5) and H;
//   h is at most 1.6e-4, and asin^2(s) between s^2 and s^2 (1 + s^2/2), so D^2 between 4 R^2 h and 4 R^2 h (1 + 8e-5).
// D^2 is thus within 8e-5 of the flat square. Rounding changes either by less than 40 units of 2^-53, but for the
// cosines: they err by up to 2^-50 (their argument is rounded differently in the distance's formula), which next to a
// pole may be all of them, sign included. There H is off by at most y^2 2^-49 < 1.4e-19, which is 2.3e-5 of the least H
// that decides here, that of 1 m: (1 / 2R)^2 = 6.1e-15. Both together stay below 1.1e-4; the margin is 2e-4.
//
// All else is computed: differences above a degree (over the antimeridian, about a pole, after a gap), latitudes past a
// pole (where C may be negative, and the cosines' error grows with the angle), and what is not a number, for which no
// comparison holds.
bool isAtLeast(const KnownPlace& from, const KnownPlace& to, double meters) noexcept {
  constexpr double kMargin = 2e-4;
  constexpr double kDegreesPerMeter = kDegreesPerRadian / kEarthRadius;
  const double north = to.coordinate.latitude - from.coordinate.latitude;
  const double east = to.coordinate.longitude - from.coordinate.longitude;
  const double cosines = from.cosine * to.cosine;
  const bool isNear = std::fabs(north) <= 1.0 && std::fabs(east) <= 1.0;
  if (isNear && std::fabs(from.coordinate.latitude) <= 90.0 && cosines >= 0.0) [[likely]] {
    const double square = north * north + east * east * cosines;
    const double limit = meters * kDegreesPerMeter * (meters * kDegreesPerMeter);
    if (square > limit * (1.0 + kMargin)) return true;
    if (square < limit * (1.0 - kMargin)) return false;
  }
  return kernels().greatCircleDistance(from.coordinate, to.coordinate) >= meters;
}

}  // namespace geometry
