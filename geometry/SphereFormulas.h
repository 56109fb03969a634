// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_SPHEREFORMULAS_H
#define ZRCORE_GEOMETRY_SPHEREFORMULAS_H

#include "ProjectionFormulas.h"

/// Great circles, of one pair of places or of several at once.
namespace geometry::ZR_EXACT_BUILD {

/// Metres on the sphere, by the haversine.
template <class R>
ZR_INLINE R greatCircleDistance(const Two<R>& from, const Two<R>& to, exact::Doubt<R>& doubt) {
  const R sinLat = exact::sin<R>((to.first - from.first) * kPi / 180.0 * 0.5, doubt);
  const R sinLon = exact::sin<R>((to.second - from.second) * kPi / 180.0 * 0.5, doubt);
  const R fromCosine = exact::cos<R>(from.first * kPi / 180.0, doubt);
  const R h = sinLat * sinLat + sinLon * sinLon * fromCosine * exact::cos<R>(to.first * kPi / 180.0, doubt);
  // Near antipodes h can round to just above 1; the distance is half the circumference then, and not NaN.
  const R left = exact::larger<R>(1.0 - h, exact::all<R>(0.0));
  return 2.0 * exact::atan2<R>(exact::squareRoot<R>(h), exact::squareRoot<R>(left), doubt) * kEarthRadius;
}

/// The course at `from` of the great circle to `to`: degrees clockwise from north, in [-180, 180]. Of the latitudes it
/// takes sine and cosine, of the longitudes the difference in degrees.
template <class R>
ZR_INLINE R initialBearing(const exact::CirclePoint<R>& from, const exact::CirclePoint<R>& to, const R& eastDegrees,
                           exact::Doubt<R>& doubt) {
  const auto [lonSine, lonCosine] = exact::sincos<R>(eastDegrees * kRadiansPerDegree, doubt);
  const R east = lonSine * to.cosine;
  const R north = from.cosine * to.sine - to.cosine * from.sine * lonCosine;
  return exact::atan2<R>(east, north, doubt) * kDegreesPerRadian;
}
template <class R>
ZR_INLINE R initialBearing(const Two<R>& from, const Two<R>& to, exact::Doubt<R>& doubt) {
  const auto fromLatitude = exact::sincos<R>(from.first * kRadiansPerDegree, doubt);
  const auto toLatitude = exact::sincos<R>(to.first * kRadiansPerDegree, doubt);
  return initialBearing<R>(fromLatitude, toLatitude, to.second - from.second, doubt);
}

}  // namespace geometry::ZR_EXACT_BUILD

#endif
