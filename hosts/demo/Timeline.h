// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TIMELINE_H
#define ZRCORE_HOSTS_DEMO_TIMELINE_H

#include <policy/ReplayPace.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace demo {

/// When each fix of a recording is due, in seconds from the start of the playback at the recorded speed.
///
/// Long pauses of the recording are cut, and a fix whose time goes backwards follows at once, as in every replay; one
/// whose time is missing follows its predecessor after a second.
class Timeline {
 public:
  void add(std::optional<double> secondsSince1970);

  std::size_t size() const { return dueSeconds_.size(); }
  double durationSeconds() const { return dueSeconds_.empty() ? 0.0 : dueSeconds_.back(); }
  /// How many fixes are due at `seconds`; the first one is at 0.
  std::size_t countDueAt(double seconds) const;

 private:
  std::vector<double> dueSeconds_;  ///< never falling
  policy::ReplayPace pace_{1.0};
  double untimedSeconds_ = 0.0;  ///< taken by fixes without a time
};

}  // namespace demo

#endif
