// SPDX-License-Identifier: Apache-2.0
#include "ApplicationLife.h"

namespace policy {

std::optional<ApplicationLife::Change> ApplicationLife::set(Reason reason, bool holds) {
  const bool was = !reasons_.empty();
  if (holds) {
    reasons_.insert(reason);
  } else {
    reasons_.erase(reason);
  }
  if (was == !reasons_.empty()) return std::nullopt;
  return was ? Change::willEnterForeground : Change::didEnterBackground;
}

void WindowPresence::setWindowSeen(bool isSeen, double nowSeconds) {
  if (isSeen) {
    unseenSinceSeconds_.reset();
  } else if (!unseenSinceSeconds_) {
    unseenSinceSeconds_ = nowSeconds;
  }
}

bool WindowPresence::isAway(double nowSeconds) const {
  return unseenSinceSeconds_ && nowSeconds - *unseenSinceSeconds_ >= patienceSeconds_;
}

std::optional<double> WindowPresence::secondsUntilAway(double nowSeconds) const {
  if (!unseenSinceSeconds_ || isAway(nowSeconds)) return std::nullopt;
  return *unseenSinceSeconds_ + patienceSeconds_ - nowSeconds;
}

}  // namespace policy
