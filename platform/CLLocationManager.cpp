// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/CLLocationManager.h>
#include <ZRCore/ZRPlatform.h>

#include <utility>

CLLocationManagerDelegate::~CLLocationManagerDelegate() = default;
CLDidUpdateLocations::~CLDidUpdateLocations() = default;
CLDidUpdateHeading::~CLDidUpdateHeading() = default;
CLDidFailWithError::~CLDidFailWithError() = default;
CLDidChangeAuthorizationStatus::~CLDidChangeAuthorizationStatus() = default;
CLAuthorizationRequests::~CLAuthorizationRequests() = default;

std::shared_ptr<CLLocationManager> CLLocationManager::init() {
  return ZRPlatformInUse().positioning->makeLocationManager();
}

CLAuthorizationStatus CLLocationManager::authorizationStatus() {
  return ZRPlatformInUse().positioning->authorizationStatus();
}

CLLocationManager::CLLocationManager() = default;
CLLocationManager::~CLLocationManager() = default;

void CLLocationManager::setDelegate(std::weak_ptr<CLLocationManagerDelegate> delegate) {
  delegate_ = std::move(delegate);
}

std::shared_ptr<const CLLocation> CLLocationManager::location() const { return nullptr; }

void CLLocationManager::setActivityType(CLActivityType type) { activityType_ = type; }
