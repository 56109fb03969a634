// SPDX-License-Identifier: Apache-2.0
/// @file
/// The part of the geometry that needs C++: an overload and the helpers on coordinates.
#ifndef ZRCORE_ZRGEOMETRY_HPP
#define ZRCORE_ZRGEOMETRY_HPP

#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeometry.h>

#include <bit>
#include <cstdint>

/// Straight distance in the plane, in the unit of its arguments.
inline double distanceBetweenPoints(ZRDoublePoint a, ZRDoublePoint b) noexcept {
  return distanceBetweenPoints(ZRMapPoint{a.x, a.y}, ZRMapPoint{b.x, b.y});
}

/// The functions on map rectangles as inline code, for loops over many: the same results as the exported ones of the
/// same name, which call these and whose documentation holds. Pure, any thread. Infinity and NaN have a meaning here:
/// not for files that are compiled with -ffast-math.
namespace ZRInline {

/// One axis of a standardised rectangle. The length is kept because high - low may round to something else.
struct Interval {
  double low, high, length;
};

/// Written as processors compute minima and maxima, which need no branch: the second operand stands when the two are
/// equal, or one is NaN.
constexpr double smaller(double a, double b) noexcept { return a < b ? a : b; }
constexpr double larger(double a, double b) noexcept { return a > b ? a : b; }

/// `a` if so, else `b`, without a branch that processors would guess wrong.
constexpr double pick(bool isA, double a, double b) noexcept {
  const std::uint64_t mask = 0 - static_cast<std::uint64_t>(isA);
  return std::bit_cast<double>((std::bit_cast<std::uint64_t>(a) & mask) | (std::bit_cast<std::uint64_t>(b) & ~mask));
}

constexpr Interval interval(double origin, double length) noexcept {
  const double end = origin + length;
  return {smaller(end, origin), larger(origin, end), __builtin_fabs(length)};
}
constexpr Interval horizontal(const ZRMapRect& r) noexcept { return interval(r.origin.x, r.size.width); }
constexpr Interval vertical(const ZRMapRect& r) noexcept { return interval(r.origin.y, r.size.height); }

inline constexpr double kInfinity = __builtin_huge_val();

/// `ZRMapRectIsNull`: an infinite origin, of either sign. The size does not matter, and NaN does not count.
constexpr bool isNullOrigin(const ZRMapRect& r) noexcept {
  return (__builtin_fabs(r.origin.x) == kInfinity) | (__builtin_fabs(r.origin.y) == kInfinity);
}
/// Whether no origin is infinite or NaN, by one comparison: these less themselves are NaN, all else is 0.
constexpr bool haveFiniteOrigins(const ZRMapRect& a, const ZRMapRect& b) noexcept {
  const auto [ax, ay] = a.origin;
  const auto [bx, by] = b.origin;
  return (ax - ax) + (ay - ay) + (bx - bx) + (by - by) == 0.0;
}
/// Both and either without a branch, which two comparisons joined by && or || may become.
constexpr bool both(bool a, bool b) noexcept { return a & b; }
constexpr bool either(bool a, bool b) noexcept { return a | b; }

/// What containing and intersecting take for nothing.
constexpr bool isAtInfinity(const ZRMapRect& r) noexcept {
  return either(r.origin.x == kInfinity, r.origin.y == kInfinity);
}

constexpr bool meets(const Interval& a, const Interval& b) noexcept { return both(a.low <= b.high, b.low <= a.high); }
constexpr bool holds(const Interval& a, const Interval& b) noexcept { return both(a.low <= b.low, b.high <= a.high); }
constexpr bool holds(const Interval& a, double value) noexcept { return both(a.low <= value, value <= a.high); }

/// Of two intervals that meet. One that lies within the other comes out with its own length, unrounded.
constexpr Interval common(const Interval& a, const Interval& b) noexcept {
  const double low = larger(b.low, a.low), high = smaller(b.high, a.high);
  const bool isA = holds(b, a), isB = both(!isA, holds(a, b));
  return {pick(isB, b.low, low), pick(isB, b.high, high), pick(isA, a.length, pick(isB, b.length, high - low))};
}
constexpr Interval spanOf(const Interval& a, const Interval& b) noexcept {
  const double low = smaller(b.low, a.low), high = larger(b.high, a.high);
  return {low, high, high - low};
}

constexpr bool ZRMapRectContainsPoint(const ZRMapRect& rect, ZRMapPoint point) noexcept {
  return both(holds(horizontal(rect), point.x), holds(vertical(rect), point.y));
}
constexpr bool ZRMapRectContainsRect(const ZRMapRect& a, const ZRMapRect& b) noexcept {
  return either(isAtInfinity(b), both(holds(horizontal(a), horizontal(b)), holds(vertical(a), vertical(b))));
}
constexpr bool ZRMapRectIntersectsRect(const ZRMapRect& a, const ZRMapRect& b) noexcept {
  return both(!either(isAtInfinity(a), isAtInfinity(b)),
              both(meets(horizontal(a), horizontal(b)), meets(vertical(a), vertical(b))));
}

inline constexpr ZRMapRect kNullRect = {{kInfinity, kInfinity}, {kInfinity, kInfinity}};  // ZRMapRectNull

constexpr ZRMapRect ZRMapRectUnion(const ZRMapRect& a, const ZRMapRect& b) noexcept {
  if (!haveFiniteOrigins(a, b)) [[unlikely]] {
    if (isNullOrigin(a)) return isNullOrigin(b) ? kNullRect : b;
    if (isNullOrigin(b)) return a;
  }
  const Interval x = spanOf(horizontal(a), horizontal(b)), y = spanOf(vertical(a), vertical(b));
  return {{x.low, y.low}, {x.length, y.length}};
}
constexpr ZRMapRect ZRMapRectIntersection(const ZRMapRect& a, const ZRMapRect& b) noexcept {
  if (!haveFiniteOrigins(a, b) && (isNullOrigin(a) || isNullOrigin(b))) [[unlikely]]
    return kNullRect;
  const Interval ax = horizontal(a), bx = horizontal(b), ay = vertical(a), by = vertical(b);
  const bool isSome = both(meets(ax, bx), meets(ay, by));
  const Interval x = common(ax, bx), y = common(ay, by);
  return {{pick(isSome, x.low, kInfinity), pick(isSome, y.low, kInfinity)},
          {pick(isSome, x.length, kInfinity), pick(isSome, y.length, kInfinity)}};
}
constexpr ZRMapRect ZRMapRectInset(const ZRMapRect& rect, double dx, double dy) noexcept {
  if (isNullOrigin(rect)) return kNullRect;
  return {{rect.origin.x + dx * 0.5, rect.origin.y + dy * 0.5}, {rect.size.width - dx, rect.size.height - dy}};
}
constexpr ZRMapRect ZRMapRectOffset(const ZRMapRect& rect, double dx, double dy) noexcept {
  if (isNullOrigin(rect)) return kNullRect;
  return {{rect.origin.x + dx, rect.origin.y + dy}, rect.size};
}

}  // namespace ZRInline

