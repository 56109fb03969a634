// SPDX-License-Identifier: Apache-2.0
#include "ReplayPace.h"

#include <algorithm>

namespace policy {

double ReplayPace::secondsAfterFirst(std::optional<double> secondsSince1970) {
  if (!secondsSince1970) return due_;
  const double passed = *secondsSince1970 - previousSecondsSince1970_.value_or(*secondsSince1970);
  due_ += std::clamp(passed, 0.0, kLongestPauseSeconds) / rate_;
  previousSecondsSince1970_ = secondsSince1970;
  return due_;
}

}  // namespace policy
