// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_WIDESERIES_H
#define ZRCORE_GEOMETRY_EXACT_WIDESERIES_H

#include "Wide.h"

/// The functions with a power series of their own, in 128 or 256 bits; the others are built on them (Careful.cpp). The
/// relative errors are below 2^-118 and 2^-246.
namespace exact {

/// An angle as a number of quarter turns (modulo 4) and a rest in [-pi/4, pi/4].
template <std::size_t Words>
struct QuarterTurns {
  unsigned quarters;
  Wide<Words> rest;
};
/// Of any finite angle.
template <std::size_t Words>
QuarterTurns<Words> wideReduced(double angle) noexcept;

/// The sine of quarter turns and a rest.
template <std::size_t Words>
Wide<Words> wideSine(unsigned quarters, const Wide<Words>& rest) noexcept;

/// Of |exponent| < 2000.
template <std::size_t Words>
Wide<Words> wideExponential(double exponent) noexcept;

}  // namespace exact

#endif
