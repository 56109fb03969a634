// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.hpp>

#include "CGRectFunctions.h"

ZRMapRect ZRMapRectUnion(ZRMapRect a, ZRMapRect b) noexcept { return ZRInline::ZRMapRectUnion(a, b); }

ZRMapRect ZRMapRectIntersection(ZRMapRect a, ZRMapRect b) noexcept { return ZRInline::ZRMapRectIntersection(a, b); }

ZRMapRect ZRMapRectInset(ZRMapRect rect, double dx, double dy) noexcept {
  return ZRInline::ZRMapRectInset(rect, dx, dy);
}

ZRMapRect ZRMapRectOffset(ZRMapRect rect, double dx, double dy) noexcept {
  return ZRInline::ZRMapRectOffset(rect, dx, dy);
}

void ZRMapRectDivide(ZRMapRect rect, ZRMapRect* part, ZRMapRect* remainder, double amount, CGRectEdge edge) noexcept {
  if (!ZRInline::isNullOrigin(rect)) geometry::CGRectDivide(rect, part, remainder, amount, edge);
}

bool ZRMapRectContainsPoint(ZRMapRect rect, ZRMapPoint point) noexcept {
  return ZRInline::ZRMapRectContainsPoint(rect, point);
}

bool ZRMapRectContainsRect(ZRMapRect a, ZRMapRect b) noexcept { return ZRInline::ZRMapRectContainsRect(a, b); }

bool ZRMapRectIntersectsRect(ZRMapRect a, ZRMapRect b) noexcept { return ZRInline::ZRMapRectIntersectsRect(a, b); }
