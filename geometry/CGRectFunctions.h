// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_CGRECTFUNCTIONS_H
#define ZRCORE_GEOMETRY_CGRECTFUNCTIONS_H

#include <ZRCore/ZRGeometry.hpp>

#include <cmath>

/// What of the platform's rectangle functions is not in `ZRInline`.
namespace geometry {

using ZRInline::horizontal;
using ZRInline::Interval;
using ZRInline::vertical;

/// Of a rectangle with a finite origin. An amount that is not above 0 cuts off nothing, one past the extent everything.
inline void CGRectDivide(ZRMapRect r, ZRMapRect* slice, ZRMapRect* remainder, double amount, CGRectEdge edge) {
  const ZRMapRect whole = {{horizontal(r).low, vertical(r).low}, {std::fabs(r.size.width), std::fabs(r.size.height)}};
  const bool alongX = edge == CGRectMinXEdge || edge == CGRectMaxXEdge;
  const double extent = alongX ? whole.size.width : whole.size.height;
  const double wanted = amount > 0.0 ? amount : 0.0;
  const double cut = wanted < extent ? wanted : extent;
  const double rest = extent - cut;

  ZRMapRect cutOff = whole;
  ZRMapRect kept = whole;
  (alongX ? cutOff.size.width : cutOff.size.height) = cut;
  (alongX ? kept.size.width : kept.size.height) = rest;
  const bool atNearEdge = edge == CGRectMinXEdge || edge == CGRectMinYEdge;
  ZRMapRect& moved = atNearEdge ? kept : cutOff;
  (alongX ? moved.origin.x : moved.origin.y) += atNearEdge ? cut : rest;
  *slice = cutOff;
  *remainder = kept;
}

}  // namespace geometry

#endif
