// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_NEARESTONLINE_H
#define ZRCORE_HOSTS_TRIP_REPLAY_NEARESTONLINE_H

#include <ZRCore/ZRGeometry.h>

#include <limits>
#include <optional>

namespace trip {

/// The longitude that names the same meridian as `longitude` and lies within half a turn of `reference`. A line whose
/// longitudes each lie near their predecessor crosses the antimeridian without a jump.
double longitudeNear(double longitude, double reference);

/// Looks for the place on a line that is nearest to a given one, segment by segment.
class NearestOnLine {
 public:
  /// @param place  degrees
  explicit NearestOnLine(CLLocationCoordinate2D place);

  /// The next segment. The longitude of `end` lies near that of `start`, and may lie beyond +-180.
  void consider(CLLocationCoordinate2D start, CLLocationCoordinate2D end);

  /// Whether a segment within these bounds could be nearer than what was found so far.
  bool mayImproveWithin(CLLocationCoordinate2D southWest, CLLocationCoordinate2D northEast) const;

  /// The nearest place, its longitude in [-180, 180]; nullopt before the first segment.
  std::optional<CLLocationCoordinate2D> place() const;

  /// How far away that is, on a plane that touches the Earth at the given place; infinite before the first segment.
  double meters() const;

 private:
  double squaredDegrees(double latitudeDifference, double longitudeDifference) const;

  CLLocationCoordinate2D from_;
  double longitudeScale_;
  CLLocationCoordinate2D nearest_{};
  double nearestSquaredDegrees_ = std::numeric_limits<double>::infinity();
};

}  // namespace trip

#endif
