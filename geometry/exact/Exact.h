// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_EXACT_H
#define ZRCORE_GEOMETRY_EXACT_EXACT_H

/// Elementary functions that are correctly rounded: each result is the double nearest to the true value, so that it is
/// the same on every processor, by every compiler, with every C library. Special values are those of C's Annex F; the
/// rounding mode must be to nearest; floating point flags and errno mean nothing. Pure, any thread.
/// How it is done, and why it holds: docs/numbers.md.
namespace exact {

double sin(double angle) noexcept;
double cos(double angle) noexcept;
double tan(double angle) noexcept;
double asin(double sine) noexcept;
double acos(double cosine) noexcept;
double atan(double tangent) noexcept;
double atan2(double y, double x) noexcept;
double exp(double exponent) noexcept;
double log(double value) noexcept;
double hypot(double x, double y) noexcept;

struct SineCosine {
  double sine, cosine;
};
/// Both for little more than the price of one.
SineCosine sincos(double angle) noexcept;

/// The processors that this library has been compiled for, the later ones of which are quicker. All give the same
/// results.
enum class Build : int { kCommon, kFused, kWide };

/// The quickest one that this processor can run; it can run those before it, too.
Build bestBuild() noexcept;

/// One build's functions.
struct Functions {
  double (*sin)(double) noexcept;
  double (*cos)(double) noexcept;
  double (*tan)(double) noexcept;
  double (*asin)(double) noexcept;
  double (*acos)(double) noexcept;
  double (*atan)(double) noexcept;
  double (*exp)(double) noexcept;
  double (*log)(double) noexcept;
  double (*atan2)(double, double) noexcept;
  double (*hypot)(double, double) noexcept;
  SineCosine (*sincos)(double) noexcept;
};
/// kWide has those of kFused.
const Functions& functionsOf(Build build) noexcept;

}  // namespace exact

#endif
