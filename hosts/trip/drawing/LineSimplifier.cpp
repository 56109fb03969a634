// SPDX-License-Identifier: Apache-2.0
#include "LineSimplifier.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace trip {

LineSimplifier::LineSimplifier(std::size_t maxPoints, double firstTolerance)
    : maxPoints_(maxPoints), tolerance_(firstTolerance) {
  points_.reserve(maxPoints_);
}

void LineSimplifier::add(ZRMapPoint point, bool startsStroke) {
  if (points_.size() == maxPoints_) makeRoom();
  points_.push_back({point, startsStroke || points_.empty()});
}

void LineSimplifier::makeRoom() {
  if (errorBound_ == 0.0) errorBound_ = tolerance_;
  simplify(settled_);
  if (points_.size() > maxPoints_ / 4 * 3) {
    while (points_.size() > maxPoints_ / 2) {
      tolerance_ *= 2.0;
      errorBound_ += tolerance_;
      simplify(0);
    }
  }
  settled_ = points_.size() - 1;
}

/// Otherwise a recording of nothing but gaps could not be simplified.
void LineSimplifier::closeInvisibleGaps(std::size_t first) {
  for (std::size_t i = first + 1; i < points_.size(); ++i) {
    const ZRMapPoint from = points_[i - 1].at, to = points_[i].at;
    if (!(std::hypot(to.x - from.x, to.y - from.y) > tolerance_)) points_[i].startsStroke = false;
  }
}

void LineSimplifier::simplify(std::size_t first) {
  closeInvisibleGaps(first);
  std::vector<bool> isKept(points_.size(), false);
  std::fill(isKept.begin(), isKept.begin() + static_cast<std::ptrdiff_t>(first), true);
  // A stack of its own, no recursion: lines may be hostile.
  std::vector<std::pair<std::size_t, std::size_t>> stretches;
  for (std::size_t from = first; from < points_.size();) {
    std::size_t to = from;
    while (to + 1 < points_.size() && !points_[to + 1].startsStroke) ++to;
    isKept[from] = isKept[to] = true;
    stretches.push_back({from, to});
    from = to + 1;
  }
  while (!stretches.empty()) {
    const auto [from, to] = stretches.back();
    stretches.pop_back();
    double farthest = tolerance_;
    std::size_t farthestIndex = from;
    for (std::size_t i = from + 1; i < to; ++i) {
      const double distance = distanceFromStretch(points_[i].at, points_[from].at, points_[to].at);
      if (distance > farthest) {
        farthest = distance;
        farthestIndex = i;
      }
    }
    if (farthestIndex == from) continue;
    isKept[farthestIndex] = true;
    stretches.push_back({from, farthestIndex});
    stretches.push_back({farthestIndex, to});
  }
  std::size_t kept = 0;
  for (std::size_t i = 0; i < points_.size(); ++i) {
    if (isKept[i]) points_[kept++] = points_[i];
  }
  points_.resize(kept);
}

double distanceFromStretch(ZRMapPoint point, ZRMapPoint from, ZRMapPoint to) {
  const double dx = to.x - from.x, dy = to.y - from.y;
  const double lengthSquared = dx * dx + dy * dy;
  double along = 0.0;
  if (lengthSquared > 0.0) {
    along = std::clamp(((point.x - from.x) * dx + (point.y - from.y) * dy) / lengthSquared, 0.0, 1.0);
  }
  return std::hypot(point.x - (from.x + along * dx), point.y - (from.y + along * dy));
}

}  // namespace trip
