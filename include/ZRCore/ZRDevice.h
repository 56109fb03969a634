// SPDX-License-Identifier: Apache-2.0
/// @file
/// The device and its system.
#ifndef ZRCORE_ZRDEVICE_H
#define ZRCORE_ZRDEVICE_H

#include <ZRCore/ZRExport.h>

#include <optional>
#include <string>

/// What the device says about itself; a system that has no such thing answers absent. Any thread.
class ZR_EXPORT ZRDevice {
 public:
  virtual ~ZRDevice();
  /// Whether the user lets applications track them.
  virtual bool isAdvertisingTrackingEnabled() const = 0;
  /// The advertising identifier, a UUID as text.
  virtual std::optional<std::string> advertisingIdentifier() const = 0;
  /// The device's identifier for all applications of this vendor, a UUID as text.
  virtual std::optional<std::string> identifierForVendor() const = 0;
  /// The version of the operating system, such as "12" or "10.2".
  virtual std::optional<std::string> systemVersion() const = 0;
  /// The machine's model, as the system control "hw.machine" or its like reports it.
  virtual std::optional<std::string> machineIdentifier() const = 0;
  /// The language code of the system's locale (not the user's), such as "en"; absent for a locale without a language.
  virtual std::optional<std::string> systemLanguageCode() const = 0;
};

#endif
