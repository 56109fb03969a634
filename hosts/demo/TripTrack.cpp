// SPDX-License-Identifier: Apache-2.0
#include "TripTrack.h"

#include <algorithm>
#include <utility>

namespace demo {

void TripTrack::add(const trip::TripRow& row) {
  const ZRMapPoint at = plane_.place(row.coordinate);
  const bool followsGap = gaps_.precede(row.secondsSince1970);
  const bool startsStroke = std::exchange(isInterrupted_, false) || followsGap;
  smoothedIsInterrupted_ = smoothedIsInterrupted_ || startsStroke;
  raw_.push_back({at, row.index, startsStroke});
  rawSeconds_.push_back(row.secondsSince1970);
  if (smoothedFixes_.takes(row)) smoothed_.push_back({at, row.index, std::exchange(smoothedIsInterrupted_, false)});
  if (row.significant) significant_.push_back({at, row.index});
  if (row.jump) jumps_.push_back({at, row.index});
}

void TripTrack::cutBackTo(std::uint64_t index) {
  for (auto* points : {&raw_, &smoothed_, &significant_, &jumps_}) {
    points->erase(std::ranges::lower_bound(*points, index, {}, &TrackPoint::index), points->end());
  }
  rawSeconds_.resize(raw_.size());
  gaps_.goOnFrom(rawSeconds_.empty() ? std::nullopt : rawSeconds_.back());
  plane_ = raw_.empty() ? trip::EndlessPlane() : trip::EndlessPlane(raw_.back().at);
  if (smoothed_.empty()) smoothedFixes_ = {};
  isInterrupted_ = raw_.empty();
  smoothedIsInterrupted_ = smoothed_.empty();
}

}  // namespace demo
