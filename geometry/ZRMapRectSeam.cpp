// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>

#include <cmath>

#include "CGRectFunctions.h"
#include "Numbers.h"

namespace {

/// Into [0, W]. The whole part is wrapped by itself, so that the fraction keeps all its digits.
double wrapped(double value) {
  double whole = 0.0;
  const double fraction = std::modf(value, &whole);
  const double rest = whole - std::floor(whole * geometry::kPerWorldWidth) * geometry::kWorldWidth + fraction;
  return rest < 0.0 ? rest + geometry::kWorldWidth : rest;
}

bool crossesItsWestEnd(ZRMapRect r) { return r.origin.x < 0.0 && geometry::horizontal(r).high > 0.0; }

/// A rectangle of negative width that reaches over the western end. The raw sum is meant, not the standardised edge.
bool reachesBackOverItsWestEnd(ZRMapRect r) { return r.origin.x > 0.0 && r.origin.x + r.size.width < 0.0; }

}  // namespace

ZRMapPoint ZRMapPointNormalized(ZRMapPoint point) noexcept { return {wrapped(point.x), wrapped(point.y)}; }

bool ZRMapRectSpans180thMeridian(ZRMapRect rect) noexcept {
  // The wrapped left side goes with the raw right side, so that a rectangle past the world's end spans, too.
  return (wrapped(rect.origin.x) < geometry::kWorldWidth && geometry::horizontal(rect).high > geometry::kWorldWidth) ||
         crossesItsWestEnd(rect) || reachesBackOverItsWestEnd(rect);
}

ZRMapRect ZRMapRectRemainder(ZRMapRect rect) noexcept {
  const auto [x, y] = rect.origin;
  const auto [width, height] = rect.size;
  const double right = geometry::horizontal(rect).high;
  if (x < geometry::kWorldWidth && right > geometry::kWorldWidth) {
    return {{0.0, y}, {right - geometry::kWorldWidth, height}};
  }
  if (crossesItsWestEnd(rect)) return {{geometry::kWorldWidth - std::fabs(x), y}, {std::fabs(x), height}};
  if (reachesBackOverItsWestEnd(rect)) {
    const double beyond = std::fabs(width) - x;
    return {{geometry::kWorldWidth - beyond, y}, {beyond, height}};
  }
  return ZRMapRectNull;
}