/// Small helpers on coordinates in degrees. Pure, any thread; infinities and NaN are computed through.
class ZR_EXPORT ZRCoordinateUtils {
 public:
  ZRCoordinateUtils() = delete;

  /// Initial great-circle bearing.
  /// @return  degrees clockwise from north, in [0, 360]: 360 itself comes out for a course a hair west of north,
  ///          because the angle is rounded to single precision before the full turn is added. 0 between equal
  ///          coordinates.
  static float bearingFromTo(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept;

  /// Fast distance by a table of the lengths of a degree (`metersPerDegreeLat`, `metersPerDegreeLng`, read as they are
  /// at the time of the call).
  /// @return  metres. Good for nearby places only; longitudes are not wrapped, so that places on either side of the
  ///          antimeridian come out a world apart. A mean latitude of 90 or more continues the table's last interval.
  static double approximateDistanceFromTo(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept;

  /// A coordinate on the straight line in degrees.
  /// Longitudes are not wrapped: half-way between 179 and -179 degrees is 0, the other side of the Earth.
  /// @param percent  a fraction, despite its name: 0 gives `from`, 1 gives `to`. Not clamped.
  static CLLocationCoordinate2D interpolateFromToPercent(CLLocationCoordinate2D from, CLLocationCoordinate2D to,
                                                         float percent) noexcept;

  /// The place on the segment from `start` to `end` that is closest to `coord`, measured in plain degrees. An end of
  /// the segment is returned exactly; a segment without length gives `start`. Longitudes are not wrapped: a segment
  /// from 179 to -179 degrees goes the long way round.
  static CLLocationCoordinate2D closestCoordToCoordAlongLineWithStartingCoordAndEndingCoord(
      CLLocationCoordinate2D coord, CLLocationCoordinate2D start, CLLocationCoordinate2D end) noexcept;

  /// True when both fields are equal, without tolerance.
  static bool coordIsEqualTo(CLLocationCoordinate2D a, CLLocationCoordinate2D b) noexcept;
};

#endif
