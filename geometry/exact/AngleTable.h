// SPDX-License-Identifier: Apache-2.0
// clang-format off
// Made by geometry/exact/generate/make.sh (circle.py): do not edit.
#ifndef ZRCORE_GEOMETRY_EXACT_ANGLETABLE_H
#define ZRCORE_GEOMETRY_EXACT_ANGLETABLE_H

#include <cstdint>

/// An angle is a whole number of steps of pi/256 and a rest of at most half a step.
namespace exact::tables {

/// 256/pi
inline constexpr double kStepsPerRadian = 0x1.45f306dc9c883p+6;

/// pi/256 in three parts: 31 bits, so that 2^22 times it is exact,
inline constexpr double kStepFirst = 0x1.921fb54400000p-7;

/// 53 bits,
inline constexpr double kStepSecond = 0x1.0b4611a626331p-41;

/// and 53 bits.
inline constexpr double kStepThird = 0x1.1701b839a2520p-95;

}  // namespace exact::tables

#endif
