// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>

#include <cmath>

#include "Kernels.h"

namespace {
constexpr double kSinglePointMargin = 1000.0;  // map points, so that a lone point has an area to show
}  // namespace

ZRMapRect ZRMBR(const ZRMapPoint* points, uint64_t count) noexcept {
  if (count == 0) return ZRMapRectNull;
  if (count == 1) {
    return {{points->x - kSinglePointMargin, points->y - kSinglePointMargin},
            {2.0 * kSinglePointMargin, 2.0 * kSinglePointMargin}};
  }
  return geometry::kernels().bounds(points, count);
}

double distanceBetweenPoints(ZRMapPoint a, ZRMapPoint b) noexcept {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  return std::sqrt(dx * dx + dy * dy);
}
