// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_ROUTESNAPPER_H
#define ZRCORE_HOSTS_TRIP_REPLAY_ROUTESNAPPER_H

#include <ZRCore/ZRGeometry.h>

#include <optional>
#include <vector>

namespace trip {

/// Snaps places to a route that is known from the start. Immutable after its last `append`.
class RouteSnapper {
 public:
  /// The route's next vertex, in degrees.
  void append(CLLocationCoordinate2D vertex);

  bool empty() const { return vertices_.empty(); }

  /// The place on the route that is nearest to `place`, however far away; nullopt for a route without vertices. A route
  /// of one vertex is that vertex.
  std::optional<CLLocationCoordinate2D> snap(CLLocationCoordinate2D place) const;

 private:
  /// The bounds of some successive segments, so that far ones are passed over together.
  struct Bounds {
    CLLocationCoordinate2D southWest, northEast;
    void include(CLLocationCoordinate2D vertex);
  };

  std::vector<CLLocationCoordinate2D> vertices_;  ///< each longitude near its predecessor's
  std::vector<Bounds> bounds_;                    ///< of kSegmentsPerBounds segments each
};

}  // namespace trip

#endif
