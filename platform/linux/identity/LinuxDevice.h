// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_LINUXDEVICE_H
#define ZRCORE_LINUX_LINUXDEVICE_H

#include <ZRCore/ZRDevice.h>

#include <string>

/// What the system's files say about it, read once. There is no advertising identifier, and no tracking.
class LinuxDevice final : public ZRDevice {
 public:
  /// @param rootFolder   under which the system's files stand: "/".
  /// @param application  the application's identifier, without which there is none for its vendor.
  LinuxDevice(const std::string& rootFolder, const std::optional<std::string>& application);

  bool isAdvertisingTrackingEnabled() const override { return false; }
  std::optional<std::string> advertisingIdentifier() const override { return std::nullopt; }
  /// The machine's identifier (etc/machine-id), which should not leave the machine, hashed for this application: an
  /// HMAC-SHA256 under it, made a UUID of version 4. Nobody can compute one application's from another's.
  std::optional<std::string> identifierForVendor() const override { return vendor_; }
  /// VERSION_ID of os-release; absent on systems that roll on.
  std::optional<std::string> systemVersion() const override { return version_; }
  /// The processor's architecture, such as "x86_64".
  std::optional<std::string> machineIdentifier() const override { return machine_; }
  /// The language of LANG in the system's settings (etc/locale.conf, etc/default/locale), not that of the environment.
  std::optional<std::string> systemLanguageCode() const override { return language_; }

 private:
  std::optional<std::string> vendor_, version_, machine_, language_;
};

#endif
