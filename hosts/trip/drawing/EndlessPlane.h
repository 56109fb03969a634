// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_ENDLESSPLANE_H
#define ZRCORE_HOSTS_TRIP_DRAWING_ENDLESSPLANE_H

#include <ZRCore/ZRGeometry.h>

#include <optional>

namespace trip {

/// Puts the places of a track into a map plane that goes on past the antimeridian, so that the track stays connected.
class EndlessPlane {
 public:
  EndlessPlane() = default;
  /// Goes on from a place that another one has given.
  explicit EndlessPlane(ZRMapPoint last);

  /// The next place of the track, in degrees.
  ZRMapPoint place(CLLocationCoordinate2D coordinate);

 private:
  double worldsEast_ = 0.0;  ///< how many times the track went around the world, in map points
  std::optional<double> lastWorldX_;
};

}  // namespace trip

#endif
