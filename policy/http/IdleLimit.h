// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_HTTP_IDLELIMIT_H
#define ZRCORE_POLICY_HTTP_IDLELIMIT_H

#include <ZRCore/NSDate.h>

#include <optional>
#include <utility>

namespace policy {

/// Decides when a transfer has been silent for too long. A timer of the loop calls it, and it measures the silence with
/// the platform's clock. Timer and clock may disagree, because the clock may be set meanwhile.
class IdleLimit {
 public:
  /// @param limitSeconds  the silence that is allowed; zero, a negative number or NaN counts as 60
  IdleLimit(double limitSeconds, NSDate now)
      : limitSeconds_(limitSeconds > 0 ? limitSeconds : 60.0), heard_(now), asked_(now), waitSeconds_(limitSeconds_) {}

  /// Bytes have arrived: the silence starts anew.
  void hear(NSDate now) { heard_ = now; }

  /// To be called when the last returned wait is over; the first wait is the limit itself.
  /// @return the seconds to wait before the next call; nothing when the limit is reached. Before that it returns 0
  ///         once, so that a loop that was blocked reads first what has arrived meanwhile. If the clock went backwards,
  ///         or advanced more than twice the wait, somebody has set it: the silence is then counted from now.
  std::optional<double> secondsToWait(NSDate now) {
    const double passedSeconds = now.secondsSince1970 - asked_.secondsSince1970;
    const bool wasSet = !(passedSeconds >= 0.0 && passedSeconds <= 2.0 * waitSeconds_ + 1.0);
    if (wasSet || now < heard_) heard_ = now;
    asked_ = now;
    waitSeconds_ = limitSeconds_ - (now.secondsSince1970 - heard_.secondsSince1970);
    if (waitSeconds_ > 0.0) {
      isLastCall_ = false;
      return waitSeconds_;
    }
    waitSeconds_ = 0.0;
    return std::exchange(isLastCall_, true) ? std::nullopt : std::optional(0.0);
  }

  double limitSeconds() const { return limitSeconds_; }

 private:
  double limitSeconds_;
  NSDate heard_, asked_;
  double waitSeconds_;
  bool isLastCall_ = false;
};

}  // namespace policy

#endif
