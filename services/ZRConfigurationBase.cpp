// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSString_ZR.h>
#include <ZRCore/ZRConfigurationBase.h>

#include <utility>

#include "ServicesStatics.h"

const char* const ZRConfigurationGeoTrackingOnChangedNotification = "ZRConfigurationGeoTrackingOnChangedNotification";

namespace {

ConfigurationStore& store() { return servicesStatics().configurationStore; }

std::shared_ptr<ZRConfigurationBase> faceOf(const ConfigurationAddresses& addresses) {
  auto face = std::make_shared<ZRConfigurationBase>();
  face->setGeofenceBaseURL(addresses.geofence);
  face->setTrafficBaseURL(addresses.traffic);
  face->setGeocodeBaseURL(addresses.geocode);
  face->setDirectionsBaseURL(addresses.directions);
  face->setGuidanceBaseURL(addresses.guidance);
  return face;
}

/// What is fetched is one object for all who fetch it, as long as it is cached.
std::shared_ptr<ZRConfigurationBase> sharedFaceOf(const std::shared_ptr<const ConfigurationAddresses>& addresses) {
  ConfigurationFace& last = servicesStatics().configurationFace;
  const std::lock_guard lock(last.mutex);
  if (last.addresses != addresses) {
    last.face = addresses ? faceOf(*addresses) : nullptr;
    last.addresses = addresses;
  }
  return last.face;
}

}  // namespace

ZRConfigurationBase::~ZRConfigurationBase() = default;

void ZRConfigurationBase::initialize() { store().initialize(); }

void ZRConfigurationBase::setConfigurationService(std::int64_t service) { store().setConfigurationService(service); }
std::int64_t ZRConfigurationBase::configurationService() { return store().configurationService(); }

void ZRConfigurationBase::setConfigType(std::int64_t type) { store().setConfigType(type); }
std::int64_t ZRConfigurationBase::configType() { return store().configType(); }

void ZRConfigurationBase::setProductKey(std::optional<std::string> key) { store().setProductKey(std::move(key)); }
std::optional<std::string> ZRConfigurationBase::productKey() { return store().productKey(); }

std::optional<std::string> ZRConfigurationBase::productKeyUrlEscaped() {
  return NSString_ZR::urlQueryParameterEscaped(productKey());
}

std::string ZRConfigurationBase::mapConfigUrl() { return store().mapConfigUrl(); }

void ZRConfigurationBase::fetchWithId(Completion completion) {
  const auto toldFace = [completion = std::move(completion)](const auto& addresses) {
    const auto face = sharedFaceOf(addresses);
    if (completion) completion(face);
  };
  store().fetchWithId(ZRPlatformInUse(), toldFace);
}

void ZRConfigurationBase::fetch(Completion completion) { fetchWithId(std::move(completion)); }

std::shared_ptr<ZRConfigurationBase> ZRConfigurationBase::configurationWithDictionary(const ZROHMValue& dictionary) {
  const auto addresses = addressesFromDocument(dictionary, configType());
  return addresses ? faceOf(*addresses) : nullptr;
}
