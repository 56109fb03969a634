// SPDX-License-Identifier: Apache-2.0
#include "FixCompletion.h"

#include <ZRCore/ZRGeometryAdditions.h>

#include <algorithm>
#include <limits>

namespace readers {
namespace {

constexpr double kUnknown = -1.0;
constexpr double kMetersPerHdop = 5.0;

}  // namespace

ZRPositionFix FixCompletion::complete(const SourceFix& source, std::optional<NSDate> cameAt) {
  ZRPositionFix fix;
  fix.coordinate = source.coordinate;
  fix.altitude = source.altitudeMeters.value_or(0.0);
  fix.horizontalAccuracy = horizontalAccuracyMeters(source);
  fix.verticalAccuracy = source.altitudeMeters ? source.verticalAccuracyMeters.value_or(0.0) : kUnknown;
  fix.course = source.courseDegrees.value_or(kUnknown);
  fix.speed = speedMetersPerSecond(source);
  if (source.secondsSince1970) lastTimed_ = {source.coordinate, *source.secondsSince1970};
  fix.timestamp = source.secondsSince1970 ? NSDate{*source.secondsSince1970} : cameAt.value_or(NSDate{0.0});
  return fix;
}

double FixCompletion::horizontalAccuracyMeters(const SourceFix& source) const {
  if (source.accuracyMeters) return *source.accuracyMeters;
  if (source.hdop) return std::min(*source.hdop * kMetersPerHdop, std::numeric_limits<double>::max());
  return options_.assumedAccuracyMeters.value_or(0.0);
}

double FixCompletion::speedMetersPerSecond(const SourceFix& source) const {
  if (source.speedMetersPerSecond) return *source.speedMetersPerSecond;
  if (!options_.derivesSpeed || !lastTimed_ || !source.secondsSince1970) return kUnknown;
  const double seconds = *source.secondsSince1970 - lastTimed_->secondsSince1970;
  if (!(seconds > 0.0)) return kUnknown;
  return ZRGreatCircleDistance(lastTimed_->coordinate, source.coordinate) / seconds;
}

}  // namespace readers
