// SPDX-License-Identifier: Apache-2.0
/// @file
/// When the fixes of a recording are due.
#ifndef ZRCORE_POLICY_REPLAYPACE_H
#define ZRCORE_POLICY_REPLAYPACE_H

#include <optional>

namespace policy {

/// Holds a replay to a multiple of the speed at which it was recorded.
class ReplayPace {
 public:
  /// A pause of the recording that is longer than this is cut to it: nobody waits for a night between two drives.
  static constexpr double kLongestPauseSeconds = 60.0;

  /// @param rate  recorded seconds per real second, > 0
  explicit ReplayPace(double rate) : rate_(rate) {}

  /// When the next fix, measured at `secondsSince1970`, is due: seconds after the first one. A fix without a time, or
  /// with an earlier one than the fix before it, is due with that.
  double secondsAfterFirst(std::optional<double> secondsSince1970);

 private:
  double rate_;
  std::optional<double> previousSecondsSince1970_;
  double due_ = 0.0;  ///< summed up from the start, so that no delay adds up
};

}  // namespace policy

#endif
