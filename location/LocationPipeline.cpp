// SPDX-License-Identifier: Apache-2.0
// From a batch of platform fixes to the clients' delegates.
#include <ZRCore/ZRLocationManager.h>

#include <utility>

#include "LocationStatics.h"

namespace {

/// A record of a platform fix: with nothing of its own filled in, or, when the host asked for it, with its
/// measurements.
std::shared_ptr<ZRLocation> recordOf(const CLLocation& location) {
  auto record = ZRLocation::initWithCLLocation(location);
  if (locationStatics().filtersMeasuredValues) {
    const ZRPositionFix& measured = location.fix();
    record->setAltitude(measured.altitude);
    record->setHorizontalAccuracy(measured.horizontalAccuracy);
    record->setVerticalAccuracy(measured.verticalAccuracy);
    record->setSpeed(measured.speed);
    record->setCourse(measured.course);
  }
  return record;
}

}  // namespace

bool ZRLocationManager::filtersMeasuredValues() { return locationStatics().filtersMeasuredValues; }

void ZRLocationManager::setFiltersMeasuredValues(bool filters) { locationStatics().filtersMeasuredValues = filters; }

bool ZRLocationManager::receiverIsStable() { return locationStatics().filter.isStable(); }

void ZRLocationManager::resetFilter() { locationStatics().filter = {}; }

void ZRLocationManager::lockSmoothCourseToCourseUntilMoved(double courseDegrees, double distanceMeters) {
  locationStatics().filter.lockSmoothCourse(courseDegrees, distanceMeters);
}

ZRLocations ZRLocationManager::smoothLocationsWithLocations(const CLLocations& locations) {
  ZRLocations smoothed;
  smoothed.reserve(locations.size());
  for (const auto& location : locations) {
    auto record = recordOf(*location);
    updateStability(*record);
    updateDynamicProperties(record);
    smoothed.push_back(std::move(record));
  }
  return smoothed;
}

ZRLocations ZRLocationManager::snapLocationsWithLocations(const ZRLocations& locations) {
  if (locations.empty()) return {};
  auto snapped = snapToRoute(recordOf(*locations.back()));
  if (!snapped) return {};
  return {std::move(snapped)};
}

std::shared_ptr<ZRLocation> ZRLocationManager::snapToRoute(const std::shared_ptr<ZRLocation>& location) {
  const SnapFilter filter = snapFilter_;  // a copy: the filter may replace itself while it runs
  return filter ? filter(location) : location;
}

void ZRLocationManager::updateStability(ZRLocation& location) {
  locationStatics().filter.updateStability(location.horizontalAccuracy());
}

void ZRLocationManager::updateDynamicProperties(const std::shared_ptr<ZRLocation>& location) {
  auto& statics = locationStatics();
  statics.filter.updateDynamicProperties(*location, statics.filtersMeasuredValues
                                                        ? LocationFilter::JumpSigns::ownSpeedAndPlace
                                                        : LocationFilter::JumpSigns::ownSpeed);
}

void ZRLocationManager::locationManagerDidUpdateLocations(CLLocationManager&, const CLLocations& locations) {
  const ZRLocations smoothed = smoothLocationsWithLocations(locations);
  locationStatics().__instanceList.forEach([&](const ClientNode& client) {
    if (!client.shouldUpdateLocation_) return;
    if (client.waitingDelegate != nullptr && !client.snaps_) [[likely]] {
      client.waitingDelegate->locationManagerDidUpdateLocations(*this, smoothed);
      return;
    }
    const auto delegate = client.didUpdateLocations_.lock();
    if (!delegate) return;
    if (!client.snaps_) {
      delegate->locationManagerDidUpdateLocations(*this, smoothed);
      return;
    }
    const auto manager = client.instance();
    if (!manager) return;
    const ZRLocations snapped = manager->snapLocationsWithLocations(smoothed);
    if (!snapped.empty()) delegate->locationManagerDidUpdateLocations(*this, snapped);
  });
}

void ZRLocationManager::locationManagerDidUpdateHeading(CLLocationManager&, const CLHeading& heading) {
  locationStatics().__instanceList.forEach([&](const ZRLocationManagerInstanceNode& client) {
    if (!client.shouldUpdateHeading_) return;
    if (const auto delegate = client.didUpdateHeading_.lock()) {
      delegate->locationManagerDidUpdateHeading(*this, heading);
    }
  });
}

// Errors go to every delegate that answers, whether its manager was started or not.
void ZRLocationManager::locationManagerDidFailWithError(CLLocationManager&, const NSError& error) {
  locationStatics().__instanceList.forEach([&](const ZRLocationManagerInstanceNode& client) {
    if (const auto delegate = client.didFailWithError_.lock()) delegate->locationManagerDidFailWithError(*this, error);
  });
}

// Nothing follows from a change: who may not use positions learns it by an error.
void ZRLocationManager::locationManagerDidChangeAuthorizationStatus(CLLocationManager&, CLAuthorizationStatus) {
  static_cast<void>(CLLocationManager_ZR::locationIsAuthorized());
}
