// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_PAIR_H
#define ZRCORE_GEOMETRY_EXACT_PAIR_H

#include <cstddef>

#include "Lanes.h"

/// Sums and products without error, as unevaluated sums of two doubles (Dekker 1971). A product's two parts are the
/// same whether the processor has a fused multiply-add or not.
namespace exact::ZR_EXACT_BUILD {

template <class R>
struct Pair {
  R high, low;
};

/// a + b. Exact where a is 0 or a multiple of the last place of b, as it is for |a| >= |b|.
template <class R>
ZR_INLINE Pair<R> sum(R a, R b) {
  const R high = a + b;
  return {high, b - (high - a)};
}

/// a b, for products that neither overflow nor leave their low part among the subnormals.
template <class R>
ZR_INLINE Pair<R> product(R a, R b) {
  const R high = a * b;
  if constexpr (kHasFusedMultiplyAdd) {
    return {high, fused<R>(a, b, -high)};
  } else {
    constexpr double kSplit = 0x1p27 + 1.0;
    const R scaledA = a * kSplit;
    const R scaledB = b * kSplit;
    const R highA = scaledA - (scaledA - a);
    const R highB = scaledB - (scaledB - b);
    const R lowA = a - highA;
    const R lowB = b - highB;
    return {high, lowA * lowB - (((high - highA * highB) - lowA * highB) - highA * lowB)};
  }
}

/// c + a b, where |c| >= |a b| or c is 0: the sum and its error, which is itself rounded to the nearest double.
template <class R>
ZR_INLINE Pair<R> sumWithProduct(R c, R a, R b) {
  if constexpr (kHasFusedMultiplyAdd) {
    const R high = fused<R>(a, b, c);
    return {high, fused<R>(a, b, c - high)};
  } else {
    const Pair<R> ab = product<R>(a, b);
    const Pair<R> all = sum<R>(c, ab.high);
    return {all.high, all.low + ab.low};
  }
}

/// a b + c in one rounding or in two, whichever is quicker: only where the last place does not matter, or where the
/// product is exact. Single numbers among the arguments stand for all lanes.
template <class R>
ZR_INLINE R mulAdd(auto a, auto b, auto c) {
  if constexpr (kHasFusedMultiplyAdd) {
    return fused<R>(spread<R>(a), spread<R>(b), spread<R>(c));
  } else {
    return spread<R>(a) * spread<R>(b) + spread<R>(c);
  }
}

/// c - a b, where a b is close to c.
template <class R>
ZR_INLINE R residual(R c, R a, R b) {
  if constexpr (kHasFusedMultiplyAdd) {
    return fused<R>(-a, b, c);
  } else {
    const Pair<R> ab = product<R>(a, b);
    return (c - ab.high) - ab.low;
  }
}

/// A value rounded to a double, if it is known how. Where it is not, the true value lies too close to the middle of two
/// doubles and has to be computed more carefully.
template <class R>
struct Rounded {
  R value;
  Mask<R> isSure;
};

template <class R>
ZR_INLINE Rounded<R> ifBothAre(R one, R other) {
  if constexpr (kIsSingle<R>) {
    return {one, wordOf(one) == wordOf(other)};  // quicker than comparing numbers
  } else {
    return {one, one == other};
  }
}
/// high + low, whose error is at most `relativeError` |high|: sure where both ends are rounded alike.
template <class R>
ZR_INLINE Rounded<R> rounded(R high, R low, double relativeError) {
  return ifBothAre<R>(high + mulAdd<R>(high, -relativeError, low), high + mulAdd<R>(high, relativeError, low));
}
/// The same with an absolute error.
template <class R>
ZR_INLINE Rounded<R> roundedWithin(R high, R low, double error) {
  return ifBothAre<R>(high + (low - error), high + (low + error));
}

/// c[0] + c[1] u + ..., by the fewest operations.
template <class R, std::size_t From = 0, std::size_t Count>
ZR_INLINE R horner(R u, const double (&c)[Count]) {
  if constexpr (From + 1 == Count) {
    return all<R>(c[From]);
  } else {
    return mulAdd<R>(horner<R, From + 1>(u, c), u, c[From]);
  }
}
/// The same with less waiting of one operation for another.
template <class R, std::size_t Count>
ZR_INLINE R polynomial(R u, const double (&c)[Count]) {
  if constexpr (Count == 4) {
    return mulAdd<R>(u * u, mulAdd<R>(all<R>(c[3]), u, c[2]), mulAdd<R>(all<R>(c[1]), u, c[0]));
  } else if constexpr (Count == 5) {
    const R square = u * u;
    const R upper = mulAdd<R>(square, all<R>(c[4]), mulAdd<R>(all<R>(c[3]), u, c[2]));
    return mulAdd<R>(square, upper, mulAdd<R>(all<R>(c[1]), u, c[0]));
  } else {
    return horner<R>(u, c);
  }
}

/// The whole number nearest to `value` (|value| < 2^51, ties either way), as a number and, in its low 32 bits and more,
/// as a word.
template <class R>
struct Whole {
  R number;
  Word<R> word;
};
/// The word of the whole number 0; others are so much more or less.
inline constexpr std::int64_t kWholeZero = 0x4338000000000000;
template <class R>
ZR_INLINE Whole<R> wholeOfProduct(R value, double factor) {
  constexpr double kShift = 0x1.8p52;  // its last place is 1
  const R shifted = mulAdd<R>(value, factor, all<R>(kShift));
  return {shifted - kShift, wordOf(shifted)};
}

}  // namespace exact::ZR_EXACT_BUILD

#endif
