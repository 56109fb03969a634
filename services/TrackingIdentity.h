// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_SERVICES_TRACKINGIDENTITY_H
#define ZRCORE_SERVICES_TRACKINGIDENTITY_H

#include <ZRCore/ZRPlatform.h>

#include <mutex>
#include <optional>
#include <string>

/// The rules behind ZRTrackingIdentity's identifiers, without statics. Any thread.
class TrackingIdentity {
 public:
  /// 0 the advertising identifier, 1 the vendor's, 2 none; the numbers are sent to services.
  enum class Kind : unsigned { advertising = 0, vendor = 1, unknown = 2 };
  struct DeviceId {
    Kind kind;
    std::string text;
  };

  void setUseAdvertiserID(bool use);
  bool useAdvertiserID() const;
  void setStaticVendorId(std::optional<std::string> identifier);
  std::optional<std::string> staticVendorId() const;

  DeviceId deviceId(const ZRPlatform& platform);
  std::optional<std::string> vendorId(const ZRPlatform& platform);

 private:
  mutable std::mutex mutex_;
  bool useAdvertiserID_ = true;
  std::optional<std::string> __vendorId;
};

/// The advertising identifier in upper case, as UUIDs are written here.
std::optional<std::string> advertisingIdentifier(const ZRPlatform& platform);

#endif
