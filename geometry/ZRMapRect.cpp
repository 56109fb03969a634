// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>

#include "CGRectFunctions.h"
#include "NullOrigin.h"

namespace {

geometry::Interval spanOf(geometry::Interval a, geometry::Interval b) {
  const double low = b.low < a.low ? b.low : a.low;
  const double high = b.high > a.high ? b.high : a.high;
  return {low, high, high - low};
}

}  // namespace

ZRMapRect ZRMapRectUnion(ZRMapRect a, ZRMapRect b) noexcept {
  if (geometry::isNullOrigin(a)) return geometry::isNullOrigin(b) ? ZRMapRectNull : b;
  if (geometry::isNullOrigin(b)) return a;
  const geometry::Interval x = spanOf(geometry::horizontal(a), geometry::horizontal(b));
  const geometry::Interval y = spanOf(geometry::vertical(a), geometry::vertical(b));
  return {{x.low, y.low}, {x.length, y.length}};
}

ZRMapRect ZRMapRectIntersection(ZRMapRect a, ZRMapRect b) noexcept {
  if (geometry::isNullOrigin(a) || geometry::isNullOrigin(b) || !geometry::CGRectIntersectsRect(a, b)) {
    return ZRMapRectNull;
  }
  return geometry::CGRectIntersection(a, b);
}

ZRMapRect ZRMapRectInset(ZRMapRect rect, double dx, double dy) noexcept {
  if (geometry::isNullOrigin(rect)) return ZRMapRectNull;
  return {{rect.origin.x + dx * 0.5, rect.origin.y + dy * 0.5}, {rect.size.width - dx, rect.size.height - dy}};
}

ZRMapRect ZRMapRectOffset(ZRMapRect rect, double dx, double dy) noexcept {
  if (geometry::isNullOrigin(rect)) return ZRMapRectNull;
  return {{rect.origin.x + dx, rect.origin.y + dy}, rect.size};
}

void ZRMapRectDivide(ZRMapRect rect, ZRMapRect* part, ZRMapRect* remainder, double amount, CGRectEdge edge) noexcept {
  if (!geometry::isNullOrigin(rect)) geometry::CGRectDivide(rect, part, remainder, amount, edge);
}

bool ZRMapRectContainsPoint(ZRMapRect rect, ZRMapPoint point) noexcept {
  return geometry::holds(geometry::horizontal(rect), point.x) && geometry::holds(geometry::vertical(rect), point.y);
}

bool ZRMapRectContainsRect(ZRMapRect a, ZRMapRect b) noexcept { return geometry::CGRectContainsRect(a, b); }

bool ZRMapRectIntersectsRect(ZRMapRect a, ZRMapRect b) noexcept { return geometry::CGRectIntersectsRect(a, b); }
