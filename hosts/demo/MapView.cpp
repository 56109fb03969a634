// SPDX-License-Identifier: Apache-2.0
#include "MapView.h"

#include <algorithm>
#include <cmath>

namespace demo {

namespace {

constexpr double kFitMargin = 36.0;     // pixels
constexpr double kWorldsEachWay = 8.0;  // around the world, to either side: further, pixels lose their precision
constexpr double kPlacePixelsPerMapPoint = 0.15;

double clampedScale(double scale) {
  return std::clamp(scale, MapView::kLeastPixelsPerMapPoint, MapView::kMostPixelsPerMapPoint);
}

}  // namespace

void MapView::resize(double width, double height) {
  width_ = std::max(1.0, width);
  height_ = std::max(1.0, height);
}

trip::MapTransform MapView::transform() const { return {center_, pixelsPerMapPoint_, {0.0, 0.0, width_, height_}}; }

void MapView::setCenter(ZRMapPoint center) {
  const double world = ZRMapSizeWorld.width;
  center_ = {std::clamp(center.x, -kWorldsEachWay * world, kWorldsEachWay * world), std::clamp(center.y, 0.0, world)};
}

void MapView::panBy(double dx, double dy) {
  if (!std::isfinite(dx) || !std::isfinite(dy)) return;
  setCenter({center_.x - dx / pixelsPerMapPoint_, center_.y - dy / pixelsPerMapPoint_});
  follows_ = false;
}

void MapView::zoomAt(double x, double y, double factor) {
  if (!std::isfinite(factor) || factor <= 0.0) return;
  const ZRMapPoint held = transform().mapPoint({x, y});
  pixelsPerMapPoint_ = clampedScale(pixelsPerMapPoint_ * factor);
  const ZRMapPoint moved = transform().mapPoint({x, y});
  setCenter({center_.x + held.x - moved.x, center_.y + held.y - moved.y});
}

void MapView::fit(const trip::Envelope& envelope) {
  follows_ = true;
  if (envelope.isEmpty) return;
  setCenter(envelope.center());
  const auto room = [](double pixels) { return std::max(pixels - 2 * kFitMargin, pixels / 2); };
  pixelsPerMapPoint_ = clampedScale(trip::fittingScale(envelope, room(width_), room(height_)));
}

void MapView::show(ZRMapPoint point) {
  pixelsPerMapPoint_ = std::max(pixelsPerMapPoint_, kPlacePixelsPerMapPoint);
  setCenter(point);
  follows_ = false;
}

void MapView::keepInView(ZRMapPoint point) {
  if (!follows_) return;
  const auto [x, y, startsStroke] = transform()(point);
  const auto isNearEdge = [](double at, double size) {
    const double margin = std::min(kFitMargin, size / 4);
    return at < margin || at > size - margin;
  };
  if (isNearEdge(x, width_) || isNearEdge(y, height_)) setCenter(point);
}

}  // namespace demo
