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

}  // namespace exact

#endif
