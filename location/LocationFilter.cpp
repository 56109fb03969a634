// SPDX-License-Identifier: Apache-2.0
#include "LocationFilter.h"

#include <ZRCore/ZRGeometryAdditions.h>

#include <cmath>
#include <numbers>
#include <numeric>

namespace {

constexpr double kAccuracyLimitMeters = 100.0;
constexpr unsigned kStabilityRun = 3;
constexpr double kMovementLimitMetersPerSecond = 54.0;
constexpr unsigned kForcedAcceptCount = 2;
constexpr double kSignificantDistanceMeters = 8.0;

/// A sieve that spares most fixes the trigonometry: no way is longer than that along the meridian and then as far as if
/// the parallel were the equator. The thousandth keeps rounding out of it.
bool isSurelyWithin(CLLocationCoordinate2D from, CLLocationCoordinate2D to, double meters) {
  const double degrees = std::fabs(to.latitude - from.latitude) + std::fabs(to.longitude - from.longitude);
  return degrees * std::numbers::pi / 180.0 * EarthRadius < 0.999 * meters;
}

}  // namespace

void LocationFilter::updateStability(double horizontalAccuracyMeters) {
  if (!(horizontalAccuracyMeters > 0.0)) return;
  if (horizontalAccuracyMeters <= kAccuracyLimitMeters) {
    state_.__badLocationCount = 0;
    if (++state_.__goodLocationCount >= kStabilityRun) state_.__gpsStable = true;
  } else {
    state_.__goodLocationCount = 0;
    if (++state_.__badLocationCount >= kStabilityRun) state_.__gpsStable = false;
  }
}

ZRFilteredFix LocationFilter::judged(const Reading& fix, JumpSigns signs) {
  bool isJump = fix.isMarked;
  if (isImplausibleJump(fix, signs)) {
    isJump = true;
    ++state_.__rejectCount;
  }
  chooseGuidanceLocation(fix, isJump);
  const geometry::KnownPlace place = geometry::knownPlace(fix.coordinate);
  ZRFilteredFix result;
  result.exceedsMovementLimit = isJump;
  result.significantChange = isSignificant(place, isJump);
  result.smoothCourse = smoothCourse(place);
  result.smoothSpeed = smoothSpeed(fix.speed, isJump);
  return result;
}

void LocationFilter::updateDynamicProperties(ZRLocation& record, JumpSigns signs) {
  const ZRFilteredFix found = judged({.coordinate = record.coordinate(),
                                      .timestamp = record.timestamp(),
                                      .speed = record.speed(),
                                      .isMarked = record.exceedsMovementLimit()},
                                     signs);
  record.setExceedsMovementLimit(found.exceedsMovementLimit);
  if (found.significantChange) record.setSignificantChange(true);
  record.setSmoothCourse(found.smoothCourse);
  record.setSmoothSpeed(found.smoothSpeed);
}

void LocationFilter::lockSmoothCourse(double courseDegrees, double distanceMeters) {
  state_.__smoothCourseStartPoint = state_.__previousGuidanceLocation;
  state_.__smoothCourseLock = courseDegrees;
  state_.__smoothCourseMinDistance = distanceMeters;
}

bool LocationFilter::isImplausibleJump(const Reading& fix, JumpSigns signs) const {
  if (!state_.__gpsStable) return false;
  return fix.speed >= kMovementLimitMetersPerSecond || (signs == JumpSigns::ownSpeedAndPlace && liesTooFarAway(fix));
}

/// Without time between them, two places say nothing about a speed: undated fixes, reports of one instant.
bool LocationFilter::liesTooFarAway(const Reading& fix) const {
  const auto& guidance = state_.__previousGuidanceLocation;
  if (!guidance) return false;
  const double seconds = fix.timestamp.secondsSince1970 - guidance->timestamp.secondsSince1970;
  if (!(seconds > 0.0)) return false;
  if (isSurelyWithin(fix.coordinate, guidance->coordinate, kMovementLimitMetersPerSecond * seconds)) return false;
  return ZRGreatCircleDistance(fix.coordinate, guidance->coordinate) / seconds >= kMovementLimitMetersPerSecond;
}

void LocationFilter::chooseGuidanceLocation(const Reading& fix, bool isJump) {
  // After a run of rejections the receiver is believed after all: the third in a row is taken, and stays marked.
  if (state_.__rejectCount <= kForcedAcceptCount && isJump) return;
  state_.__previousGuidanceLocation = {fix.coordinate, fix.timestamp};
  state_.__rejectCount = 0;
}

bool LocationFilter::isSignificant(const geometry::KnownPlace& place, bool isJump) {
  auto& history = state_.__significantLocations;
  if (history.empty()) {
    history.append(place);  // where the trip begins: no movement yet, and taken even when it is marked as a jump
    return false;
  }
  if (isJump || !geometry::isAtLeast(place, history.back(), kSignificantDistanceMeters)) return false;
  history.append(place);
  return true;
}

double LocationFilter::smoothCourse(const geometry::KnownPlace& place) {
  auto& start = state_.__smoothCourseStartPoint;
  if (start && ZRGreatCircleDistance(place.coordinate, start->coordinate) < state_.__smoothCourseMinDistance) {
    return state_.__smoothCourseLock;
  }
  start.reset();
  return static_cast<double>(geometry::bearingFromTo(state_.__significantLocations.front(), place));
}

double LocationFilter::smoothSpeed(double speed, bool isJump) {
  if (!(speed >= 0.0)) return speed;  // negative or NaN: unknown, and passed on as such
  auto& history = state_.__previousSpeeds;
  if (!isJump) history.append(speed);
  if (history.empty()) return speed;  // only jumps so far: the record keeps its own speed
  return std::accumulate(history.begin(), history.end(), 0.0) / static_cast<double>(history.size());
}
