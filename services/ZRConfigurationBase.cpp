// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSString_ZR.h>
#include <ZRCore/ZRConfigurationBase.h>

#include <utility>

#include "ServicesStatics.h"

const char* const ZRConfigurationGeoTrackingOnChangedNotification = "ZRConfigurationGeoTrackingOnChangedNotification";

namespace {
ConfigurationStore& store() { return servicesStatics().configurationStore; }
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
  store().fetchWithId(ZRPlatformInUse(), std::move(completion));
}

void ZRConfigurationBase::fetch(Completion completion) { fetchWithId(std::move(completion)); }

std::shared_ptr<ZRConfigurationBase> ZRConfigurationBase::configurationWithDictionary(const ZROHMValue& dictionary) {
  return configurationFromDocument(dictionary, configType());
}
