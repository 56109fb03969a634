// SPDX-License-Identifier: Apache-2.0
// clang-format off
// Made by geometry/exact/generate/make.sh (circle.py): do not edit.
#ifndef ZRCORE_GEOMETRY_EXACT_TANGENTTABLE_H
#define ZRCORE_GEOMETRY_EXACT_TANGENTTABLE_H

#include <cstdint>

/// The tangent of a small angle.
namespace exact::tables {

/// (tan(r) - r) / r^3 in r^2, |r| <= pi/512, within 2^-55.5.
inline constexpr double kTangent[] = {0x1.5555555555555p-2, 0x1.1111111111115p-3, 0x1.ba1ba1b7f3110p-5, 0x1.6652152263c41p-6};

}  // namespace exact::tables

#endif
