// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_CIRCULAR_H
#define ZRCORE_GEOMETRY_EXACT_CIRCULAR_H

#include "AngleTable.h"
#include "Pair.h"
#include "SineTable.h"
#include "TangentTable.h"

namespace exact::tables {

/// sin(k pi/256) for a whole turn and a quarter, so that cosines need no wrapping.
struct Sines {
  SineRow rows[512 + 128];
};
inline constexpr Sines kSines = [] {
  Sines sines{};
  for (int k = 0; k < 512 + 128; ++k) {
    const int inHalf = k % 256;
    const SineRow row = kQuarterOfSines[inHalf <= 128 ? inHalf : 256 - inHalf];
    sines.rows[k] = k % 512 < 256 ? row : SineRow{-row.high, -row.low};
  }
  return sines;
}();

}  // namespace exact::tables

/// First phase of sine, cosine and tangent. The errors are derived in docs/numbers.md.
namespace exact::ZR_EXACT_BUILD {

/// From here on angles are left to the second phase.
inline constexpr double kAngleLimit = 0x1p15;
/// Below, the sine and the tangent are left to it, for the sign of zero.
inline constexpr double kLeastAngle = 0x1p-27;

/// An angle as `steps` pi/256 and a rest of at most half a step.
template <class R>
struct ReducedAngle {
  Word<R> steps;
  R high, low;
};

template <class R>
ZR_INLINE ReducedAngle<R> reduced(R angle) {
  const Whole<R> steps = wholeOfProduct<R>(angle, tables::kStepsPerRadian);
  const R rest = mulAdd<R>(steps.number, -tables::kStepFirst, angle);  // exact
  const Pair<R> second = product<R>(steps.number, all<R>(tables::kStepSecond));
  const Pair<R> high = sum<R>(rest, -second.high);
  return {steps.word, high.high, high.low - mulAdd<R>(steps.number, tables::kStepThird, second.low)};
}

/// The sine of a rest is its high part and `sineLow`; the cosine is 1 + `cosineLessOne`.
template <class R>
struct RestFunctions {
  R sineLow, cosineLessOne;
};

template <class R>
ZR_INLINE RestFunctions<R> functionsOf(const ReducedAngle<R>& rest) {
  const R square = rest.high * rest.high;
  return {mulAdd<R>(rest.high * square, polynomial<R>(square, tables::kSine), rest.low),
          square * polynomial<R>(square, tables::kCosine)};
}

/// The sine of (`steps` pi/256 + rest).
template <class R>
ZR_INLINE Rounded<R> sineOf(Word<R> steps, R rest, const RestFunctions<R>& of) {
  constexpr double kError = 0x1p-65;
  const Word<R> row = steps & 511;
  const R sine = looked<R>(tables::kSines.rows, &tables::SineRow::high, row);
  const R sineLow = looked<R>(tables::kSines.rows, &tables::SineRow::low, row);
  const R cosine = looked<R>(tables::kSines.rows, &tables::SineRow::high, row + 128);
  const R cosineLow = looked<R>(tables::kSines.rows, &tables::SineRow::low, row + 128);
  const Pair<R> high = sumWithProduct<R>(sine, cosine, rest);
  R low = mulAdd<R>(cosine, of.sineLow, mulAdd<R>(cosineLow, rest, sineLow));
  low = mulAdd<R>(sine, of.cosineLessOne, low);
  return rounded<R>(high.high, low + high.low, kError);
}

template <class R>
ZR_INLINE Rounded<R> quickSine(R angle) {
  const ReducedAngle<R> rest = reduced<R>(angle);
  return sineOf<R>(rest.steps, rest.high, functionsOf<R>(rest));
}
template <class R>
ZR_INLINE Rounded<R> quickCosine(R angle) {
  const ReducedAngle<R> rest = reduced<R>(angle);
  return sineOf<R>(rest.steps + 128, rest.high, functionsOf<R>(rest));
}

/// tan(a + r) is (sin a + cos a tan r) / (cos a - sin a tan r).
template <class R>
ZR_INLINE Rounded<R> quickTangent(R angle) {
  constexpr double kError = 0x1p-66;
  const ReducedAngle<R> rest = reduced<R>(angle);
  const Word<R> row = rest.steps & 511;
  const R sine = looked<R>(tables::kSines.rows, &tables::SineRow::high, row);
  const R sineLow = looked<R>(tables::kSines.rows, &tables::SineRow::low, row);
  const R cosine = looked<R>(tables::kSines.rows, &tables::SineRow::high, row + 128);
  const R cosineLow = looked<R>(tables::kSines.rows, &tables::SineRow::low, row + 128);
  const R square = rest.high * rest.high;
  const R curve = mulAdd<R>(rest.high, polynomial<R>(square, tables::kTangent), rest.low);
  const Pair<R> small = sum<R>(rest.high, mulAdd<R>(square, curve, rest.low));

  const Pair<R> over = sumWithProduct<R>(sine, cosine, small.high);
  const R overLow = over.low + mulAdd<R>(cosine, small.low, mulAdd<R>(cosineLow, small.high, sineLow));
  const Pair<R> under = sumWithProduct<R>(cosine, -sine, small.high);
  const R underLow = under.low - mulAdd<R>(sine, small.low, mulAdd<R>(sineLow, small.high, -cosineLow));
  const R inverse = 1.0 / under.high;
  const R quotient = over.high * inverse;
  const R left = residual<R>(over.high, quotient, under.high) + (overLow - quotient * underLow);
  return rounded<R>(quotient, left * inverse, kError);
}

}  // namespace exact::ZR_EXACT_BUILD

#endif
