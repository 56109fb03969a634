// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_CGRECTFUNCTIONS_H
#define ZRCORE_GEOMETRY_CGRECTFUNCTIONS_H

#include <ZRCore/ZRGeometry.h>

#include <cmath>
#include <limits>

/// The platform's rectangle functions, on the same four doubles, as every system is to compute them. They standardise;
/// touching edges intersect; a NaN edge answers false.
namespace geometry {

/// One axis of a standardised rectangle.
struct Interval {
  double low;
  double high;
  double length;  ///< >= 0; the given one, because high - low may round to something else
};

inline Interval interval(double origin, double length) {
  const double positive = std::fabs(length);  // that of -0.0, too
  return length < 0.0 ? Interval{origin + length, origin, positive} : Interval{origin, origin + length, positive};
}
inline Interval horizontal(ZRMapRect r) { return interval(r.origin.x, r.size.width); }
inline Interval vertical(ZRMapRect r) { return interval(r.origin.y, r.size.height); }

inline bool meets(Interval a, Interval b) { return a.low <= b.high && b.low <= a.high; }
inline bool holds(Interval a, Interval b) { return a.low <= b.low && b.high <= a.high; }
inline bool holds(Interval a, double value) { return a.low <= value && value <= a.high; }

/// Of two intervals that meet. One that lies within the other comes out with its own length, unrounded.
inline Interval common(Interval a, Interval b) {
  const double low = a.low < b.low ? b.low : a.low;
  const double high = b.high < a.high ? b.high : a.high;
  if (low == a.low && high == a.high) return a;
  if (low == b.low && high == b.high) return b;
  return {low, high, high - low};
}

inline bool CGRectIsNull(ZRMapRect r) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  return r.origin.x == kInfinity || r.origin.y == kInfinity;
}

inline bool CGRectIntersectsRect(ZRMapRect a, ZRMapRect b) {
  return !CGRectIsNull(a) && !CGRectIsNull(b) && meets(horizontal(a), horizontal(b)) && meets(vertical(a), vertical(b));
}

/// Of two rectangles that intersect.
inline ZRMapRect CGRectIntersection(ZRMapRect a, ZRMapRect b) {
  const Interval x = common(horizontal(a), horizontal(b));
  const Interval y = common(vertical(a), vertical(b));
  return {{x.low, y.low}, {x.length, y.length}};
}

inline bool CGRectContainsRect(ZRMapRect a, ZRMapRect b) {
  return CGRectIsNull(b) || (holds(horizontal(a), horizontal(b)) && holds(vertical(a), vertical(b)));
}

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
