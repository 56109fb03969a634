// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/CLLocation.h>
#include <ZRCore/NSCoder.h>
#include <ZRCore/ZRGeometryAdditions.h>
#include <ZRCore/ZRPlatform.h>

#include <cstdio>

namespace {

// Distinct from the keys "lat" and "lng", which belong to ZRLocation.
constexpr const char* kLatitudeKey = "latitude";
constexpr const char* kLongitudeKey = "longitude";
constexpr const char* kAltitudeKey = "altitude";
constexpr const char* kHorizontalAccuracyKey = "horizontalAccuracy";
constexpr const char* kVerticalAccuracyKey = "verticalAccuracy";
constexpr const char* kCourseKey = "course";
constexpr const char* kSpeedKey = "speed";
constexpr const char* kTimestampKey = "timestamp";

ZRPositionFix fixFrom(const NSCoder& coder) {
  return {
      .coordinate = {coder.decodeDoubleForKey(kLatitudeKey), coder.decodeDoubleForKey(kLongitudeKey)},
      .altitude = coder.decodeDoubleForKey(kAltitudeKey),
      .horizontalAccuracy = coder.decodeDoubleForKey(kHorizontalAccuracyKey),
      .verticalAccuracy = coder.decodeDoubleForKey(kVerticalAccuracyKey),
      .course = coder.decodeDoubleForKey(kCourseKey),
      .speed = coder.decodeDoubleForKey(kSpeedKey),
      .timestamp = {coder.decodeDoubleForKey(kTimestampKey)},
  };
}

}  // namespace

std::shared_ptr<CLLocation>
CLLocation::initWithCoordinateAltitudeHorizontalAccuracyVerticalAccuracyCourseSpeedTimestamp(
    CLLocationCoordinate2D coordinate, double altitude, double horizontalAccuracy, double verticalAccuracy,
    double course, double speed, NSDate timestamp) {
  return initWithFix({coordinate, altitude, horizontalAccuracy, verticalAccuracy, course, speed, timestamp});
}

std::shared_ptr<CLLocation> CLLocation::initWithFix(const ZRPositionFix& fix) {
  struct Constructible : CLLocation {  // opens the protected constructor to make_shared: fix and count in one piece
    explicit Constructible(const ZRPositionFix& given) : CLLocation(given) {}
  };
  return std::make_shared<Constructible>(fix);
}

std::shared_ptr<CLLocation> CLLocation::initWithLatitudeLongitude(double latitude, double longitude) {
  return initWithFix({.coordinate = {latitude, longitude}, .timestamp = ZRPlatformInUse().clock->now()});
}

CLLocation::CLLocation(const ZRPositionFix& fix) : fix_(fix) {}
CLLocation::CLLocation(const NSCoder& coder) : fix_(fixFrom(coder)) {}
CLLocation::~CLLocation() = default;

double CLLocation::altitude() const { return fix_.altitude; }
double CLLocation::horizontalAccuracy() const { return fix_.horizontalAccuracy; }
double CLLocation::verticalAccuracy() const { return fix_.verticalAccuracy; }
double CLLocation::course() const { return fix_.course; }
double CLLocation::speed() const { return fix_.speed; }

double CLLocation::distanceFromLocation(const CLLocation& other) const {
  return ZRGreatCircleDistance(coordinate(), other.coordinate());
}

void CLLocation::encodeWithCoder(NSCoder& coder) const {
  coder.encodeDoubleForKey(fix_.coordinate.latitude, kLatitudeKey);
  coder.encodeDoubleForKey(fix_.coordinate.longitude, kLongitudeKey);
  coder.encodeDoubleForKey(fix_.altitude, kAltitudeKey);
  coder.encodeDoubleForKey(fix_.horizontalAccuracy, kHorizontalAccuracyKey);
  coder.encodeDoubleForKey(fix_.verticalAccuracy, kVerticalAccuracyKey);
  coder.encodeDoubleForKey(fix_.course, kCourseKey);
  coder.encodeDoubleForKey(fix_.speed, kSpeedKey);
  coder.encodeDoubleForKey(fix_.timestamp.secondsSince1970, kTimestampKey);
}

std::string CLLocation::description() const {
  char text[160];
  std::snprintf(text, sizeof text, "<%+.8f,%+.8f> +/- %.2fm (speed %.2f mps / course %.2f)", coordinate().latitude,
                coordinate().longitude, horizontalAccuracy(), speed(), course());
  return text;
}
