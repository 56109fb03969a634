// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRTrackingIdentity.h>

#include <utility>

#include "ServicesStatics.h"

namespace {
TrackingIdentity& identity() { return servicesStatics().trackingIdentity; }
}  // namespace

void ZRTrackingIdentity::setUseAdvertiserID(bool use) { identity().setUseAdvertiserID(use); }
bool ZRTrackingIdentity::useAdvertiserID() { return identity().useAdvertiserID(); }

unsigned ZRTrackingIdentity::deviceIdType() {
  return static_cast<unsigned>(identity().deviceId(ZRPlatformInUse()).kind);
}

std::string ZRTrackingIdentity::deviceIdTypeName() {
  switch (identity().deviceId(ZRPlatformInUse()).kind) {
    case TrackingIdentity::Kind::advertising:
      return "ad";
    case TrackingIdentity::Kind::vendor:
      return "vendor";
    case TrackingIdentity::Kind::unknown:
      break;
  }
  return "unknown";
}

std::string ZRTrackingIdentity::uniqueDeviceID() { return identity().deviceId(ZRPlatformInUse()).text; }

std::optional<std::string> ZRTrackingIdentity::adId() { return advertisingIdentifier(ZRPlatformInUse()); }

std::optional<std::string> ZRTrackingIdentity::vendorId() { return identity().vendorId(ZRPlatformInUse()); }

void ZRTrackingIdentity::setStaticVendorId(std::optional<std::string> identifier) {
  identity().setStaticVendorId(std::move(identifier));
}

std::optional<std::string> ZRTrackingIdentity::staticVendorId() { return identity().staticVendorId(); }

std::optional<std::string> ZRTrackingIdentity::applicationID() { return ZRPlatformInUse().bundle->bundleIdentifier(); }

std::string ZRTrackingIdentity::applicationVersion() {
  return ZRPlatformInUse().bundle->infoStringForKey("CFBundleVersion").value_or("0");
}

std::optional<std::string> ZRTrackingIdentity::platform() { return ZRPlatformInUse().device->machineIdentifier(); }

std::optional<std::string> ZRTrackingIdentity::deviceName() {
  const auto machine = platform();
  return machine ? std::optional(modelNameForModelIdentifier(*machine)) : std::nullopt;
}

std::string ZRTrackingIdentity::modelNameForModelIdentifier(std::string_view identifier) {
  return std::string(identifier);
}

std::string ZRTrackingIdentity::osVersion() {
  const auto version = ZRPlatformInUse().device->systemVersion();
  return version ? "i" + *version : "unknown";
}
