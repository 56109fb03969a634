// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_TURNDETECTOR_H
#define ZRCORE_HOSTS_TRIP_REPLAY_TURNDETECTOR_H

#include <deque>
#include <optional>

namespace trip {

enum class Turn { left, right, around };

/// Finds turns in the smoothed courses of a trip's significant fixes: where the course differs by more than 40 degrees
/// from that of one of the last few. A bend of the road that takes longer is none.
class TurnDetector {
 public:
  static constexpr double kTurnDegrees = 40.0, kAroundDegrees = 150.0;
  static constexpr std::size_t kFixes = 6;  ///< over which a turn may be spread, some 50 metres

  /// @param courseDegrees  any number of whole turns more or less; what is not finite is passed over
  /// @return the turn that ends with this fix; after one, the courses before are forgotten.
  std::optional<Turn> add(double courseDegrees);

 private:
  std::deque<double> courses_;
};

}  // namespace trip

#endif
