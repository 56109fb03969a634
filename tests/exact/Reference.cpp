// SPDX-License-Identifier: Apache-2.0
#include "Reference.h"

#include <mpfr.h>

#include <bit>
#include <cmath>
#include <limits>

namespace {

/// 53 bits and a double's exponents, so that MPFR rounds as a double is.
class Double {
 public:
  explicit Double(double value = 0.0) {
    mpfr_set_emin(-1073);
    mpfr_set_emax(1024);
    mpfr_init2(value_, 53);
    mpfr_set_d(value_, value, MPFR_RNDN);
  }
  ~Double() { mpfr_clear(value_); }
  Double(const Double&) = delete;
  Double& operator=(const Double&) = delete;
  mpfr_ptr get() { return value_; }

 private:
  mpfr_t value_;
};

double rounded(Double& value, int ternary) {
  mpfr_subnormalize(value.get(), ternary, MPFR_RNDN);
  return mpfr_get_d(value.get(), MPFR_RNDN);
}

auto one(int (*function)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t)) {
  return [function](double x, double) {
    Double result, argument(x);
    return rounded(result, function(result.get(), argument.get(), MPFR_RNDN));
  };
}
auto two(int (*function)(mpfr_ptr, mpfr_srcptr, mpfr_srcptr, mpfr_rnd_t)) {
  return [function](double x, double y) {
    Double result, first(x), second(y);
    return rounded(result, function(result.get(), first.get(), second.get(), MPFR_RNDN));
  };
}
auto one(double (*exact::Functions::*function)(double) noexcept) {
  return [function](const exact::Functions& of, double x, double) { return (of.*function)(x); };
}
auto two(double (*exact::Functions::*function)(double, double) noexcept) {
  return [function](const exact::Functions& of, double x, double y) { return (of.*function)(x, y); };
}
auto one(long double (*function)(long double)) {
  return [function](double x, double) { return function(x); };
}
auto two(long double (*function)(long double, long double)) {
  return [function](double x, double y) { return function(x, y); };
}

}  // namespace

const std::vector<Subject>& subjects() {
  using F = exact::Functions;
  static const std::vector<Subject> all = {
      {"sin", one(&F::sin), one(mpfr_sin), one(sinl)},
      {"cos", one(&F::cos), one(mpfr_cos), one(cosl)},
      {"sincos.sine", [](const F& of, double x, double) { return of.sincos(x).sine; }, one(mpfr_sin), one(sinl)},
      {"sincos.cosine", [](const F& of, double x, double) { return of.sincos(x).cosine; }, one(mpfr_cos), one(cosl)},
      {"tan", one(&F::tan), one(mpfr_tan), one(tanl)},
      {"asin", one(&F::asin), one(mpfr_asin), one(asinl)},
      {"acos", one(&F::acos), one(mpfr_acos), one(acosl)},
      {"atan", one(&F::atan), one(mpfr_atan), one(atanl)},
      {"exp", one(&F::exp), one(mpfr_exp), one(expl)},
      {"log", one(&F::log), one(mpfr_log), one(logl)},
      {"atan2", two(&F::atan2), two(mpfr_atan2), two(atan2l), true},
      {"hypot", two(&F::hypot), two(mpfr_hypot), two(hypotl), true},
  };
  return all;
}

Arguments::Arguments(const Subject& subject, Kind kind, std::uint64_t seed)
    : name_(subject.name), kind_(kind), state_(seed * 0x9e3779b97f4a7c15U + static_cast<std::uint64_t>(kind) + 1) {}

std::uint64_t Arguments::roll() {  // splitmix64
  state_ += 0x9e3779b97f4a7c15U;
  std::uint64_t mixed = state_;
  mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
  mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
  return mixed ^ (mixed >> 31U);
}

double Arguments::between(double low, double high) {
  return low + (high - low) * (static_cast<double>(roll() >> 11U) * 0x1p-53);
}

/// Either sign, all binades alike.
double Arguments::ofMagnitude(double least, double greatest) {
  const double magnitude = std::exp2(between(std::log2(least), std::log2(greatest)));
  const double value = std::nextafter(magnitude, 0.0) * between(1.0 - 0x1p-20, 1.0);
  return (roll() & 1U) != 0 ? value : -value;
}

double Arguments::neighbour() {
  const auto near = [this](double place) {
    const auto steps = static_cast<std::int64_t>(std::exp2(between(0.0, 45.0))) * ((roll() & 1U) != 0 ? 1 : -1);
    return std::bit_cast<double>(std::bit_cast<std::int64_t>(place) + steps);
  };
  switch (roll() % 6) {
    case 0:  // multiples of a quarter turn, of a step of the tables
      return near(static_cast<double>(1 + roll() % 50) * 1.5707963267948966);
    case 1:
      return near(static_cast<double>(1 + roll() % 4000) * 0.012271846303085129);
    case 2:
      return near(1.0);
    case 3:
      return near(std::exp2(static_cast<double>(roll() % 120) - 60.0));
    case 4: {
      constexpr double kLimits[] = {0x1p15, 0x1p-27,           64.0, 0x1p-6, 1.0 - 0x1p-6, 1.0 + 0x1p-6, 700.0,
                                    709.78, 0.7071067811865476};
      return near(kLimits[roll() % std::size(kLimits)]);
    }
    default:  // subnormal
      return std::bit_cast<double>(roll() >> (12U + roll() % 52));
  }
}

double Arguments::one() {
  if (kind_ == Kind::kBits) return std::bit_cast<double>(roll());
  if (kind_ == Kind::kNeighbours) return (roll() & 1U) != 0 ? neighbour() : -neighbour();
  const bool isGeometry = kind_ == Kind::kGeometry;
  if (name_ == "asin" || name_ == "acos") return isGeometry ? between(-1.0, 1.0) : ofMagnitude(0x1p-60, 1.0);
  if (name_ == "exp") return isGeometry ? between(-3.15, 3.15) : between(-746.0, 711.0);
  if (name_ == "log") return isGeometry ? std::exp(between(-3.2, 3.2)) : std::fabs(ofMagnitude(0x1p-1070, 0x1p1023));
  if (name_ == "tan" && isGeometry) return between(0.0, 1.5707963267948966);
  if (name_ == "atan" && isGeometry) return ofMagnitude(0x1p-10, 24.0);
  if (name_ == "atan2" || name_ == "hypot") {
    return isGeometry ? ofMagnitude(0x1p-30, 1.0) : ofMagnitude(0x1p-60, 0x1p60);
  }
  return isGeometry ? between(-6.3, 6.3) : ofMagnitude(0x1p-60, 0x1p60);
}

Arguments::Pair Arguments::next() {
  const double x = one();
  return {x, one()};
}

bool Judge::isRight(double result, double x, double y) {
  constexpr long double kLeast = 0x1p-1000L;
  if (!byMpfrAlone_) {
    const long double rough = subject_.rough(x, y);
    const long double error = std::fabs(rough) * 0x1p-60L;
    const auto low = static_cast<double>(rough - error);
    if (std::fabs(rough) > kLeast && std::isfinite(low) && low == static_cast<double>(rough + error)) {
      return result == low;
    }
  }
  ++askedMpfr_;
  return isSameDouble(result, subject_.nearest(x, y));
}

bool isSameDouble(double a, double b) {
  return std::isnan(a) ? std::isnan(b) : std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}
