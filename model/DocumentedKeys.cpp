// SPDX-License-Identifier: Apache-2.0
#include "DocumentedKeys.h"

#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZROHMRegistry.h>

#include <variant>

#include "DialectFields.h"

namespace {

/// The name of the property that takes what stands under `key`; empty when none does.
std::string_view propertyFor(std::string_view key) {
  const ZROHMClassInfo& type = ZRGeoAddress::staticClassInfo();
  const ZROHMTable* const mapping = ZROHMRegistry::table(type, ZROHMRegistry::Slot::mapping);
  const ZROHMTableEntry* const entry = mapping != nullptr ? mapping->find(key) : nullptr;
  const std::string* const mapped = entry != nullptr ? std::get_if<std::string>(entry) : nullptr;
  if (mapped != nullptr) return *mapped;
  return type.propertyNamed(key) != nullptr ? key : std::string_view();
}

bool isPosition(const ZROHMValue& value) {
  const ZROHMDictionary* const position = value.dictionary();
  if (position == nullptr) return false;
  const bool isCapital = position->contains("Lat");
  const ZROHMValue* const latitude = position->find(isCapital ? "Lat" : "lat");
  const ZROHMValue* const longitude = position->find(isCapital ? "Lng" : "lng");
  return latitude != nullptr && longitude != nullptr && finiteNumber(*latitude) && finiteNumber(*longitude);
}

bool isUsable(const ZROHMValue& value, std::string_view property) {
  if (value.isNull()) return true;
  if (property == "coordinate" || property == "displayCoordinate") return isPosition(value);
  return value.string() != nullptr || (value.isNumber() && property != "geoQuality");
}

}  // namespace

ZRGeoAddressReading readDocumented(const ZROHMValue& result) {
  ZRGeoAddressReading reading;
  const ZROHMDictionary* const entries = result.dictionary();
  if (entries == nullptr) return reading;
  for (const auto& [key, value] : *entries) {
    const std::string_view property = propertyFor(key);
    if (property.empty()) {
      reading.unknownKeys.push_back(key);
      continue;
    }
    reading.hasKnownKeys = true;
    if (!isUsable(value, property)) reading.unusableKeys.push_back(key);
  }
  reading.address = ZRGeoAddress::geoAddressFromDictionary(*entries);
  return reading;
}
