// SPDX-License-Identifier: Apache-2.0
/// @file
/// From what a source reports to what the framework expects of a position fix.
#ifndef ZRCORE_READERS_FIXCOMPLETION_H
#define ZRCORE_READERS_FIXCOMPLETION_H

#include <ZRCore/CLLocation.h>
#include <ZRCore/ZRGeometry.h>

#include <optional>

#include "FixReader.h"

namespace readers {

/// Completes the fixes of one source, in their order. One thread at a time.
class FixCompletion {
 public:
  struct Options {
    std::optional<double> assumedAccuracyMeters;  ///< for fixes whose source hints at no accuracy, >= 0
    bool derivesSpeed = false;                    ///< from the distance since the previous fix, where none is reported
  };

  explicit FixCompletion(const Options& options) : options_(options) {}

  /// The fix with the platform's value for each thing that the source did not report:
  /// - horizontal accuracy: the receiver's estimate; else HDOP times 5 m, the error of a plain receiver under a good
  ///   sky; else the assumed accuracy; else 0, as a location has that is made from latitude and longitude alone.
  ///   Negative it never is: that would call the coordinate invalid.
  /// - altitude: 0 with a vertical accuracy of -1, "invalid". An altitude that is known, but not how well, gets a
  ///   vertical accuracy of 0 for the same reason.
  /// - speed: -1, "unknown"; with `derivesSpeed` the great-circle distance from the previous timed fix over the time
  ///   since, if that is more than 0 seconds.
  /// - course: -1, "unknown".
  /// - time: that at which it came, of a live source; else 0 seconds since 1970, "unknown". A time that was reported is
  ///   kept, also when it goes backwards.
  /// @param cameAt  of a live source
  ZRPositionFix complete(const SourceFix& source, std::optional<NSDate> cameAt = std::nullopt);

 private:
  struct Passage {
    CLLocationCoordinate2D coordinate;
    double secondsSince1970;
  };

  double horizontalAccuracyMeters(const SourceFix& source) const;
  double speedMetersPerSecond(const SourceFix& source) const;

  Options options_;
  std::optional<Passage> lastTimed_;
};

}  // namespace readers

#endif
