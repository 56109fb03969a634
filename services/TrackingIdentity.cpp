// SPDX-License-Identifier: Apache-2.0
#include "TrackingIdentity.h"

#include <text/ASCII.h>

#include <utility>

namespace {

constexpr const char* kStoredVendorId = "currentZRTrackingVendorIdentifier";

std::optional<std::string> upperCase(std::optional<std::string> uuid) {
  return uuid ? std::optional(text::upperCase(*std::move(uuid))) : std::nullopt;
}

}  // namespace

std::optional<std::string> advertisingIdentifier(const ZRPlatform& platform) {
  return upperCase(platform.device->advertisingIdentifier());
}

void TrackingIdentity::setUseAdvertiserID(bool use) {
  const std::lock_guard lock(mutex_);
  useAdvertiserID_ = use;
}

bool TrackingIdentity::useAdvertiserID() const {
  const std::lock_guard lock(mutex_);
  return useAdvertiserID_;
}

void TrackingIdentity::setStaticVendorId(std::optional<std::string> identifier) {
  const std::lock_guard lock(mutex_);
  __vendorId = std::move(identifier);
}

std::optional<std::string> TrackingIdentity::staticVendorId() const {
  const std::lock_guard lock(mutex_);
  return __vendorId;
}

TrackingIdentity::DeviceId TrackingIdentity::deviceId(const ZRPlatform& platform) {
  if (platform.device->isAdvertisingTrackingEnabled() && useAdvertiserID()) {
    if (auto identifier = advertisingIdentifier(platform)) return {Kind::advertising, *std::move(identifier)};
  }
  if (auto identifier = vendorId(platform)) return {Kind::vendor, *std::move(identifier)};
  return {Kind::unknown, "0"};
}

std::optional<std::string> TrackingIdentity::vendorId(const ZRPlatform& platform) {
  const std::lock_guard lock(mutex_);
  if (__vendorId) return __vendorId;
  __vendorId = platform.userDefaults->stringForKey(kStoredVendorId);
  const auto current = upperCase(platform.device->identifierForVendor());
  if (current && current != __vendorId) {
    __vendorId = current;
    platform.userDefaults->setStringForKey(*current, kStoredVendorId);
    platform.userDefaults->synchronize();
  }
  return __vendorId;
}
