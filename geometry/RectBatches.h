// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_RECTBATCHES_H
#define ZRCORE_GEOMETRY_RECTBATCHES_H

#include <ZRCore/ZRGeometry.hpp>

#include "Batch.h"

/// One rectangle against many, and the bounds of many rectangles and points.
namespace geometry::ZR_EXACT_BUILD {

namespace {

/// One axis of as many standardised rectangles as there are lanes.
struct LaneInterval {
  Lanes low, high;
};
struct LaneRects {
  LaneInterval x, y;
  Two<Lanes> origin;
};

ZR_INLINE LaneInterval laneInterval(const Lanes& origin, const Lanes& length) {
  const Lanes end = origin + length;
  return {end < origin ? end : origin, origin > end ? origin : end};
}

ZR_INLINE LaneRects loadedRects(const ZRMapRect* rects) {
  // A rectangle is two records of two numbers: origin and size.
  const auto* const records = reinterpret_cast<const ZRMapPoint*>(rects);
  const Two<Lanes> first = loaded(records), second = loaded(records + kLanes);
  const auto [x, width] = separated<Lanes>(first.first, second.first);
  const auto [y, height] = separated<Lanes>(first.second, second.second);
  return {laneInterval(x, width), laneInterval(y, height), {x, y}};
}

/// Bit i: whether lane i of the mask is set.
ZR_INLINE std::uint64_t bitsOf(const exact::Mask<Lanes>& mask) {
  exact::Mask<Lanes> bits = mask;
  for (int lane = 0; lane < kLanes; ++lane) bits[lane] &= std::int64_t{1} << lane;
  std::uint64_t sum = 0;
  for (int lane = 0; lane < kLanes; ++lane) sum |= static_cast<std::uint64_t>(bits[lane]);
  return sum;
}

void intersectsOf(const ZRMapRect& rect, const ZRMapRect* rects, std::uint64_t count, std::uint64_t* bits) noexcept {
  constexpr double kInfinity = ZRInline::kInfinity;
  const auto x = ZRInline::horizontal(rect), y = ZRInline::vertical(rect);
  const bool isSomething = !ZRInline::isAtInfinity(rect);
  for (std::uint64_t start = 0; start < count; start += 64) {
    const std::uint64_t size = count - start < 64 ? count - start : 64;
    std::uint64_t word = 0, i = 0;
    for (; isSomething && i + kLanes <= size; i += kLanes) {
      const LaneRects of = loadedRects(rects + start + i);
      const auto meets = (of.x.low <= x.high) & (x.low <= of.x.high) & (of.y.low <= y.high) & (y.low <= of.y.high) &
                         (of.origin.first != kInfinity) & (of.origin.second != kInfinity);
      word |= bitsOf(meets) << i;
    }
    for (; isSomething && i < size; ++i) {
      word |= std::uint64_t{ZRInline::ZRMapRectIntersectsRect(rect, rects[start + i])} << i;
    }
    bits[start / 64] = word;
  }
}

/// The least and the greatest of what was offered; NaN is passed over.
struct Bounds {
  double low, high;
  ZR_INLINE void take(double from, double to) {
    low = from < low ? from : low;
    high = to > high ? to : high;
  }
};
struct LaneBounds {
  Lanes low, high;
  ZR_INLINE void take(const Lanes& from, const Lanes& to) {
    low = from < low ? from : low;
    high = to > high ? to : high;
  }
  ZR_INLINE void into(Bounds& bounds, int firstLane, int step) const {
    for (int lane = firstLane; lane < kLanes; lane += step) bounds.take(low[lane], high[lane]);
  }
};

ZRMapRect unionOf(const ZRMapRect* rects, std::uint64_t count) noexcept {
  constexpr double kInfinity = ZRInline::kInfinity;
  const Lanes none = exact::all<Lanes>(kInfinity);
  LaneBounds x = {none, -none}, y = {none, -none};
  std::uint64_t i = 0;
  for (; i + kLanes <= count; i += kLanes) {
    const LaneRects of = loadedRects(rects + i);
    const auto isNull = (exact::magnitude<Lanes>(of.origin.first) == kInfinity) |
                        (exact::magnitude<Lanes>(of.origin.second) == kInfinity);
    x.take(isNull ? none : of.x.low, isNull ? -none : of.x.high);
    y.take(isNull ? none : of.y.low, isNull ? -none : of.y.high);
  }
  Bounds across = {kInfinity, -kInfinity}, down = across;
  x.into(across, 0, 1);
  y.into(down, 0, 1);
  for (; i < count; ++i) {
    if (ZRInline::isNullOrigin(rects[i])) continue;
    const auto h = ZRInline::horizontal(rects[i]), v = ZRInline::vertical(rects[i]);
    across.take(h.low, h.high);
    down.take(v.low, v.high);
  }
  if (across.low > across.high || down.low > down.high) return ZRInline::kNullRect;
  // Which of 0.0 and -0.0 stands depends on the lanes; with 0.0 added it is 0.0.
  const double left = across.low + 0.0, top = down.low + 0.0;
  return {{left, top}, {across.high + 0.0 - left, down.high + 0.0 - top}};
}

constexpr double kFarthest = 9223372036854775808.0;  // 2^63, where the search for bounds begins

ZRMapRect boundsOneByOne(const ZRMapPoint* points, std::uint64_t count) {
  Bounds x = {kFarthest, -kFarthest}, y = x;
  for (std::uint64_t i = 0; i < count; ++i) {
    x.take(points[i].x, points[i].x);
    y.take(points[i].y, points[i].y);
  }
  return {{x.low, y.low}, {x.high - x.low, y.high - y.low}};
}

ZRMapRect boundsOf(const ZRMapPoint* points, std::uint64_t count) noexcept {
  // Points as they lie: x in the even lanes, y in the odd ones. Several, because each waits for itself.
  constexpr int kChains = 4;
  constexpr std::uint64_t kPoints = kLanes / 2;
  const Lanes farthest = exact::all<Lanes>(kFarthest);
  LaneBounds chains[kChains] = {
      {farthest, -farthest}, {farthest, -farthest}, {farthest, -farthest}, {farthest, -farthest}};
  std::uint64_t i = 0;
  for (; i + kChains * kPoints <= count; i += kChains * kPoints) {
    for (std::uint64_t chain = 0; chain < kChains; ++chain) {
      Lanes of;
      __builtin_memcpy(&of, points + i + chain * kPoints, sizeof of);
      chains[chain].take(of, of);
    }
  }
  Bounds x = {kFarthest, -kFarthest}, y = x;
  for (const LaneBounds& chain : chains) {
    chain.into(x, 0, 2);
    chain.into(y, 1, 2);
  }
  for (; i < count; ++i) {
    x.take(points[i].x, points[i].x);
    y.take(points[i].y, points[i].y);
  }
  // Of 0.0 and -0.0, which compare equal, the one that comes first stands.
  if (x.low == 0.0 || x.high == 0.0 || y.low == 0.0 || y.high == 0.0) return boundsOneByOne(points, count);
  return {{x.low, y.low}, {x.high - x.low, y.high - y.low}};
}

}  // namespace

}  // namespace geometry::ZR_EXACT_BUILD

#endif
