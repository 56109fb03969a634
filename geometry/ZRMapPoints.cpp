// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>

#include <cmath>

namespace {
constexpr double kFarthest = 9223372036854775808.0;  // 2^63, where the search for bounds begins
constexpr double kSinglePointMargin = 1000.0;        // map points, so that a lone point has an area to show
}  // namespace

ZRMapRect ZRMBR(const ZRMapPoint* points, uint64_t count) noexcept {
  if (count == 0) return ZRMapRectNull;
  if (count == 1) {
    return {{points->x - kSinglePointMargin, points->y - kSinglePointMargin},
            {2.0 * kSinglePointMargin, 2.0 * kSinglePointMargin}};
  }
  double minX = kFarthest;
  double minY = kFarthest;
  double maxX = -kFarthest;
  double maxY = -kFarthest;
  // "New, if it is beyond" rather than "old, unless": this way round a NaN is passed over.
  for (const ZRMapPoint* point = points; point != points + count; ++point) {
    minX = point->x < minX ? point->x : minX;
    minY = point->y < minY ? point->y : minY;
    maxX = point->x > maxX ? point->x : maxX;
    maxY = point->y > maxY ? point->y : maxY;
  }
  return {{minX, minY}, {maxX - minX, maxY - minY}};
}

double distanceBetweenPoints(ZRMapPoint a, ZRMapPoint b) noexcept {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  return std::sqrt(dx * dx + dy * dy);
}
