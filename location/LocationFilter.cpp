// SPDX-License-Identifier: Apache-2.0
#include "LocationFilter.h"

#include <ZRCore/ZRGeometry.hpp>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <numeric>
#include <vector>

namespace {

constexpr double kAccuracyLimitMeters = 100.0;
constexpr unsigned kStabilityRun = 3;
constexpr double kMovementLimitMetersPerSecond = 54.0;
constexpr unsigned kForcedAcceptCount = 2;
constexpr double kSignificantDistanceMeters = 8.0;
constexpr std::size_t kHistoryLength = 3;

template <class Entry>
void appendToHistory(std::vector<Entry>& history, const Entry& entry) {
  history.push_back(entry);
  while (history.size() > kHistoryLength) history.erase(history.begin());
}

/// A sieve that spares most fixes the trigonometry: no way is longer than that along the meridian and then as far as if
/// the parallel were the equator. The thousandth keeps rounding out of it.
bool isSurelyWithin(const CLLocation& a, const CLLocation& b, double meters) {
  const CLLocationCoordinate2D from = a.coordinate(), to = b.coordinate();
  const double degrees = std::fabs(to.latitude - from.latitude) + std::fabs(to.longitude - from.longitude);
  return degrees * std::numbers::pi / 180.0 * EarthRadius < 0.999 * meters;
}

}  // namespace

void LocationFilter::updateStability(const ZRLocation& location) {
  const double accuracy = location.horizontalAccuracy();
  if (!(accuracy > 0.0)) return;
  if (accuracy <= kAccuracyLimitMeters) {
    state_.__badLocationCount = 0;
    if (++state_.__goodLocationCount >= kStabilityRun) state_.__gpsStable = true;
  } else {
    state_.__goodLocationCount = 0;
    if (++state_.__badLocationCount >= kStabilityRun) state_.__gpsStable = false;
  }
}

void LocationFilter::updateDynamicProperties(const std::shared_ptr<ZRLocation>& location, JumpSigns signs) {
  markImplausibleJump(*location, signs);
  chooseGuidanceLocation(location);
  markSignificantMovement(location);
  smoothCourse(*location);
  smoothSpeed(*location);
}

void LocationFilter::lockSmoothCourse(double courseDegrees, double distanceMeters) {
  state_.__smoothCourseStartPoint = state_.__previousGuidanceLocation;
  state_.__smoothCourseLock = courseDegrees;
  state_.__smoothCourseMinDistance = distanceMeters;
}

void LocationFilter::markImplausibleJump(ZRLocation& location, JumpSigns signs) {
  if (!state_.__gpsStable) return;
  const bool isTooFast = location.speed() >= kMovementLimitMetersPerSecond;
  if (!isTooFast && !(signs == JumpSigns::ownSpeedAndPlace && liesTooFarAway(location))) return;
  location.setExceedsMovementLimit(true);
  ++state_.__rejectCount;
}

/// Without time between them, two places say nothing about a speed: undated fixes, reports of one instant.
bool LocationFilter::liesTooFarAway(const ZRLocation& location) const {
  const auto& guidance = state_.__previousGuidanceLocation;
  if (!guidance) return false;
  const double seconds = location.timestamp().secondsSince1970 - guidance->timestamp().secondsSince1970;
  if (!(seconds > 0.0) || isSurelyWithin(location, *guidance, kMovementLimitMetersPerSecond * seconds)) return false;
  return location.distanceFromLocation(*guidance) / seconds >= kMovementLimitMetersPerSecond;
}

void LocationFilter::chooseGuidanceLocation(const std::shared_ptr<ZRLocation>& location) {
  // After a run of rejections the receiver is believed after all: the third in a row is taken, and stays marked.
  if (state_.__rejectCount <= kForcedAcceptCount && location->exceedsMovementLimit()) return;
  state_.__previousGuidanceLocation = location;
  state_.__rejectCount = 0;
}

void LocationFilter::markSignificantMovement(const std::shared_ptr<ZRLocation>& location) {
  auto& history = state_.__significantLocations;
  if (history.empty()) {
    history.push_back(location);  // where the trip begins: no movement yet, and taken even when it is marked as a jump
    return;
  }
  if (location->exceedsMovementLimit()) return;
  if (!(location->distanceFromLocation(*history.back()) >= kSignificantDistanceMeters)) return;
  location->setSignificantChange(true);
  appendToHistory(history, location);
}

void LocationFilter::smoothCourse(ZRLocation& location) {
  const auto& start = state_.__smoothCourseStartPoint;
  if (start && location.distanceFromLocation(*start) < state_.__smoothCourseMinDistance) {
    location.setSmoothCourse(state_.__smoothCourseLock);
    return;
  }
  const ZRLocation& reference = *state_.__significantLocations.front();
  location.setSmoothCourse(
      static_cast<double>(ZRCoordinateUtils::bearingFromTo(reference.coordinate(), location.coordinate())));
  state_.__smoothCourseStartPoint.reset();
}

void LocationFilter::smoothSpeed(ZRLocation& location) {
  const double speed = location.speed();
  location.setSmoothSpeed(speed);
  if (!(speed >= 0.0)) return;  // negative or NaN: unknown, and passed on as such
  auto& history = state_.__previousSpeeds;
  if (!location.exceedsMovementLimit()) appendToHistory(history, speed);
  if (history.empty()) return;  // only jumps so far: the record keeps its own speed
  location.setSmoothSpeed(std::accumulate(history.begin(), history.end(), 0.0) / static_cast<double>(history.size()));
}
