// SPDX-License-Identifier: Apache-2.0
#include "SummaryCounter.h"

#include <ZRCore/ZRGeometryAdditions.h>

#include <algorithm>

namespace trip {

namespace {

/// Adds the way from the previous place, if there was one, and moves on.
void addLeg(double& meters, std::optional<CLLocationCoordinate2D>& previous, CLLocationCoordinate2D place) {
  if (previous) meters += ZRGreatCircleDistance(*previous, place);
  previous = place;
}

}  // namespace

void SummaryCounter::row(const TripRow& row) {
  ++summary_.fixes;
  summary_.significant += row.significant;
  summary_.jumps += row.jump;
  summary_.stableFixes += row.stable;
  summary_.fixesWithAccuracy += row.accuracyMeters.has_value();
  summary_.fixesWithSpeed += row.speedMetersPerSecond.has_value();
  effect_.row(row);
  if (const auto seconds = row.secondsSince1970) {  // which may go back
    summary_.firstSecondsSince1970 = std::min(*seconds, summary_.firstSecondsSince1970.value_or(*seconds));
    summary_.lastSecondsSince1970 = std::max(*seconds, summary_.lastSecondsSince1970.value_or(*seconds));
  }
  addLeg(summary_.distanceMeters, previous_, row.coordinate);
  if (smoothedTrack_.takes(row)) addLeg(summary_.significantDistanceMeters, previousSmoothed_, row.coordinate);
}

TripSummary SummaryCounter::summary() const {
  TripSummary summary = summary_;
  summary.effect = effect_.effect();
  return summary;
}

void SummaryCounter::remark(const readers::Remark& remark) {
  ++(remark.severity == readers::Severity::fault ? summary_.faults : summary_.warnings);
}

}  // namespace trip
