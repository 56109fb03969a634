// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_PROJECTIONFORMULAS_H
#define ZRCORE_GEOMETRY_PROJECTIONFORMULAS_H

#include <exact/Functions.h>

#include "Numbers.h"

/// The projection, of one place or of several at once: `R` is a double or a vector of them. Each documented formula
/// keeps the order of its operations, and its functions are correctly rounded, so that both give the same bits.
namespace geometry::ZR_EXACT_BUILD {

namespace exact = ::exact::ZR_EXACT_BUILD;

/// Two coordinates of a place, or of several: latitude and longitude in degrees, or x and y.
template <class R>
struct Two {
  R first, second;
};

/// fmin(fmax(value, low), high): NaN gives the lower bound.
template <class R>
ZR_INLINE R clampedIn(R value, double low, double high) {
  const R raised = value > low ? value : exact::all<R>(low);
  return raised < high ? raised : exact::all<R>(high);
}

template <class R>
ZR_INLINE Two<R> mercator(R latitude, R longitude, exact::Doubt<R>& doubt) {
  const R tangent = exact::tan<R>((latitude + 90.0) * 0.5 * kRadiansPerDegree, doubt);
  return {longitude * kProjectionMetersPerDegree, exact::log<R>(tangent, doubt) * kEarthRadius};
}

template <class R>
ZR_INLINE Two<R> inverseMercator(R x, R y, exact::Doubt<R>& doubt) {
  const R angle = exact::atan<R>(exact::exp<R>(y / kEarthRadius, doubt), doubt);
  return {(2.0 * angle + -kHalfPi) * kDegreesPerRadian, x * kProjectionDegreesPerMeter};
}

template <class R>
ZR_INLINE Two<R> mapPoint(const Two<R>& coordinate, exact::Doubt<R>& doubt) {
  const Two<R> meters = mercator<R>(clampedIn<R>(coordinate.first, -kLatitudeLimit, kLatitudeLimit),
                                    clampedIn<R>(coordinate.second, -kLongitudeLimit, kLongitudeLimit), doubt);
  return {(meters.first + kHalfEquator) / kProjectionMetersPerMapPoint,
          (kHalfEquator - meters.second) / kProjectionMetersPerMapPoint};
}

template <class R>
ZR_INLINE Two<R> coordinate(const Two<R>& point, exact::Doubt<R>& doubt) {
  const R turns = clampedIn<R>(point.first, 0.0, kGreatestMapX) * kPerWorldWidth + -0.5;
  const R longitude = clampedIn<R>(turns * 360.0, -kLongitudeLimit, kLongitudeLimit);
  const R t = point.second * -kTwoPi * kPerWorldWidth + kPi;
  const auto [up, down] = exact::expOfBoth<R>(t, doubt);
  const R latitude = exact::atan<R>((up - down) * 0.5, doubt) * kDegreesPerRadian;
  return {clampedIn<R>(latitude, -kLatitudeLimit, kLatitudeLimit), longitude};
}

}  // namespace geometry::ZR_EXACT_BUILD

#endif
