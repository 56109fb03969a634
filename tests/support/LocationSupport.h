// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_LOCATIONSUPPORT_H
#define ZRCORE_TESTS_SUPPORT_LOCATIONSUPPORT_H

#include <ZRCore/ZRLocationManager.h>

#include <functional>
#include <memory>
#include <vector>

inline std::shared_ptr<CLLocation> fixAt(double latitude, double longitude, double accuracyMeters = 5.0,
                                         double speedMetersPerSecond = 10.0) {
  return CLLocation::initWithFix(
      {.coordinate = {latitude, longitude}, .horizontalAccuracy = accuracyMeters, .speed = speedMetersPerSecond});
}

/// A coordinate that lies `meters` north of the equator, by the distance that locations measure.
inline double latitudeNorth(double meters) { return meters / EarthRadius * 57.29577951308232; }

/// A delegate that answers every callback and remembers what it was told.
class Client : public ZRDidUpdateLocations, public ZRDidUpdateHeading, public ZRDidFailWithError {
 public:
  void locationManagerDidUpdateLocations(ZRLocationManager& manager, const ZRLocations& locations) override {
    managers.push_back(&manager);
    batches.push_back(locations);
    if (onLocations) onLocations();
  }
  void locationManagerDidUpdateHeading(ZRLocationManager& manager, const CLHeading& heading) override {
    managers.push_back(&manager);
    headings.push_back(heading);
  }
  void locationManagerDidFailWithError(ZRLocationManager& manager, const NSError& error) override {
    managers.push_back(&manager);
    errors.push_back(error);
  }

  std::function<void()> onLocations;
  std::vector<ZRLocations> batches;
  std::vector<CLHeading> headings;
  std::vector<NSError> errors;
  std::vector<const ZRLocationManager*> managers;
};

/// A delegate that answers nothing.
class SilentClient : public CLLocationManagerDelegate {};

#endif
