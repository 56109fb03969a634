// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_KNOWNPLACE_H
#define ZRCORE_GEOMETRY_KNOWNPLACE_H

#include <ZRCore/ZRGeometry.h>

namespace geometry {

/// A place with what bearings to and from it need again and again. For the rooms that build on geometry. Pure, any
/// thread.
struct KnownPlace {
  CLLocationCoordinate2D coordinate{};  // degrees
  double sine = 0.0, cosine = 0.0;      // of the latitude
};

KnownPlace knownPlace(CLLocationCoordinate2D coordinate) noexcept;

/// What `ZRCoordinateUtils::bearingFromTo` gives for the coordinates, to the last bit.
float bearingFromTo(const KnownPlace& from, const KnownPlace& to) noexcept;

/// Whether ZRGreatCircleDistance of the coordinates is at least `meters` (1 or more). Computes the distance only where
/// a bound does not decide.
bool isAtLeast(const KnownPlace& from, const KnownPlace& to, double meters) noexcept;

}  // namespace geometry

#endif
