// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_INVERSE_H
#define ZRCORE_GEOMETRY_EXACT_INVERSE_H

#include <iterator>

#include "ArcsineTable.h"
#include "ArctangentTable.h"
#include "Pair.h"

/// First phase of the arctangents, the arcsine, the arccosine and the hypotenuse. The errors are derived in
/// docs/numbers.md.
namespace exact::ZR_EXACT_BUILD {

/// From here on arctangents of one argument are left to the second phase.
inline constexpr double kArctangentLimit = 64.0;
/// Arguments of the functions of two arguments have magnitudes within these, so that no part of a product is lost.
inline constexpr double kLeastSide = 0x1p-400;
inline constexpr double kGreatestSide = 0x1p400;

inline constexpr auto kArctangentRows = static_cast<std::int64_t>(std::size(tables::kArctangents));
inline constexpr auto kArcsineRows = static_cast<std::int64_t>(std::size(tables::kArcsines));

/// The row of an argument in [0, 64): row 0 below 2^-8, then 16 rows a binade, the upper end of each included.
template <class R>
ZR_INLINE Word<R> arctangentRow(R argument) {
  constexpr std::int64_t kRowsBefore = ((1023 - 8) << 4) - 1;
  const Word<R> row = ((wordOf(argument) - 1) >> 48) - kRowsBefore;
  return existing<R>(row > 0 ? row : row & 0, kArctangentRows);
}

/// atan((numerator + numeratorLow) / (denominator + denominatorLow)) of a small quotient: its high part, and the rest.
template <class R>
ZR_INLINE Pair<R> smallArctangent(R numerator, R numeratorLow, R denominator, R denominatorLow) {
  const R inverse = 1.0 / denominator;
  const R quotient = numerator * inverse;
  const R left = residual<R>(numerator, quotient, denominator) + (numeratorLow - quotient * denominatorLow);
  const R square = quotient * quotient;
  return {quotient, mulAdd<R>(quotient * square, polynomial<R>(square, tables::kArctangent), left * inverse)};
}

/// atan(x) is atan(c) + atan((x - c) / (1 + c x)), c the middle of the interval of x.
template <class R>
ZR_INLINE Rounded<R> quickArctangent(R argument) {
  constexpr double kError = 0x1p-66;
  const R x = magnitude<R>(argument);
  const Word<R> row = arctangentRow<R>(x);
  const R middle = looked<R>(tables::kArctangents, &tables::ArctangentRow::middle, row);
  R denominator, denominatorLow;
  if constexpr (kHasFusedMultiplyAdd) {
    denominator = fused<R>(middle, x, all<R>(1.0));
    denominatorLow = fused<R>(middle, x, 1.0 - denominator);
  } else {
    const Pair<R> times = product<R>(middle, x);
    denominator = 1.0 + times.high;
    // 1 - denominator is exact, and so is its sum with the high part.
    denominatorLow = ((1.0 - denominator) + times.high) + times.low;
  }
  const Pair<R> small = smallArctangent<R>(x - middle, all<R>(0.0), denominator, denominatorLow);
  const Pair<R> high = sum<R>(looked<R>(tables::kArctangents, &tables::ArctangentRow::high, row), small.high);
  const R low = looked<R>(tables::kArctangents, &tables::ArctangentRow::low, row) + (small.low + high.low);
  const Rounded<R> of = rounded<R>(high.high, low, kError);
  return {turned<R>(of.value, wordOf(argument)), of.isSure};
}

/// base - angle or base + angle, where the base is 0, 1 or 2 quarter turns, the sign minus where `backwards` is 1, and
/// the angle an entry of a table, which lies in [0, pi/4], and something smaller.
template <class R>
ZR_INLINE Rounded<R> fromQuarter(Word<R> quarters, Word<R> backwards, R table, R tableLow, const Pair<R>& small) {
  constexpr double kError = 0x1p-65;
  R base, baseLow;
  if constexpr (kIsSingle<R>) {
    const auto count = static_cast<double>(quarters);
    base = count * tables::kHalfPiHigh;
    baseLow = count * tables::kHalfPiLow;
  } else {
    base = quarters == 0   ? all<R>(0.0)
           : quarters == 1 ? all<R>(tables::kHalfPiHigh)
                           : all<R>(2.0 * tables::kHalfPiHigh);
    baseLow = quarters == 0   ? all<R>(0.0)
              : quarters == 1 ? all<R>(tables::kHalfPiLow)
                              : all<R>(2.0 * tables::kHalfPiLow);
  }
  const Word<R> turn = backwards << 63;
  const Pair<R> coarse = sum<R>(base, turned<R>(table, turn));
  const Pair<R> high = sum<R>(coarse.high, turned<R>(small.high, turn));
  const R low = baseLow + turned<R>(tableLow + small.low, turn) + (coarse.low + high.low);
  return rounded<R>(high.high, low, kError);
}

/// The angle of (x, y), by the arctangent of the smaller over the larger.
template <class R>
ZR_INLINE Rounded<R> quickAngle(R y, R x) {
  const R up = magnitude<R>(y);
  const R along = magnitude<R>(x);
  const R shorter = smaller<R>(up, along);
  const R longer = larger<R>(up, along);
  const Word<R> row = arctangentRow<R>(shorter / longer);
  const R middle = looked<R>(tables::kArctangents, &tables::ArctangentRow::middle, row);
  const Pair<R> less = product<R>(middle, longer);
  const Pair<R> denominator = sumWithProduct<R>(longer, middle, shorter);
  const Pair<R> small = smallArctangent<R>(shorter - less.high, -less.low, denominator.high, denominator.low);
  const Word<R> steep = ((wordOf(along) - wordOf(up)) >> 63) & 1;
  const Word<R> west = (wordOf(x) >> 63) & 1;
  const Rounded<R> of = fromQuarter<R>(steep + 2 * (west & ~steep), steep ^ west,
                                       looked<R>(tables::kArctangents, &tables::ArctangentRow::high, row),
                                       looked<R>(tables::kArctangents, &tables::ArctangentRow::low, row), small);
  return {turned<R>(of.value, wordOf(y)), of.isSure};
}

/// What arcsine and arccosine share: the angle in [0, pi/4] whose sine is the smaller of |sine| and sqrt(1 - sine^2).
template <class R>
struct AngleOfSine {
  Word<R> steep;  ///< 1 where |sine| is the larger, else 0
  R table, tableLow;
  Pair<R> small;
};

template <class R>
ZR_INLINE AngleOfSine<R> angleOfSine(R sine) {
  const R a = magnitude<R>(sine);
  const Pair<R> square = product<R>(a, a);
  const Pair<R> less = sum<R>(all<R>(1.0), -square.high);
  const Pair<R> other = sum<R>(less.high, less.low - square.low);
  const R root = squareRoot<R>(other.high);
  const R rootLow = (residual<R>(other.high, root, root) + other.low) * (0.5 / root);
  const R n = smaller<R>(a, root);
  const R m = larger<R>(a, root);
  const R isSteep = root - a;  // negative where it is
  const R nLow = whereNegative<R>(isSteep, rootLow);
  const R mLow = rootLow - nLow;
  // asin(n) is asin(c) + asin(n sqrt(1 - c^2) - c m), c the multiple of 1/64 next to n.
  const Whole<R> steps = wholeOfProduct<R>(n, 64.0);
  const R c = steps.number * 0x1p-6;
  const Word<R> row = existing<R>(steps.word & 63, kArcsineRows);
  const R cosine = looked<R>(tables::kArcsines, &tables::ArcsineRow::cosineHigh, row);
  const R cosineLow = looked<R>(tables::kArcsines, &tables::ArcsineRow::cosineLow, row);
  const Pair<R> plus = product<R>(n, cosine);
  const Pair<R> minus = product<R>(c, m);
  const R v = plus.high - minus.high;
  const R vLow =
      (plus.high - (v + minus.high)) + ((plus.low - minus.low) + (mulAdd<R>(nLow, cosine, n * cosineLow) - c * mLow));
  const R v2 = v * v;
  return {(wordOf(isSteep) >> 63) & 1,
          looked<R>(tables::kArcsines, &tables::ArcsineRow::high, row),
          looked<R>(tables::kArcsines, &tables::ArcsineRow::low, row),
          {v, mulAdd<R>(v * v2, polynomial<R>(v2, tables::kArcsine), vLow)}};
}

template <class R>
ZR_INLINE Rounded<R> quickArcsine(R sine) {
  const AngleOfSine<R> angle = angleOfSine<R>(sine);
  const Rounded<R> of = fromQuarter<R>(angle.steep, angle.steep, angle.table, angle.tableLow, angle.small);
  return {turned<R>(of.value, wordOf(sine)), of.isSure};
}

template <class R>
ZR_INLINE Rounded<R> quickArccosine(R cosine) {
  const AngleOfSine<R> angle = angleOfSine<R>(cosine);
  const Word<R> west = (wordOf(cosine) >> 63) & 1;
  // A quarter turn less or more, and near the ends nothing or half a turn less.
  const Word<R> quarters = 1 - angle.steep + 2 * (angle.steep & west);
  return fromQuarter<R>(quarters, 1 ^ west ^ angle.steep, angle.table, angle.tableLow, angle.small);
}

template <class R>
ZR_INLINE Rounded<R> quickHypotenuse(R x, R y) {
  constexpr double kError = 0x1p-98;
  const R a = larger<R>(magnitude<R>(x), magnitude<R>(y));
  const R b = smaller<R>(magnitude<R>(x), magnitude<R>(y));
  const Pair<R> aa = product<R>(a, a);
  const Pair<R> bb = product<R>(b, b);
  const Pair<R> square = sum<R>(aa.high, bb.high);
  const R root = squareRoot<R>(square.high);
  const R left = residual<R>(square.high, root, root) + (square.low + (aa.low + bb.low));
  return rounded<R>(root, left * (0.5 / root), kError);
}

}  // namespace exact::ZR_EXACT_BUILD

#endif
