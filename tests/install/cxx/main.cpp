// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRCore.h>

int main() {
  const auto manager = ZRLocationManager::init();
  const auto fix = CLLocation::initWithLatitudeLongitude(52.5, 13.4);
  const auto smoothed = manager->smoothLocationsWithLocations({fix});
  return smoothed.at(0)->coordinate().latitude == 52.5 && ZRLocationManager::instanceCount() == 1 ? 0 : 1;
}
