// SPDX-License-Identifier: Apache-2.0
#include "Pacer.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace trip {

double SystemWaiter::nowSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void SystemWaiter::wait(double seconds) {
  const double end = nowSeconds() + seconds;
  while (!whileWaiting_()) {
    const double left = end - nowSeconds();
    if (left <= 0.0) return;
    const double nap = std::min(left, 0.05);
    sleep_ ? sleep_(nap) : std::this_thread::sleep_for(std::chrono::duration<double>(nap));
  }
}

void Pacer::waitUntilDue(std::optional<double> secondsSince1970) {
  if (!pace_ || !secondsSince1970) return;
  if (!startSeconds_) startSeconds_ = waiter_.nowSeconds();
  const double left = *startSeconds_ + pace_->secondsAfterFirst(*secondsSince1970) - waiter_.nowSeconds();
  if (left > 0.0) waiter_.wait(left);
}

}  // namespace trip
