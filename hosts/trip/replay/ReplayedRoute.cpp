// SPDX-License-Identifier: Apache-2.0
#include "ReplayedRoute.h"

#include <algorithm>
#include <iterator>

#include "NearestOnLine.h"

namespace trip {

namespace {

// Half the tolerance is spent on places that are passed over because the one before them is so close (standing still
// must cost nothing), the other half on the straight line that stands for the places taken.
constexpr double kHalfToleranceMeters = ReplayedRoute::kToleranceMeters / 2.0;

// Bounds the work for each place: a straight road yields a vertex at least so often.
constexpr std::size_t kMaximumPending = 64;

bool isNear(CLLocationCoordinate2D place, CLLocationCoordinate2D start, CLLocationCoordinate2D end) {
  NearestOnLine nearest(place);
  nearest.consider(start, end);
  return nearest.meters() <= kHalfToleranceMeters;
}

}  // namespace

bool ReplayedRoute::isNearLineTo(CLLocationCoordinate2D end) const {
  return std::all_of(pending_.begin(), pending_.end(),
                     [&](CLLocationCoordinate2D passed) { return isNear(passed, vertices_.back(), end); });
}

void ReplayedRoute::append(CLLocationCoordinate2D place) {
  if (vertices_.empty()) {
    vertices_.push_back(place);
    return;
  }
  const CLLocationCoordinate2D newest = pending_.empty() ? vertices_.back() : pending_.back();
  if (isNear(place, newest, newest)) return;
  place.longitude = longitudeNear(place.longitude, newest.longitude);

  if (pending_.size() == kMaximumPending || !isNearLineTo(place)) {
    vertices_.push_back(newest);
    pending_.clear();
    if (vertices_.size() > kMaximumSegments) vertices_.pop_front();
  }
  pending_.push_back(place);
}

std::optional<CLLocationCoordinate2D> ReplayedRoute::snap(CLLocationCoordinate2D place) const {
  if (vertices_.empty()) return std::nullopt;
  NearestOnLine nearest(place);
  // The newest first: one of them is the nearest, as a rule, and the others are then told apart quickly.
  nearest.consider(vertices_.back(), pending_.empty() ? vertices_.back() : pending_.back());
  for (auto end = vertices_.rbegin(), start = std::next(end); start != vertices_.rend(); end = start++) {
    nearest.consider(*start, *end);
  }
  return nearest.place();
}

std::size_t ReplayedRoute::segmentCount() const {
  return vertices_.empty() ? 0 : vertices_.size() - 1 + (pending_.empty() ? 0 : 1);
}

}  // namespace trip
