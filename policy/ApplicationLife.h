// SPDX-License-Identifier: Apache-2.0
/// @file
/// When an application is in the background.
#ifndef ZRCORE_POLICY_APPLICATIONLIFE_H
#define ZRCORE_POLICY_APPLICATIONLIFE_H

#include <optional>
#include <set>

namespace policy {

/// The application is in the background while anything holds it there: a stopped terminal, a sleeping system, no window
/// to be seen. One change is reported once, however many reasons there are for it.
class ApplicationLife {
 public:
  enum class Reason { terminalStopped, systemSleeps, noWindow };
  enum class Change { didEnterBackground, willEnterForeground };

  std::optional<Change> set(Reason reason, bool holds);

 private:
  std::set<Reason> reasons_;
};

/// Whether an application's windows put it into the background: when none has been active or visible for a while. A
/// window that opens as another one closes, a switch between two of them, is not the background.
class WindowPresence {
 public:
  explicit WindowPresence(double patienceSeconds) : patienceSeconds_(patienceSeconds) {}

  /// The windows as they are now.
  /// @param nowSeconds  on a clock that never goes back; only differences mean something
  void setWindowSeen(bool isSeen, double nowSeconds);

  /// Whether there is no window, and has not been for long enough.
  bool isAway(double nowSeconds) const;

  /// How long until `isAway` may change by itself; nullopt: not before the windows do.
  std::optional<double> secondsUntilAway(double nowSeconds) const;

 private:
  double patienceSeconds_;
  std::optional<double> unseenSinceSeconds_;
};

}  // namespace policy

#endif
