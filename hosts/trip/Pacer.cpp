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
    std::this_thread::sleep_for(std::chrono::duration<double>(std::min(left, 0.05)));
  }
}

void Pacer::waitUntilDue(std::optional<double> secondsSince1970) {
  if (!rate_ || !secondsSince1970) return;
  if (previousSecondsSince1970_) {
    dueSeconds_ += std::clamp(*secondsSince1970 - *previousSecondsSince1970_, 0.0, kLongestPauseSeconds) / *rate_;
  } else {
    dueSeconds_ = waiter_.nowSeconds();
  }
  previousSecondsSince1970_ = secondsSince1970;
  const double left = dueSeconds_ - waiter_.nowSeconds();
  if (left > 0.0) waiter_.wait(left);
}

}  // namespace trip
