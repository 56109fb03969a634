// SPDX-License-Identifier: Apache-2.0
#include "EndlessPlane.h"

#include <cmath>

namespace trip {

EndlessPlane::EndlessPlane(ZRMapPoint last)
    : worldsEast_(std::floor(last.x / ZRMapSizeWorld.width) * ZRMapSizeWorld.width),
      lastWorldX_(last.x - worldsEast_) {}

ZRMapPoint EndlessPlane::place(CLLocationCoordinate2D coordinate) {
  const double world = ZRMapSizeWorld.width;
  ZRMapPoint point = ZRMapPointForCoordinate(coordinate);
  if (lastWorldX_ && point.x - *lastWorldX_ > world / 2) worldsEast_ -= world;
  if (lastWorldX_ && *lastWorldX_ - point.x > world / 2) worldsEast_ += world;
  lastWorldX_ = point.x;
  point.x += worldsEast_;
  return point;
}

}  // namespace trip
