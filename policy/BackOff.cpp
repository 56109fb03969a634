// SPDX-License-Identifier: Apache-2.0
#include "BackOff.h"

#include <algorithm>

namespace policy {

double BackOff::nextSeconds() {
  const double seconds = seconds_;
  seconds_ = std::min(2.0 * seconds_, kLongestSeconds);
  return seconds;
}

}  // namespace policy
