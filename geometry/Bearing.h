// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_BEARING_H
#define ZRCORE_GEOMETRY_BEARING_H

#include <ZRCore/ZRGeometry.h>

/// What single bearings and batches of them share.
namespace geometry {

[[gnu::always_inline]] inline bool isSamePlace(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  return a.latitude == b.latitude && a.longitude == b.longitude;
}

/// A bearing in [-180, 180] in single precision, in [0, 360]. Rounded first and turned afterwards, which other parts
/// of the kit compare with to the last bit: a hair west of north gives 360.
[[gnu::always_inline]] inline float compassBearing(double degrees) {
  const auto bearing = static_cast<float>(degrees);
  return bearing < 0.0F ? bearing + 360.0F : bearing;
}

}  // namespace geometry

#endif
