// SPDX-License-Identifier: Apache-2.0
/// @file
/// The host application's bundle, and what is packaged with the framework.
#ifndef ZRCORE_ZRBUNDLE_H
#define ZRCORE_ZRBUNDLE_H

#include <ZRCore/ZRExport.h>

#include <optional>
#include <string>
#include <string_view>

/// What the host application says about itself, and the framework's packaged files. Any thread.
class ZR_EXPORT ZRBundle {
 public:
  virtual ~ZRBundle();
  /// Whether the information dictionary has a value, of any kind, under `key`.
  virtual bool hasInfoValueForKey(std::string_view key) const = 0;
  /// The text under `key` in the information dictionary; absent when there is none, or a value that is not a text.
  virtual std::optional<std::string> infoStringForKey(std::string_view key) const = 0;
  /// The host application's identifier, such as "com.example.maps".
  virtual std::optional<std::string> bundleIdentifier() const = 0;
  /// The host's translation of `key`, from its default string table; absent when it has none. What stands there is the
  /// host's and may be any text.
  virtual std::optional<std::string> localizedStringForKey(std::string_view key) const = 0;
  /// The bytes of the file `name`.`type` that is packaged with the framework itself. Absent when there is no such file;
  /// no bytes when there is one that cannot be read.
  virtual std::optional<std::string> frameworkResource(std::string_view name, std::string_view type) const = 0;
};

#endif
