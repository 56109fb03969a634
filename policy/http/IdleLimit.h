// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_HTTP_IDLELIMIT_H
#define ZRCORE_LINUX_HTTP_IDLELIMIT_H

#include <ZRCore/NSDate.h>

#include <optional>
#include <utility>

/// Judges how long nothing has come. It measures with the clock, between calls that a loop's timer makes: the two need
/// not agree, as a receiver's clock is set when it first hears the time.
class IdleLimit {
 public:
  /// @param limitSeconds  of silence. What is no positive number counts as 60.
  IdleLimit(double limitSeconds, NSDate now)
      : limitSeconds_(limitSeconds > 0 ? limitSeconds : 60.0), heard_(now), asked_(now), waitSeconds_(limitSeconds_) {}

  /// Something came.
  void hear(NSDate now) { heard_ = now; }

  /// What to do when the wait that was last told is over; the first was the limit.
  /// @return how many seconds to wait before the next call; nothing when the limit is reached. 0 comes before that,
  ///         once: a loop that was held up sees first what has arrived meanwhile. A clock that went backwards, or more
  ///         than twice as far as was waited, was set: then the silence is counted from now.
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

#endif
