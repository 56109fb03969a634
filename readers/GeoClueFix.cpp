// SPDX-License-Identifier: Apache-2.0
#include "GeoClueFix.h"

#include <ZRCore/ZRGeometry.h>

#include <cmath>

namespace readers {
namespace {

constexpr double kNotMeasured = -1.0;

bool isMeasure(double value) { return std::isfinite(value) && value >= 0.0; }

}  // namespace

std::optional<ZRPositionFix> fixOf(const GeoClueLocation& location, NSDate now) {
  ZRPositionFix fix;
  fix.coordinate = {location.latitude, location.longitude};
  if (!CLLocationCoordinate2DIsValid(fix.coordinate)) return std::nullopt;
  fix.horizontalAccuracy = isMeasure(location.accuracyMeters) ? location.accuracyMeters : 0.0;
  const bool hasAltitude =
      std::isfinite(location.altitudeMeters) && location.altitudeMeters != std::numeric_limits<double>::lowest();
  fix.altitude = hasAltitude ? location.altitudeMeters : 0.0;
  fix.verticalAccuracy = hasAltitude ? 0.0 : kNotMeasured;
  fix.speed = isMeasure(location.speedMetersPerSecond) ? location.speedMetersPerSecond : kNotMeasured;
  const bool hasCourse = isMeasure(location.headingDegrees) && location.headingDegrees <= 360.0;
  fix.course = hasCourse ? std::fmod(location.headingDegrees, 360.0) : kNotMeasured;
  const double seconds = static_cast<double>(location.seconds) + static_cast<double>(location.microseconds) / 1e6;
  fix.timestamp = seconds > 0.0 ? NSDate{seconds} : now;
  return fix;
}

}  // namespace readers
