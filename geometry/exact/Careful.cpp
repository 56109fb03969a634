// SPDX-License-Identifier: Apache-2.0
#include "Careful.h"

#include <cmath>
#include <limits>

#include "Growth.h"
#include "Inverse.h"
#include "WideSeries.h"

// The errors are derived in docs/numbers.md.
namespace exact::careful {

namespace {

using namespace ZR_EXACT_BUILD;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kHalfPi = 1.5707963267948966;
constexpr double kPi = 3.141592653589793;

/// Below, f(x) = x + c x^3 + ... with |c| <= 1/3 lies so close to x that it is rounded to it.
constexpr double kLinear = 0x1p-27;

/// What `compute` finds in 128 bits, if that decides how it is rounded; else in 256 bits. The former errs by less than
/// 2^-110, the latter by less than 2^-190.
double nearest(auto compute) {
  const Wide<2> rough = compute(Wide<2>());
  return rough.isClear() ? rough.nearest() : compute(Wide<4>()).nearest();
}

/// The angle of (x, y), neither of which is zero, from a rough value that is right to 2^-48: the angle that is left is
/// so small that three terms of its arctangent do.
template <std::size_t Words>
Wide<Words> refinedAngle(const Wide<Words>& y, const Wide<Words>& x, double rough) {
  const auto [quarters, rest] = wideReduced<Words>(rough);
  const Wide<Words> sine = wideSine<Words>(quarters, rest);
  const Wide<Words> cosine = wideSine<Words>(quarters + 1, rest);
  const Wide<Words> left = (y * cosine - x * sine) / (x * cosine + y * sine);
  const Wide<Words> square = left * left;
  const Wide<Words> one(1.0);
  const Wide<Words> series = one - square * (one / Wide<Words>(3.0) - square * (one / Wide<Words>(5.0)));
  return Wide<Words>(rough) + left * series;
}

template <std::size_t Words>
Wide<Words> angleOf(const Wide<Words>& y, const Wide<Words>& x) {
  const int distance = y.exponent - x.exponent;
  if (distance < -100 && !x.isNegative) {
    // The result is a little less than the quotient. Where that is a double or the middle of two, this decides.
    const Wide<Words> quotient = y / x;
    return quotient - quotient.scaled(-110);
  }
  double rough = distance > 0 ? kHalfPi : x.isNegative ? kPi : 0.0;
  if (std::abs(distance) <= 100) {
    const double along = x.roughMantissa();
    rough = quickAngle<double>(std::ldexp(y.roughMantissa(), distance), x.isNegative ? -along : along).value;
  }
  return refinedAngle<Words>(y, x, y.isNegative ? -rough : rough);
}

/// Right to 2^-48, absolutely.
double roughLogarithm(double value) {
  if (isNearOne<double>(value)) return value == 1.0 ? 0.0 : quickLogarithmNearOne<double>(value).value;
  if (isPositiveNormal<double>(value)) return quickLogarithm<double>(value).value;
  constexpr double kOfScale = 37.42994775023705;  // ln 2^54
  return quickLogarithm<double>(value * 0x1p54).value - kOfScale;
}

/// sqrt(1 - x^2)
template <std::size_t Words>
Wide<Words> otherSide(const Wide<Words>& x) {
  const Wide<Words> one(1.0);
  return squareRoot((one - x) * (one + x));
}

double ofSign(double magnitude, double sign) { return std::copysign(magnitude, sign); }

}  // namespace

double sin(double angle) noexcept {
  if (!std::isfinite(angle)) return angle - angle;
  if (std::fabs(angle) < kLinear) return angle;
  return nearest([angle]<std::size_t Words>(Wide<Words>) {
    const auto [quarters, rest] = wideReduced<Words>(angle);
    return wideSine<Words>(quarters, rest);
  });
}

double cos(double angle) noexcept {
  if (!std::isfinite(angle)) return angle - angle;
  if (std::fabs(angle) < kLinear) return 1.0;
  return nearest([angle]<std::size_t Words>(Wide<Words>) {
    const auto [quarters, rest] = wideReduced<Words>(angle);
    return wideSine<Words>(quarters + 1, rest);
  });
}

double tan(double angle) noexcept {
  if (!std::isfinite(angle)) return angle - angle;
  if (std::fabs(angle) < kLinear) return angle;
  return nearest([angle]<std::size_t Words>(Wide<Words>) {
    const auto [quarters, rest] = wideReduced<Words>(angle);
    return wideSine<Words>(quarters, rest) / wideSine<Words>(quarters + 1, rest);
  });
}

double asin(double sine) noexcept {
  if (std::fabs(sine) < kLinear) return sine;
  if (std::fabs(sine) == 1.0) return ofSign(kHalfPi, sine);
  if (!(std::fabs(sine) < 1.0)) return std::numeric_limits<double>::quiet_NaN();
  return nearest([sine]<std::size_t Words>(Wide<Words>) {
    const Wide<Words> y(sine);
    return angleOf<Words>(y, otherSide<Words>(y));
  });
}

double acos(double cosine) noexcept {
  if (cosine == 1.0) return 0.0;
  if (cosine == -1.0) return kPi;
  if (std::fabs(cosine) < 0x1p-60) return kHalfPi;
  if (!(std::fabs(cosine) < 1.0)) return std::numeric_limits<double>::quiet_NaN();
  return nearest([cosine]<std::size_t Words>(Wide<Words>) {
    const Wide<Words> x(cosine);
    return angleOf<Words>(otherSide<Words>(x), x);
  });
}

double atan(double tangent) noexcept {
  if (std::isnan(tangent) || std::fabs(tangent) < kLinear) return tangent + 0.0 * tangent;
  if (std::fabs(tangent) > 0x1p54) return ofSign(kHalfPi, tangent);
  return nearest(
      [tangent]<std::size_t Words>(Wide<Words>) { return angleOf<Words>(Wide<Words>(tangent), Wide<Words>(1.0)); });
}

double atan2(double y, double x) noexcept {
  if (std::isnan(x) || std::isnan(y)) return x + y;
  const bool isWest = std::signbit(x);
  if (y == 0.0) return ofSign(isWest ? kPi : 0.0, y);
  if (x == 0.0) return ofSign(kHalfPi, y);
  if (std::isinf(x) && std::isinf(y)) return ofSign(isWest ? 2.356194490192345 : 0.7853981633974483, y);
  if (std::isinf(x)) return ofSign(isWest ? kPi : 0.0, y);
  if (std::isinf(y)) return ofSign(kHalfPi, y);
  return nearest([y, x]<std::size_t Words>(Wide<Words>) { return angleOf<Words>(Wide<Words>(y), Wide<Words>(x)); });
}

double exp(double exponent) noexcept {
  if (std::isnan(exponent)) return exponent + exponent;
  if (exponent > 710.0) return kInfinity;
  if (exponent < -746.0) return 0.0;
  if (std::fabs(exponent) < 0x1p-54) return 1.0;
  return nearest([exponent]<std::size_t Words>(Wide<Words>) { return wideExponential<Words>(exponent); });
}

double log(double value) noexcept {
  if (std::isnan(value)) return value + value;
  if (value == 0.0) return -kInfinity;
  if (value < 0.0) return std::numeric_limits<double>::quiet_NaN();
  if (value == kInfinity) return value;
  if (value == 1.0) return 0.0;
  // ln(x) = rough + ln(1 + z), z = x exp(-rough) - 1. Near 1, where the result is small, z needs the longer places.
  const double rough = roughLogarithm(value);
  const auto refined = [&]<std::size_t Words>(Wide<Words>) {
    const Wide<Words> one(1.0);
    const Wide<Words> z = Wide<Words>(value) * wideExponential<Words>(-rough) - one;
    return Wide<Words>(rough) + (z - z * z * (Wide<Words>(0.5) - z * (one / Wide<Words>(3.0) - z.scaled(-2))));
  };
  return std::fabs(rough) < 0x1p-6 ? refined(Wide<4>()).nearest() : nearest(refined);
}

double hypot(double x, double y) noexcept {
  if (std::isinf(x) || std::isinf(y)) return kInfinity;
  if (std::isnan(x) || std::isnan(y)) return x + y;
  const double a = std::fmax(std::fabs(x), std::fabs(y));
  const double b = std::fmin(std::fabs(x), std::fabs(y));
  const Wide<4> longer(a);
  const Wide<4> shorter(b);
  if (b == 0.0 || longer.exponent - shorter.exponent > 60) return a;
  // The sum of the squares is exact. Where its root has up to 64 bits it is a double or the middle of two, and the root
  // that was found lies a little below.
  const Wide<4> square = longer * longer + shorter * shorter;
  const Wide<4> root = squareRoot(square);
  Wide<4> few = root + Wide<4>({0, 0, 1ULL << 63U, 0}, root.exponent);
  few.places = {0, 0, 0, few.places[3]};
  return (few * few - square).isZero() ? few.nearest() : root.nearest();
}

}  // namespace exact::careful
