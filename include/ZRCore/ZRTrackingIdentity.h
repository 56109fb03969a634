// SPDX-License-Identifier: Apache-2.0
/// @file
/// The identity that is sent with requests: of the device and of the host application.
#ifndef ZRCORE_ZRTRACKINGIDENTITY_H
#define ZRCORE_ZRTRACKINGIDENTITY_H

#include <ZRCore/ZRExport.h>

#include <optional>
#include <string>
#include <string_view>

/// Any thread.
class ZR_EXPORT ZRTrackingIdentity {
 public:
  /// Whether the advertising identifier may be used at all; true at first. It is used only where the user allows it.
  static void setUseAdvertiserID(bool use);
  static bool useAdvertiserID();

  /// Which identifier stands for the device: 0 the advertising identifier, 1 the vendor's, 2 neither is available. The
  /// vendor's is looked at only when the advertising identifier is not used.
  static unsigned deviceIdType();
  /// "ad", "vendor" or "unknown".
  static std::string deviceIdTypeName();
  /// The identifier of that type; "0" when neither is available.
  static std::string uniqueDeviceID();

  /// The advertising identifier in upper case, whether or not it may be used.
  static std::optional<std::string> adId();

  /// The vendor identifier: what the device reports, in upper case, or else what it last reported to an earlier
  /// process. One that differs from the stored one is stored at once. Once there is one, it stays for the rest of the
  /// process.
  static std::optional<std::string> vendorId();
  /// Fixes the vendor identifier; absent: it is worked out again at the next use.
  static void setStaticVendorId(std::optional<std::string> identifier);
  /// The vendor identifier as far as it is fixed.
  static std::optional<std::string> staticVendorId();

  /// The host application's bundle identifier.
  static std::optional<std::string> applicationID();
  /// The host application's "CFBundleVersion"; "0" when it has none.
  static std::string applicationVersion();

  /// The machine's model as the system reports it.
  static std::optional<std::string> platform();
  /// The machine's model for people: the same.
  static std::optional<std::string> deviceName();
  /// `identifier` unchanged: no table of names is kept.
  static std::string modelNameForModelIdentifier(std::string_view identifier);
  /// "i" and the operating system's version, such as "i9.3"; "unknown" when the system reports none.
  static std::string osVersion();
};

#endif
