// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_ENVELOPE_H
#define ZRCORE_HOSTS_TRIP_DRAWING_ENVELOPE_H

#include <ZRCore/ZRGeometry.h>

#include <algorithm>

namespace trip {

/// A rectangle around everything that was put into it; empty at first.
struct Envelope {
  double minX = 0.0, maxX = 0.0, minY = 0.0, maxY = 0.0;
  bool isEmpty = true;

  void add(ZRMapPoint point) {
    minX = isEmpty ? point.x : std::min(minX, point.x);
    maxX = isEmpty ? point.x : std::max(maxX, point.x);
    minY = isEmpty ? point.y : std::min(minY, point.y);
    maxY = isEmpty ? point.y : std::max(maxY, point.y);
    isEmpty = false;
  }
  ZRMapPoint center() const { return {(minX + maxX) / 2, (minY + maxY) / 2}; }
};

}  // namespace trip

#endif
