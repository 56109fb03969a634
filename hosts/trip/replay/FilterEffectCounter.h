// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_FILTEREFFECTCOUNTER_H
#define ZRCORE_HOSTS_TRIP_REPLAY_FILTEREFFECTCOUNTER_H

#include <trip/TimeGaps.h>
#include <trip/TripRow.h>

#include <array>

namespace trip {

/// Angles from 0 to 180 degrees in bounded memory, counted to a tenth of a degree.
class AngleCounter {
 public:
  void add(double degrees);
  std::uint64_t count() const { return count_; }
  /// The least angle that `fraction` (0 to 1) of all angles do not exceed. There must be one.
  double quantileDegrees(double fraction) const;

 private:
  static constexpr double kStepsPerDegree = 10.0;

  std::array<std::uint64_t, 1801> counts_{};
  std::uint64_t count_ = 0;
};

/// Finds what the filter did to a trip, while it goes by.
class FilterEffectCounter {
 public:
  void row(const TripRow& row);
  FilterEffect effect() const;

 private:
  struct Courses {
    double raw, smoothed;  ///< degrees
  };

  void addTurn(const TripRow& row);

  FilterEffect tops_;
  AngleCounter rawTurns_, smoothedTurns_;
  TimeGaps gaps_;
  std::optional<CLLocationCoordinate2D> previousPlace_;
  std::optional<Courses> previousCourses_;
};

}  // namespace trip

#endif
