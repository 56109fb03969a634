// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatformFake.h>

ZRFakeLocationManager::ZRFakeLocationManager() = default;
ZRFakeLocationManager::~ZRFakeLocationManager() = default;
ZRFakePositioning::~ZRFakePositioning() = default;
ZRFakeBundle::~ZRFakeBundle() = default;
ZRFakeLog::~ZRFakeLog() = default;
ZRFakeClock::~ZRFakeClock() = default;

void ZRFakeLocationManager::startUpdatingLocation() {
  calls.emplace_back("startUpdatingLocation");
  updatesLocation_ = true;
}

void ZRFakeLocationManager::stopUpdatingLocation() {
  calls.emplace_back("stopUpdatingLocation");
  updatesLocation_ = false;
}

void ZRFakeLocationManager::startUpdatingHeading() {
  calls.emplace_back("startUpdatingHeading");
  updatesHeading_ = true;
}

void ZRFakeLocationManager::stopUpdatingHeading() {
  calls.emplace_back("stopUpdatingHeading");
  updatesHeading_ = false;
}

void ZRFakeLocationManager::requestWhenInUseAuthorization() { calls.emplace_back("requestWhenInUseAuthorization"); }

void ZRFakeLocationManager::requestAlwaysAuthorization() { calls.emplace_back("requestAlwaysAuthorization"); }

std::shared_ptr<const CLLocation> ZRFakeLocationManager::location() const { return location_; }

template <class Callback>
std::shared_ptr<Callback> ZRFakeLocationManager::answering() const {
  return std::dynamic_pointer_cast<Callback>(delegate().lock());
}

void ZRFakeLocationManager::deliver(const CLLocations& locations) {
  if (!updatesLocation_) return;
  if (!locations.empty()) location_ = locations.back();
  if (const auto callback = answering<CLDidUpdateLocations>()) {
    callback->locationManagerDidUpdateLocations(*this, locations);
  }
}

void ZRFakeLocationManager::deliver(const CLHeading& heading) {
  if (!updatesHeading_) return;
  if (const auto callback = answering<CLDidUpdateHeading>()) callback->locationManagerDidUpdateHeading(*this, heading);
}

void ZRFakeLocationManager::fail(const NSError& error) {
  if (const auto callback = answering<CLDidFailWithError>()) callback->locationManagerDidFailWithError(*this, error);
}

void ZRFakeLocationManager::changeAuthorization(CLAuthorizationStatus status) {
  if (const auto callback = answering<CLDidChangeAuthorizationStatus>()) {
    callback->locationManagerDidChangeAuthorizationStatus(*this, status);
  }
}

std::shared_ptr<CLLocationManager> ZRFakePositioning::makeLocationManager() {
  made.push_back(std::make_shared<ZRFakeLocationManager>());
  return made.back();
}
