// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_FUNCTIONS_H
#define ZRCORE_GEOMETRY_EXACT_FUNCTIONS_H

#include "Careful.h"
#include "Circular.h"
#include "Growth.h"
#include "Inverse.h"

/// The functions for formulas, of one number or of several at once. Of one number the result is final. Of several it is
/// final in the lanes that the doubt does not name; the others have to be computed singly.
namespace exact::ZR_EXACT_BUILD {

/// The lanes of a calculation in which a first phase has left something undecided. A single number has no doubt left.
template <class R>
struct Doubt {
  Mask<R> lanes{};
};

/// What `quick` encloses, where the arguments are `isInDomain` and the enclosure is sure; else what `carefully` gives.
template <class R, class... Arguments>
ZR_INLINE R settled(Mask<R> isInDomain, auto quick, auto* carefully, [[maybe_unused]] Doubt<R>& doubt, Arguments... x) {
  if constexpr (kIsSingle<R>) {
    if (isInDomain) [[likely]] {
      const Rounded<R> of = quick(x...);
      if (of.isSure) [[likely]]
        return of.value;
    }
    return carefully(x...);
  } else {
    const Rounded<R> of = quick(x...);
    doubt.lanes |= ~(isInDomain & of.isSure);
    return of.value;
  }
}

template <class R>
ZR_INLINE R sin(R x, Doubt<R>& doubt) {
  return settled<R>(isWithin<R>(x, kLeastAngle, kAngleLimit), quickSine<R>, careful::sin, doubt, x);
}
template <class R>
ZR_INLINE R cos(R x, Doubt<R>& doubt) {
  return settled<R>(isWithin<R>(x, 0.0, kAngleLimit), quickCosine<R>, careful::cos, doubt, x);
}
template <class R>
ZR_INLINE R tan(R x, Doubt<R>& doubt) {
  return settled<R>(isWithin<R>(x, kLeastAngle, kAngleLimit), quickTangent<R>, careful::tan, doubt, x);
}
template <class R>
ZR_INLINE R asin(R x, Doubt<R>& doubt) {
  return settled<R>(isWithin<R>(x, kLeastAngle, 1.0), quickArcsine<R>, careful::asin, doubt, x);
}
template <class R>
ZR_INLINE R acos(R x, Doubt<R>& doubt) {
  return settled<R>(isWithin<R>(x, kLeastAngle, 1.0), quickArccosine<R>, careful::acos, doubt, x);
}
template <class R>
ZR_INLINE R atan(R x, Doubt<R>& doubt) {
  return settled<R>(isWithin<R>(x, kLeastAngle, kArctangentLimit), quickArctangent<R>, careful::atan, doubt, x);
}
template <class R>
ZR_INLINE R exp(R x, Doubt<R>& doubt) {
  return settled<R>(isWithin<R>(x, 0.0, kExponentLimit), quickExponential<R>, careful::exp, doubt, x);
}
template <class R>
ZR_INLINE R atan2(R y, R x, Doubt<R>& doubt) {
  const Mask<R> isInDomain =
      both<R>(isWithin<R>(x, kLeastSide, kGreatestSide), isWithin<R>(y, kLeastSide, kGreatestSide));
  return settled<R>(isInDomain, quickAngle<R>, careful::atan2, doubt, y, x);
}
template <class R>
ZR_INLINE R hypot(R x, R y, Doubt<R>& doubt) {
  const Mask<R> isInDomain =
      both<R>(isWithin<R>(x, kLeastSide, kGreatestSide), isWithin<R>(y, kLeastSide, kGreatestSide));
  return settled<R>(isInDomain, quickHypotenuse<R>, careful::hypot, doubt, x, y);
}

template <class R>
ZR_INLINE R log(R x, Doubt<R>& doubt) {
  if constexpr (kIsSingle<R>) {
    if (isNearOne<R>(x)) [[unlikely]] {
      return settled<R>(x != 1.0, quickLogarithmNearOne<R>, careful::log, doubt, x);
    }
    return settled<R>(isPositiveNormal<R>(x), quickLogarithm<R>, careful::log, doubt, x);
  } else {
    return settled<R>(isPositiveNormal<R>(x) & ~isNearOne<R>(x), quickLogarithm<R>, careful::log, doubt, x);
  }
}

/// Sine and cosine of the same angle.
template <class R>
struct CirclePoint {
  R sine, cosine;
};
template <class R>
ZR_INLINE CirclePoint<R> sincos(R x, [[maybe_unused]] Doubt<R>& doubt) {
  const Mask<R> isInDomain = isWithin<R>(x, kLeastAngle, kAngleLimit);
  if constexpr (kIsSingle<R>) {
    if (!isInDomain) [[unlikely]]
      return {careful::sin(x), careful::cos(x)};
  }
  const ReducedAngle<R> rest = reduced<R>(x);
  const RestFunctions<R> of = functionsOf<R>(rest);
  const auto quick = [&](Word<R> steps) { return sineOf<R>(steps, rest.high, of); };
  const Rounded<R> sine = quick(rest.steps);
  const Rounded<R> cosine = quick(rest.steps + 128);
  if constexpr (kIsSingle<R>) {
    return {sine.isSure ? sine.value : careful::sin(x), cosine.isSure ? cosine.value : careful::cos(x)};
  } else {
    doubt.lanes |= ~(isInDomain & sine.isSure & cosine.isSure);
    return {sine.value, cosine.value};
  }
}

/// exp(x) and exp(-x), which share their rest's powers.
template <class R>
struct Growths {
  R up, down;
};
template <class R>
ZR_INLINE Growths<R> expOfBoth(R x, [[maybe_unused]] Doubt<R>& doubt) {
  const Mask<R> isInDomain = isWithin<R>(x, 0.0, kExponentLimit);
  if constexpr (kIsSingle<R>) {
    if (!isInDomain) [[unlikely]]
      return {careful::exp(x), careful::exp(-x)};
  }
  const ReducedExponent<R> rest = reducedExponent<R>(x);
  const R square = rest.high * rest.high;
  // Even and odd part of (exp(r) - 1 - r) / r^2.
  const R even = mulAdd<R>(square, tables::kExponential[2], tables::kExponential[0]);
  const R odd = rest.high * mulAdd<R>(square, tables::kExponential[3], tables::kExponential[1]);
  const Rounded<R> up = powerOf<R>(rest.steps, rest.high, rest.low, even + odd);
  const Rounded<R> down = powerOf<R>(-rest.steps, -rest.high, -rest.low, even - odd);
  if constexpr (kIsSingle<R>) {
    return {up.isSure ? up.value : careful::exp(x), down.isSure ? down.value : careful::exp(-x)};
  } else {
    doubt.lanes |= ~(isInDomain & up.isSure & down.isSure);
    return {up.value, down.value};
  }
}

}  // namespace exact::ZR_EXACT_BUILD

#endif
