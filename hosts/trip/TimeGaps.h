// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_TIMEGAPS_H
#define ZRCORE_HOSTS_TRIP_TIMEGAPS_H

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace trip {

/// Finds where fixes are missing in a trip, so that no line is drawn over what nobody saw: a pause far longer than the
/// recording's own rhythm, and than any hiccup. A time that goes back as far is one, too: there another trip begins.
class TimeGaps {
 public:
  /// Whether there is a gap before this fix. Ask once for each fix, in order; one without a time has none before it.
  bool precede(std::optional<double> secondsSince1970) {
    if (!secondsSince1970 || !std::isfinite(*secondsSince1970)) return false;
    const auto last = std::exchange(lastSeconds_, secondsSince1970);
    if (!last) return false;
    const double interval = *secondsSince1970 - *last;
    if (usualInterval_ && std::fabs(interval) > std::max(kLongestHiccup, 5.0 * *usualInterval_)) return true;
    if (interval >= 0.0) usualInterval_ = usualInterval_ ? 0.9 * *usualInterval_ + 0.1 * interval : interval;
    return false;
  }

  /// The next fix follows one of this time, and not the one that was asked about last. The rhythm stays.
  void goOnFrom(std::optional<double> secondsSince1970) { lastSeconds_ = secondsSince1970; }

 private:
  static constexpr double kLongestHiccup = 10.0;  // seconds

  std::optional<double> lastSeconds_;
  std::optional<double> usualInterval_;  ///< seconds
};

}  // namespace trip

#endif
