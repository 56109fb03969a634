// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_FASTPROJECTION_H
#define ZRCORE_GEOMETRY_FASTPROJECTION_H

#include "FastTable.h"
#include "ProjectionFormulas.h"

/// The projection with an error bound instead of fixed bits. The bounds are derived in docs/numbers.md.
namespace geometry::ZR_EXACT_BUILD {

namespace tables = ::exact::tables;

inline constexpr double kMapPointsPerRadian = kEarthRadius / kProjectionMetersPerMapPoint;
inline constexpr double kMiddle = 0.5 * kWorldWidth;

/// The middle of the world and value * scale, in one rounding or nearly so.
template <class R>
ZR_INLINE R fromMiddle(R value, double scale) {
  if constexpr (exact::kHasFusedMultiplyAdd) {
    return exact::mulAdd<R>(value, scale, kMiddle);
  } else {
    const exact::Pair<R> sum = exact::sumWithProduct<R>(exact::all<R>(kMiddle), value, exact::all<R>(scale));
    return sum.high + sum.low;
  }
}

/// ln(ratio) + more of a ratio in [1/32, 32].
template <class R>
ZR_INLINE R fastLogarithm(R ratio, R more) {
  constexpr std::int64_t kRootHalf = 0x3fe6a09e667f3bcd;
  const exact::Word<R> past = exact::wordOf(ratio) - kRootHalf;
  const R exponent = exact::realOf<R>((past >> 52) + exact::kWholeZero) - 0x1.8p52;
  const R mantissa = exact::realOf<R>((past & 0xfffffffffffff) + kRootHalf);
  // ln m = 2 atanh((m - 1) / (m + 1))
  const R z = (mantissa - 1.0) / (mantissa + 1.0);
  const R square = z * z;
  const R curve = exact::mulAdd<R>(z * square, exact::polynomial<R>(square, fast::kLogarithm), z + z);
  return exact::mulAdd<R>(exponent, tables::kLogTwoHigh, exact::mulAdd<R>(exponent, tables::kLogTwoLow, more + curve));
}

/// y is the middle less ln((C + S) / (C - S)), with S and C the sine and the cosine of half the latitude. The angle, S,
/// C and the quotient are carried as pairs: towards the edge of the world C - S is small.
template <class R>
ZR_INLINE Two<R> fastMapPoint(const Two<R>& coordinate) {
  constexpr double kHalfDegree = 0.008726646259971648;
  constexpr double kHalfDegreeLow = 1.4743261354350843e-19;
  const R latitude = clampedIn<R>(coordinate.first, -kLatitudeLimit, kLatitudeLimit);
  const R longitude = clampedIn<R>(coordinate.second, -kLongitudeLimit, kLongitudeLimit);
  const exact::Pair<R> scaled = exact::product<R>(latitude, exact::all<R>(kHalfDegree));
  const R r = scaled.high;
  const R rLow = exact::mulAdd<R>(latitude, kHalfDegreeLow, scaled.low);
  const exact::Pair<R> square = exact::product<R>(r, r);
  const R squareLow = exact::mulAdd<R>(r + r, rLow, square.low);
  const exact::Pair<R> sine = exact::sum<R>(r, r * square.high * exact::polynomial<R>(square.high, fast::kSine));
  const exact::Pair<R> start = exact::sum<R>(exact::all<R>(1.0), -0.5 * square.high);
  const R bend = square.high * square.high * exact::polynomial<R>(square.high, fast::kCosine);
  const exact::Pair<R> cosine = exact::sum<R>(start.high, bend);
  const R cosineLow = cosine.low + exact::mulAdd<R>(squareLow, -0.5, start.low);
  const R sineLow = exact::mulAdd<R>(cosine.high, rLow, sine.low);

  const exact::Pair<R> over = exact::sum<R>(cosine.high, sine.high);
  const exact::Pair<R> under = exact::sum<R>(cosine.high, -sine.high);
  const R quotient = over.high / under.high;
  const R left = exact::residual<R>(over.high, quotient, under.high) +
                 ((over.low + (cosineLow + sineLow)) - quotient * (under.low + (cosineLow - sineLow)));
  const R logarithm = fastLogarithm<R>(quotient, left / over.high);
  return {fromMiddle<R>(longitude, kWorldWidth / 360.0), fromMiddle<R>(logarithm, -kMapPointsPerRadian)};
}

/// The latitude is twice the arctangent of tanh(t/2), which is (exp(t) - 1) / (exp(t) + 1).
template <class R>
ZR_INLINE Two<R> fastCoordinate(const Two<R>& point) {
  constexpr double kFarthest = 40.0;  // past the limits of latitude
  constexpr double kTangentOfEighth = 0.41421356237309503;
  constexpr double kEighthTurn = 0.7853981633974483;
  const R t =
      clampedIn<R>(exact::mulAdd<R>(point.second, -kTwoPi * kPerWorldWidth, exact::all<R>(kPi)), -kFarthest, kFarthest);
  const exact::Whole<R> doublings = exact::wholeOfProduct<R>(t, 1.4426950408889634);
  const R rest = exact::mulAdd<R>(doublings.number, -tables::kLogTwoLow,
                                  exact::mulAdd<R>(doublings.number, -tables::kLogTwoHigh, t));
  const R mantissa = exact::polynomial<R>(rest, fast::kExponential);
  const R power = exact::realOf<R>(exact::wordOf(mantissa) + (doublings.word << 52));
  const R numerator = exact::magnitude<R>(power - 1.0);
  const R denominator = power + 1.0;
  // Past an eighth of a turn, the arctangent of the rest of the angle.
  const exact::Mask<R> isSteep = numerator > denominator * kTangentOfEighth;
  const R quotient =
      (isSteep ? numerator - denominator : numerator) / (isSteep ? numerator + denominator : denominator);
  const R square = quotient * quotient;
  const R angle = exact::mulAdd<R>(quotient * square, exact::polynomial<R>(square, fast::kArctangent), quotient) +
                  (isSteep ? exact::all<R>(kEighthTurn) : exact::all<R>(0.0));
  const R latitude = exact::turned<R>(angle * (2.0 * kDegreesPerRadian), exact::wordOf(power - 1.0));
  const R x = clampedIn<R>(point.first, 0.0, kGreatestMapX);
  return {clampedIn<R>(latitude, -kLatitudeLimit, kLatitudeLimit),
          exact::mulAdd<R>(x, 360.0 * kPerWorldWidth, exact::all<R>(-kLongitudeLimit))};
}

}  // namespace geometry::ZR_EXACT_BUILD

#endif
