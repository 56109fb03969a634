// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_CAREFUL_H
#define ZRCORE_GEOMETRY_EXACT_CAREFUL_H

/// The functions for every argument: special values first, then arithmetic in 128 bits, and in 256 where these do not
/// decide. Slow (about a microsecond): for what the first phase leaves undecided. Special values are those of C's
/// Annex F.
namespace exact::careful {

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

}  // namespace exact::careful

#endif
