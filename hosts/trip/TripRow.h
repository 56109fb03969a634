// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_TRIPROW_H
#define ZRCORE_HOSTS_TRIP_TRIPROW_H

#include <ZRCore/ZRGeometry.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace trip {

/// One fix as it came out of the location manager, beside what went in.
struct TripRow {
  std::uint64_t index = 0;  ///< 0-based number of the fix within the replay
  std::uint64_t line = 0;   ///< 1-based line of the recording; 0: none
  std::optional<double> secondsSince1970;
  CLLocationCoordinate2D coordinate{};
  std::optional<double> altitudeMeters;
  std::optional<double> accuracyMeters;
  std::optional<double> speedMetersPerSecond;  ///< as the receiver gave it
  std::optional<double> courseDegrees;         ///< as the receiver gave it
  double smoothSpeedMetersPerSecond = 0.0;
  double smoothCourseDegrees = 0.0;
  bool significant = false;                       ///< far enough from the last significant place
  bool jump = false;                              ///< implausibly fast
  bool stable = false;                            ///< the receiver has settled
  std::optional<CLLocationCoordinate2D> snapped;  ///< what the client with the snap filter got
  bool isEstimated = false;                       ///< by dead reckoning or a simulator, as far as the source tells
};

/// What the filter did to a trip, from before to after.
struct FilterEffect {
  struct Quantiles {
    double median, percentile90;
  };

  std::optional<double> topRawSpeed, topSmoothedSpeed;  ///< metres per second
  /// By how much the course turns from fix to fix, in degrees from 0 to 180, while moving above 1 m/s: the raw one,
  /// from place to place, and the smoothed one, of the same fixes.
  std::optional<Quantiles> rawTurn, smoothedTurn;
  std::uint64_t turns = 0;  ///< how many they are
};

/// What is known at the end.
struct TripSummary {
  std::string source;  ///< the recording's file name without folders; "-" for standard input
  std::string format;  ///< as readers::formatName says it
  std::string filter;  ///< "measured" or "documented"
  std::uint64_t fixes = 0;
  std::uint64_t significant = 0;
  std::uint64_t jumps = 0;
  std::uint64_t stableFixes = 0;
  std::uint64_t fixesWithAccuracy = 0, fixesWithSpeed = 0;  ///< reported, or completed on request
  std::uint64_t faults = 0;                                 ///< places in the recording where something was dropped
  std::uint64_t warnings = 0;                               ///< places where something was odd but kept
  std::optional<double> firstSecondsSince1970, lastSecondsSince1970;  ///< the earliest and the latest
  double distanceMeters = 0.0;                                        ///< along all fixes
  double significantDistanceMeters = 0.0;                             ///< along the smoothed track
  FilterEffect effect;
  std::map<std::string, std::uint64_t> deliveredByClient;  ///< client name -> fixes delivered to it
  /// Whether the options --assume-accuracy and --derive-speed were there to be given, and were not.
  bool couldAssumeAccuracy = false, couldDeriveSpeed = false;
};

/// Seconds between the earliest and the latest time; nothing when no time is known.
inline std::optional<double> durationSeconds(const TripSummary& summary) {
  if (!summary.firstSecondsSince1970 || !summary.lastSecondsSince1970) return std::nullopt;
  return *summary.lastSecondsSince1970 - *summary.firstSecondsSince1970;
}

/// Something that is written while a trip is replayed. Bounded memory, whatever the length of the trip.
class TripOutput {
 public:
  virtual ~TripOutput() = default;
  virtual void row(const TripRow& row) = 0;
  virtual void finish(const TripSummary& summary) = 0;
  /// Whether another row surely fits, with all that `finish` adds, into files as long as this process may write them.
  virtual bool hasRoom() const { return true; }
};

}  // namespace trip

#endif
