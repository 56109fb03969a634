// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_EXACT_REFERENCE_H
#define ZRCORE_TESTS_EXACT_REFERENCE_H

#include <exact/Exact.h>

#include <functional>
#include <string>
#include <vector>

/// A function under test with its names in MPFR and in the C library's long double.
struct Subject {
  std::string name;
  std::function<double(const exact::Functions&, double x, double y)> compute;
  /// The nearest double by MPFR.
  std::function<double(double x, double y)> nearest;
  /// To 64 bits, of which 60 are relied upon.
  std::function<long double(double x, double y)> rough;
  bool hasTwoArguments = false;
};

/// All of them. Sine and cosine of `sincos` count as functions.
const std::vector<Subject>& subjects();

/// Kinds of arguments: the ranges that the geometry uses; magnitudes from 2^-60 to 2^60, or what of them the function
/// is defined for; the neighbourhoods of its special places (multiples of pi/2, 1, powers of two, the limits of what
/// the first phase takes); and any bits at all.
enum class Kind { kGeometry, kMagnitudes, kNeighbours, kBits };
constexpr Kind kKinds[] = {Kind::kGeometry, Kind::kMagnitudes, Kind::kNeighbours, Kind::kBits};

/// Reproducible arguments of a function.
class Arguments {
 public:
  Arguments(const Subject& subject, Kind kind, std::uint64_t seed);
  struct Pair {
    double x, y;
  };
  Pair next();

 private:
  std::uint64_t roll();
  double between(double low, double high);
  double ofMagnitude(double least, double greatest);
  double neighbour();
  double one();

  std::string name_;
  Kind kind_;
  std::uint64_t state_;
};

/// Whether a result is the nearest double. The long double decides all but one argument in sixty, MPFR the rest; or
/// MPFR all, if `byMpfrAlone`.
class Judge {
 public:
  explicit Judge(const Subject& subject, bool byMpfrAlone = false) : subject_(subject), byMpfrAlone_(byMpfrAlone) {}
  bool isRight(double result, double x, double y);
  std::uint64_t askedMpfr() const { return askedMpfr_; }

 private:
  const Subject& subject_;
  bool byMpfrAlone_;
  std::uint64_t askedMpfr_ = 0;
};

/// All NaN are the same; zeros are not.
bool isSameDouble(double a, double b);

#endif
