// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLocationBatchFilter.h>

#include "LocationFilter.h"

struct ZRLocationBatchFilter::State {
  LocationFilter filter;
  bool filtersMeasuredValues;
};

ZRLocationBatchFilter::ZRLocationBatchFilter(bool filtersMeasuredValues)
    : state_(new State{{}, filtersMeasuredValues}) {}
ZRLocationBatchFilter::~ZRLocationBatchFilter() = default;
ZRLocationBatchFilter::ZRLocationBatchFilter(ZRLocationBatchFilter&&) noexcept = default;
ZRLocationBatchFilter& ZRLocationBatchFilter::operator=(ZRLocationBatchFilter&&) noexcept = default;

void ZRLocationBatchFilter::filter(const ZRPositionFix* fixes, ZRFilteredFix* results, std::size_t count) {
  const bool measured = state_->filtersMeasuredValues;
  const auto signs = measured ? LocationFilter::JumpSigns::ownSpeedAndPlace : LocationFilter::JumpSigns::ownSpeed;
  for (std::size_t i = 0; i < count; ++i) {
    const ZRPositionFix& fix = fixes[i];
    state_->filter.updateStability(measured ? fix.horizontalAccuracy : 0.0);
    results[i] = state_->filter.judged(
        {.coordinate = fix.coordinate, .timestamp = fix.timestamp, .speed = measured ? fix.speed : 0.0}, signs);
  }
}

bool ZRLocationBatchFilter::receiverIsStable() const { return state_->filter.isStable(); }

void ZRLocationBatchFilter::lockSmoothCourseToCourseUntilMoved(double courseDegrees, double distanceMeters) {
  state_->filter.lockSmoothCourse(courseDegrees, distanceMeters);
}

void ZRLocationBatchFilter::reset() { state_->filter = {}; }
