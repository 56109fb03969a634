// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_SMOOTHEDTRACK_H
#define ZRCORE_HOSTS_TRIP_SMOOTHEDTRACK_H

#include "TripRow.h"

namespace trip {

/// Which fixes the smoothed track runs through: those that the filter marks significant, with the first fix as its
/// start; jumps never.
class SmoothedTrack {
 public:
  /// Ask once for each fix, in order.
  bool takes(const TripRow& row) {
    if (row.jump || (begun_ && !row.significant)) return false;
    begun_ = true;
    return true;
  }

 private:
  bool begun_ = false;
};

}  // namespace trip

#endif
