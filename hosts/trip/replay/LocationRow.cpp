// SPDX-License-Identifier: Apache-2.0
#include "LocationRow.h"

#include <ZRCore/ZRLocationManager.h>

namespace trip {

namespace {

std::optional<double> unlessNegative(double value) { return value >= 0.0 ? std::optional(value) : std::nullopt; }

}  // namespace

TripRow rowOfLocation(const ZRLocation& location) {
  const ZRPositionFix& fix = location.fix();
  TripRow row;
  if (fix.timestamp.secondsSince1970 != 0.0) row.secondsSince1970 = fix.timestamp.secondsSince1970;
  row.coordinate = location.coordinate();
  if (fix.verticalAccuracy >= 0.0) row.altitudeMeters = fix.altitude;
  if (fix.horizontalAccuracy > 0.0) row.accuracyMeters = fix.horizontalAccuracy;
  row.speedMetersPerSecond = unlessNegative(fix.speed);
  row.courseDegrees = unlessNegative(fix.course);
  row.smoothSpeedMetersPerSecond = location.smoothSpeed();
  row.smoothCourseDegrees = location.smoothCourse();
  row.significant = location.significantChange();
  row.jump = location.exceedsMovementLimit();
  row.stable = ZRLocationManager::receiverIsStable();
  return row;
}

std::shared_ptr<ZRLocation> locationMovedTo(CLLocationCoordinate2D place, const ZRLocation& location) {
  ZRPositionFix fix = location.fix();
  fix.coordinate = place;
  return ZRLocation::initWithCLLocation(*CLLocation::initWithFix(fix));
}

}  // namespace trip
