// SPDX-License-Identifier: Apache-2.0
#include "Timeline.h"

#include <algorithm>

namespace demo {

void Timeline::add(std::optional<double> secondsSince1970) {
  if (!secondsSince1970) {
    if (!dueSeconds_.empty()) untimedSeconds_ += 1.0;
    dueSeconds_.push_back(dueSeconds_.empty() ? 0.0 : dueSeconds_.back() + 1.0);
  } else {
    dueSeconds_.push_back(pace_.secondsAfterFirst(*secondsSince1970) + untimedSeconds_);
  }
}

std::size_t Timeline::countDueAt(double seconds) const {
  return static_cast<std::size_t>(std::ranges::upper_bound(dueSeconds_, seconds) - dueSeconds_.begin());
}

}  // namespace demo
