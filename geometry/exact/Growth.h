// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_GROWTH_H
#define ZRCORE_GEOMETRY_EXACT_GROWTH_H

#include "ExponentialTable.h"
#include "LogarithmTable.h"
#include "Pair.h"

/// First phase of the exponential function and the logarithm. The errors are derived in docs/numbers.md.
namespace exact::ZR_EXACT_BUILD {

/// Below this magnitude of the exponent all results and their parts are normal numbers.
inline constexpr double kExponentLimit = 700.0;

/// An exponent as `steps` ln 2/256 and a rest of at most half a step.
template <class R>
struct ReducedExponent {
  Word<R> steps;
  R high, low;
};

template <class R>
ZR_INLINE ReducedExponent<R> reducedExponent(R exponent) {
  const Whole<R> steps = wholeOfProduct<R>(exponent, tables::kStepsPerUnit);
  const R rest = mulAdd<R>(steps.number, -tables::kLogStepFirst, exponent);  // exact
  const R high = mulAdd<R>(steps.number, -tables::kLogStepSecond, rest);
  return {steps.word, high, mulAdd<R>(steps.number, -tables::kLogStepSecond, rest - high)};
}

/// exp(steps ln 2/256 + rest + restLow), where `curve` is (exp(rest) - 1 - rest) / rest^2.
template <class R>
ZR_INLINE Rounded<R> powerOf(Word<R> steps, R rest, R restLow, R curve) {
  constexpr double kError = 0x1p-67;
  const Word<R> row = steps & 255;
  const R power = looked<R>(tables::kPowers, &tables::PowerRow::high, row);
  const R left = looked<R>(tables::kPowers, &tables::PowerRow::left, row);
  const Pair<R> high = sumWithProduct<R>(power, power, rest);
  const R small = restLow + left;
  const R low = mulAdd<R>(power, mulAdd<R>(rest, mulAdd<R>(rest, curve, small), small), high.low);
  const Rounded<R> mantissa = roundedWithin<R>(high.high, low, kError);
  const Word<R> doublings = (steps - row) << 44;  // steps/256 in the exponent's place; what is above is shifted out
  return {realOf<R>(wordOf(mantissa.value) + doublings), mantissa.isSure};
}

template <class R>
ZR_INLINE Rounded<R> quickExponential(R exponent) {
  const ReducedExponent<R> rest = reducedExponent<R>(exponent);
  return powerOf<R>(rest.steps, rest.high, rest.low, horner<R>(rest.high, tables::kExponential));
}

/// Whether the logarithm is so close to 0 that it needs `quickLogarithmNearOne`.
template <class R>
ZR_INLINE Mask<R> isNearOne(R value) {
  constexpr auto kFirst = __builtin_bit_cast(std::int64_t, 1.0 - 0x1p-6);
  constexpr auto kEnd = __builtin_bit_cast(std::int64_t, 1.0 + 0x1p-6);
  return both<R>(wordOf(value) >= kFirst, wordOf(value) < kEnd);
}

template <class R>
ZR_INLINE Mask<R> isPositiveNormal(R value) {
  constexpr std::int64_t kLeast = 0x0010000000000000;
  constexpr std::int64_t kInfinity = 0x7ff0000000000000;
  return both<R>(wordOf(value) >= kLeast, wordOf(value) < kInfinity);
}

/// Of a positive normal number that is not near one.
template <class R>
ZR_INLINE Rounded<R> quickLogarithm(R value) {
  constexpr double kError = 0x1p-68;
  constexpr std::int64_t kStart = 0x3fe6000000000000;  // 0.6875, where the mantissas begin
  const Word<R> word = wordOf(value);
  const Word<R> past = word - kStart;
  const Word<R> row = (past >> 44) & 255;
  const R mantissa = realOf<R>(word - (past & ~0xfffffffffffff));
  const R exponent = realOf<R>((past >> 52) + kWholeZero) - 0x1.8p52;
  const R inverse = looked<R>(tables::kLogarithms, &tables::LogarithmRow::inverse, row);
  const R tableHigh = looked<R>(tables::kLogarithms, &tables::LogarithmRow::high, row);
  const R tableLow = looked<R>(tables::kLogarithms, &tables::LogarithmRow::low, row);

  R rest;  // mantissa * inverse - 1, exact
  if constexpr (kHasFusedMultiplyAdd) {
    rest = fused<R>(mantissa, inverse, all<R>(-1.0));
  } else {
    const R upper = realOf<R>(wordOf(mantissa) & ~0x7ffffff);
    rest = (upper * inverse - 1.0) + (mantissa - upper) * inverse;
  }
  const R whole = mulAdd<R>(exponent, tables::kLogTwoHigh, tableHigh);  // exact
  const Pair<R> high = sum<R>(whole, rest);
  const R square = rest * rest;
  const R curve = mulAdd<R>(rest, polynomial<R>(rest, tables::kLogarithm), all<R>(-0.5));
  const R low = mulAdd<R>(square, curve, mulAdd<R>(exponent, tables::kLogTwoLow, tableLow) + high.low);
  return roundedWithin<R>(high.high, low, kError);
}

/// For 1 - 2^-6 <= value < 1 + 2^-6, 1 itself excepted.
template <class R>
ZR_INLINE Rounded<R> quickLogarithmNearOne(R value) {
  constexpr double kError = 0x1.4p-64;
  const R rest = value - 1.0;  // exact
  const Pair<R> square = product<R>(rest, rest);
  const Pair<R> high = sum<R>(rest, -0.5 * square.high);
  const R curve = square.high * rest * polynomial<R>(rest, tables::kLogarithmNearOne);
  return rounded<R>(high.high, high.low + mulAdd<R>(square.low, -0.5, curve), kError);
}

}  // namespace exact::ZR_EXACT_BUILD

#endif
