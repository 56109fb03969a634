// SPDX-License-Identifier: Apache-2.0
#include "DocumentedKeys.h"

#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZROHMRegistry.h>

#include <algorithm>
#include <array>
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
  ZROHMDictionary usable;
  for (const auto& [key, value] : *entries) {
    const std::string_view property = propertyFor(key);
    if (property.empty()) {
      reading.unknownKeys.push_back(key);
      continue;
    }
    reading.hasKnownKeys = true;
    if (isUsable(value, property)) {
      usable.set(key, value);
    } else {
      reading.unusableKeys.push_back(key);
    }
  }
  reading.address = ZRGeoAddress::geoAddressFromDictionary(usable);
  return reading;
}

std::vector<std::string_view> documentedRecogniserKeys() {
  static constexpr std::array<std::string_view, 9> kProperties{
      "street", "neighborhood", "city", "county", "state", "zip", "country", "coordinate", "displayCoordinate"};
  std::vector<std::string_view> keys(kProperties.begin(), kProperties.end());
  const auto* const mapping = ZROHMRegistry::table(ZRGeoAddress::staticClassInfo(), ZROHMRegistry::Slot::mapping);
  if (mapping == nullptr) return keys;
  for (const auto& [key, entry] : *mapping) {
    const auto* const property = std::get_if<std::string>(&entry);
    const bool isPart = property != nullptr && std::count(kProperties.begin(), kProperties.end(), *property) > 0;
    if (isPart) keys.push_back(key);
  }
  return keys;
}
