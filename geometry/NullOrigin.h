// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_NULLORIGIN_H
#define ZRCORE_GEOMETRY_NULLORIGIN_H

#include <ZRCore/ZRGeometry.h>

#include <cmath>

namespace geometry {

/// The test for "no rectangle": an infinite origin, of either sign. The size does not matter, and NaN does not count.
inline bool isNullOrigin(ZRMapRect r) { return std::isinf(r.origin.x) || std::isinf(r.origin.y); }

}  // namespace geometry

#endif
