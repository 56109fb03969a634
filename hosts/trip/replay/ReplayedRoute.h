// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_REPLAYEDROUTE_H
#define ZRCORE_HOSTS_TRIP_REPLAY_REPLAYEDROUTE_H

#include <ZRCore/ZRGeometry.h>

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

namespace trip {

/// The way that was come so far, simplified as it grows, and places snapped to its recent part. Bounded memory.
class ReplayedRoute {
 public:
  static constexpr double kToleranceMeters = 15.0;
  static constexpr std::size_t kMaximumSegments = 256;

  /// The next place that was reached, in degrees. It lies within kToleranceMeters of the simplified way from then on,
  /// until that part of the way is older than the last kMaximumSegments segments.
  void append(CLLocationCoordinate2D place);

  /// The place on the kept part of the way that is nearest to `place`, however far away; nullopt before the first
  /// place.
  std::optional<CLLocationCoordinate2D> snap(CLLocationCoordinate2D place) const;

  std::size_t segmentCount() const;

 private:
  bool isNearLineTo(CLLocationCoordinate2D end) const;

  std::deque<CLLocationCoordinate2D> vertices_;  ///< final; each longitude near its predecessor's
  std::vector<CLLocationCoordinate2D>
      pending_;  ///< reached since the last vertex, near the straight line to the newest
};

}  // namespace trip

#endif
