// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_CIRCULAR_H
#define ZRCORE_GEOMETRY_EXACT_CIRCULAR_H

#include <array>

#include "AngleTable.h"
#include "Pair.h"
#include "SineTable.h"
#include "TangentTable.h"

/// First phase of sine, cosine and tangent. The errors are derived in docs/numbers.md.
namespace exact::ZR_EXACT_BUILD {

/// From here on angles are left to the second phase.
inline constexpr double kAngleLimit = 0x1p15;
/// Below, the sine and the tangent are left to it, for the sign of zero.
inline constexpr double kLeastAngle = 0x1p-27;

/// sin(k pi/256) for a whole turn and a quarter, so that cosines need no wrapping.
inline constexpr auto kSines = [] {
  std::array<tables::SineRow, 512 + 128> rows{};
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const std::size_t inHalf = k % 256;
    const tables::SineRow row = tables::kQuarterOfSines[inHalf <= 128 ? inHalf : 256 - inHalf];
    rows[k] = k % 512 < 256 ? row : tables::SineRow{-row.high, -row.low};
  }
  return rows;
}();

/// tan((k - 64) pi/256).
inline constexpr auto kTangents = [] {
  std::array<tables::TangentRow, 128> rows{};
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const tables::TangentRow row = tables::kEighthOfTangents[k < 64 ? 64 - k : k - 64];
    rows[k] = k < 64 ? tables::TangentRow{-row.high, -row.low} : row;
  }
  return rows;
}();

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
  const R sine = looked<R>(kSines.data(), &tables::SineRow::high, row);
  const R sineLow = looked<R>(kSines.data(), &tables::SineRow::low, row);
  const R cosine = looked<R>(kSines.data(), &tables::SineRow::high, row + 128);
  const R cosineLow = looked<R>(kSines.data(), &tables::SineRow::low, row + 128);
  const Pair<R> turn = product<R>(cosine, rest);
  const Pair<R> high = sum<R>(sine, turn.high);
  R low = mulAdd<R>(cosine, of.sineLow, mulAdd<R>(cosineLow, rest, sineLow));
  low = mulAdd<R>(sine, of.cosineLessOne, low);
  return rounded<R>(high.high, low + (turn.low + high.low), kError);
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

/// tan(a + r) is (tan a + tan r) / (1 - tan a tan r); in the odd quadrants, where a counts from a quarter turn, it is
/// -1/tan(a + r), by exchanging numerator and denominator.
template <class R>
ZR_INLINE Rounded<R> quickTangent(R angle) {
  constexpr double kError = 0x1p-65;
  const ReducedAngle<R> rest = reduced<R>(angle);
  const Word<R> steps = rest.steps + 64;
  const R tangent = looked<R>(kTangents.data(), &tables::TangentRow::high, steps & 127);
  const R tangentLow = looked<R>(kTangents.data(), &tables::TangentRow::low, steps & 127);
  const R square = rest.high * rest.high;
  const R curve = mulAdd<R>(rest.high, polynomial<R>(square, tables::kTangent), rest.low);
  const Pair<R> small = sum<R>(rest.high, mulAdd<R>(square, curve, rest.low));

  const Pair<R> over = sum<R>(tangent, small.high);
  const R overLow = over.low + (tangentLow + small.low);
  const Pair<R> less = product<R>(tangent, small.high);
  const Pair<R> under = sum<R>(all<R>(1.0), -less.high);
  const R underLow = under.low - mulAdd<R>(tangent, small.low, mulAdd<R>(tangentLow, small.high, less.low));

  const Mask<R> isOdd = (steps & 128) != 0;
  const R numerator = isOdd ? under.high : over.high;
  const R numeratorLow = isOdd ? underLow : overLow;
  const R denominator = isOdd ? -over.high : under.high;
  const R denominatorLow = isOdd ? -overLow : underLow;
  const R inverse = 1.0 / denominator;
  const R quotient = numerator * inverse;
  const R left = residual<R>(numerator, quotient, denominator) + (numeratorLow - quotient * denominatorLow);
  return rounded<R>(quotient, left * inverse, kError);
}

}  // namespace exact::ZR_EXACT_BUILD

#endif
