// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_NULLORIGIN_H
#define ZRCORE_GEOMETRY_NULLORIGIN_H

#include <ZRCore/ZRGeometry.hpp>

namespace geometry {

using ZRInline::isNullOrigin;

}  // namespace geometry

#endif
