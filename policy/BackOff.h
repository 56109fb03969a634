// SPDX-License-Identifier: Apache-2.0
/// @file
/// How long to wait before trying again.
#ifndef ZRCORE_POLICY_BACKOFF_H
#define ZRCORE_POLICY_BACKOFF_H

namespace policy {

/// Waits that double from half a second to half a minute: a daemon that restarts is found at once, one that is not
/// there costs next to nothing.
class BackOff {
 public:
  static constexpr double kFirstSeconds = 0.5;
  static constexpr double kLongestSeconds = 30.0;

  /// The wait before the next attempt, seconds.
  double nextSeconds();

  /// The other side has done something useful, so the next failure is a new one. Merely accepting a connection is not
  /// useful: a peer that accepts and hangs up must not be called again and again.
  void reset() { seconds_ = kFirstSeconds; }

 private:
  double seconds_ = kFirstSeconds;
};

}  // namespace policy

#endif
