// SPDX-License-Identifier: Apache-2.0
// clang-format off
// Made by geometry/exact/generate/make.sh (circle.py): do not edit.
#ifndef ZRCORE_GEOMETRY_EXACT_TANGENTTABLE_H
#define ZRCORE_GEOMETRY_EXACT_TANGENTTABLE_H

#include <cstdint>

/// The tangent of a small angle.
namespace exact::tables {

/// (tan(r) - r) / r^3 in r^2, |r| <= pi/512, within 2^-54.5.
inline constexpr double kTangent[] = {0x1.5555555555556p-2, 0x1.1111111077aecp-3, 0x1.ba1e38cf05975p-5};

}  // namespace exact::tables

#endif
