// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_TIMEWINDOW_H
#define ZRCORE_HOSTS_TRIP_REPLAY_TIMEWINDOW_H

#include <optional>
#include <string_view>

namespace trip {

/// An end of the part of a recording that is replayed, as the user gave it.
struct TimeBound {
  enum class Kind {
    instant,     ///< seconds since 1970
    timeOfDay,   ///< seconds after midnight (UTC) of the day on which the recording starts
    sinceStart,  ///< seconds after the recording's first time
  };
  Kind kind = Kind::instant;
  double seconds = 0.0;
};

/// Reads ISO 8601 ("2026-05-09T09:30:00Z"), a time of day in UTC ("09:30" or "09:30:00") or seconds after the start
/// ("+90"). nullopt for anything else.
std::optional<TimeBound> parseTimeBound(std::string_view text);

/// The part of a recording between two times, both inclusive. What the bounds mean is settled by the first time that
/// the recording reports.
class TimeWindow {
 public:
  TimeWindow() = default;
  TimeWindow(std::optional<TimeBound> from, std::optional<TimeBound> to) : from_(from), to_(to) {}

  /// Asked for each fix, in order. A fix without a time goes with the one before it; those before the first time belong
  /// to a window that has no beginning.
  bool contains(std::optional<double> secondsSince1970);

  /// Whether the window ends before it begins. False until the recording reported a time, if it depends on that.
  bool isReversed() const;

 private:
  std::optional<double> resolved(const std::optional<TimeBound>& bound) const;

  std::optional<TimeBound> from_, to_;
  std::optional<double> startSecondsSince1970_;
  bool containedLast_ = false;
};

}  // namespace trip

#endif
