// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_PACER_H
#define ZRCORE_HOSTS_TRIP_REPLAY_PACER_H

#include <policy/ReplayPace.h>

#include <functional>
#include <optional>
#include <utility>

namespace trip {

/// Real time and the waiting for it. Tests bring their own.
class Waiter {
 public:
  virtual ~Waiter() = default;
  /// Seconds on a clock that never goes back; only differences mean something.
  virtual double nowSeconds() = 0;
  /// Returns after `seconds`, or earlier when waiting has lost its point.
  virtual void wait(double seconds) = 0;
};

/// The system's time.
class SystemWaiter final : public Waiter {
 public:
  /// @param whileWaiting  called several times a second during a wait; true ends it
  explicit SystemWaiter(std::function<bool()> whileWaiting) : whileWaiting_(std::move(whileWaiting)) {}
  double nowSeconds() override;
  void wait(double seconds) override;
  /// What takes the place of sleeping: a loop that goes on meanwhile.
  void sleepBy(std::function<void(double seconds)> sleep) { sleep_ = std::move(sleep); }

 private:
  std::function<bool()> whileWaiting_;
  std::function<void(double)> sleep_;
};

/// Holds a replay to a multiple of the speed at which it was recorded.
class Pacer {
 public:
  /// @param rate  recorded seconds per real second, > 0; nullopt: as fast as possible
  Pacer(std::optional<double> rate, Waiter& waiter) : waiter_(waiter) {
    if (rate) pace_.emplace(*rate);
  }

  /// Returns when the fix measured at `secondsSince1970` is due. The first one is due at once; so is one without a
  /// time, or with an earlier one than the fix before it.
  void waitUntilDue(std::optional<double> secondsSince1970);

 private:
  std::optional<policy::ReplayPace> pace_;
  Waiter& waiter_;
  std::optional<double> startSeconds_;  ///< on the waiter's clock
};

}  // namespace trip

#endif
