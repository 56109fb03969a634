// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MODEL_DIALECTFIELDS_H
#define ZRCORE_MODEL_DIALECTFIELDS_H

#include <ZRCore/ZRGeoAddressDialects.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One object of a service's result. It remembers which entries it was asked for: the others are the unknown ones, so
/// that no dialect has to list its keys twice.
class DialectFields {
 public:
  /// @param entries  null: an object without entries. Outlives this.
  /// @param path     what key paths begin with: empty, or ending in a dot.
  /// @param reading  where unknown and unusable keys are noted.
  DialectFields(const ZROHMDictionary* entries, std::string path, ZRGeoAddressReading& reading);
  ~DialectFields();  ///< notes what was not asked for
  DialectFields(const DialectFields&) = delete;
  DialectFields& operator=(const DialectFields&) = delete;

  /// A text or a number (no boolean) as text; nothing when it is missing, empty or of another kind.
  std::optional<std::string> text(std::string_view key);
  /// The first of these that there is. All of them are known.
  std::optional<std::string> firstText(std::initializer_list<std::string_view> keys);
  /// A finite number, or a text that is one from its first character to its last.
  std::optional<double> number(std::string_view key);
  /// The entry as it stands; null when it is missing or null itself.
  const ZROHMValue* value(std::string_view key);
  /// The object under that key, without entries when there is none.
  DialectFields inside(std::string_view key);
  /// Notes that the value under that key is of a wrong kind.
  void noteUnusable(std::string_view key);

  bool exists() const { return entries_ != nullptr; }

 private:
  std::string pathOf(std::string_view key) const;

  const ZROHMDictionary* entries_;
  std::string path_;
  ZRGeoAddressReading& reading_;
  std::vector<bool> asked_;
};

/// A finite number, or a text that is one as a whole.
std::optional<double> finiteNumber(const ZROHMValue& value);

#endif
