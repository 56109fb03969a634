// SPDX-License-Identifier: Apache-2.0
/// @file
/// The host application's settings.
#ifndef ZRCORE_ZRUSERDEFAULTS_H
#define ZRCORE_ZRUSERDEFAULTS_H

#include <ZRCore/ZRExport.h>

#include <optional>
#include <string>
#include <string_view>

/// Texts under keys that outlive the process. Any thread.
class ZR_EXPORT ZRUserDefaults {
 public:
  virtual ~ZRUserDefaults();
  /// The text under `key`, as last set in this process or stored by an earlier one; absent when there is none.
  virtual std::optional<std::string> stringForKey(std::string_view key) const = 0;
  /// Any bytes may be set. They may reach the store later.
  virtual void setStringForKey(std::string_view value, std::string_view key) = 0;
  /// Brings what was set to the store, before it returns.
  /// @return whether everything is stored.
  virtual bool synchronize() = 0;
};

#endif
