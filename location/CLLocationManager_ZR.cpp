// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLocationManager.h>

#include "LocationStatics.h"

namespace CLLocationManager_ZR {

std::shared_ptr<CLLocationManager> sharedInstanceMadeBy(
    const std::function<std::shared_ptr<CLLocationManager>()>& make) {
  LocationStatics& shared = locationStatics();
  std::call_once(shared.sharedInstanceOnce, [&] { shared.sharedInstance = make(); });
  return shared.sharedInstance;
}

std::shared_ptr<const CLLocation> lastLocation() { return sharedInstance()->location(); }

bool locationIsAuthorized() {
  const CLAuthorizationStatus status = CLLocationManager::authorizationStatus();
  return status == CLAuthorizationStatus::authorizedAlways || status == CLAuthorizationStatus::authorizedWhenInUse;
}

bool shouldUpdateInBackground() { return locationStatics().__shouldUpdateInBackground; }

void setShouldUpdateInBackground(bool should) { locationStatics().__shouldUpdateInBackground = should; }

}  // namespace CLLocationManager_ZR
