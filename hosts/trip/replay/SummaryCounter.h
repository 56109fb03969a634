// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_SUMMARYCOUNTER_H
#define ZRCORE_HOSTS_TRIP_REPLAY_SUMMARYCOUNTER_H

#include <readers/FixReader.h>
#include <trip/SmoothedTrack.h>
#include <trip/TripRow.h>

#include "FilterEffectCounter.h"

namespace trip {

/// Sums a trip up while it goes by.
class SummaryCounter {
 public:
  /// @param start  the fields that are known beforehand
  explicit SummaryCounter(TripSummary start) : summary_(std::move(start)) {}

  void row(const TripRow& row);
  void remark(const readers::Remark& remark);

  /// So far, without the filter's effect.
  const TripSummary& counts() const { return summary_; }
  /// All of it.
  TripSummary summary() const;

 private:
  TripSummary summary_;
  FilterEffectCounter effect_;
  SmoothedTrack smoothedTrack_;
  std::optional<CLLocationCoordinate2D> previous_, previousSmoothed_;
};

}  // namespace trip

#endif
