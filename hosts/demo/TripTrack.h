// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TRIPTRACK_H
#define ZRCORE_HOSTS_DEMO_TRIPTRACK_H

#include <trip/SmoothedTrack.h>
#include <trip/TimeGaps.h>
#include <trip/TripRow.h>
#include <trip/drawing/EndlessPlane.h>
#include <trip/drawing/Envelope.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "TrackPoint.h"

namespace demo {

/// What has been heard of a trip so far, in the map plane. No line leads over a gap in time.
class TripTrack {
 public:
  /// The next fix, whose `index` is greater than those before.
  void add(const trip::TripRow& row);
  /// Something is missing here: the next fix starts a stroke of its own.
  void interrupt() { isInterrupted_ = true; }
  /// Forgets the fixes from number `index` on.
  void cutBackTo(std::uint64_t index);

  const std::vector<TrackPoint>& raw() const { return raw_; }
  const std::vector<TrackPoint>& smoothed() const { return smoothed_; }
  const std::vector<TrackPoint>& significant() const { return significant_; }
  const std::vector<TrackPoint>& jumps() const { return jumps_; }

 private:
  std::vector<TrackPoint> raw_, smoothed_, significant_, jumps_;
  std::vector<std::optional<double>> rawSeconds_;  ///< since 1970, of the fixes in raw_
  trip::TimeGaps gaps_;
  trip::EndlessPlane plane_;
  trip::SmoothedTrack smoothedFixes_;
  bool isInterrupted_ = true;
  bool smoothedIsInterrupted_ = true;
};

}  // namespace demo

#endif
