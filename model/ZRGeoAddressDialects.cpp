// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeoAddressDialects.h>

#include <algorithm>
#include <array>

#include "DialectFields.h"
#include "DocumentedKeys.h"
#include "Text.h"

namespace {

std::string inCapitals(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char byte) { return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte; });
  return text;
}

/// "W42" for a way, however the service writes the type: "way", "W".
std::optional<std::string> openStreetMapIdentifier(DialectFields& fields) {
  const auto type = fields.text("osm_type");
  const auto number = fields.text("osm_id");
  if (!type || !number) return std::nullopt;
  const std::string letter = inCapitals(type->substr(0, 1));
  return letter == "N" || letter == "W" || letter == "R" ? std::optional(letter + *number) : std::nullopt;
}

std::optional<std::string> countryFrom(DialectFields& fields, std::string_view codeKey) {
  const auto code = fields.text(codeKey);
  auto name = fields.text("country");
  return code ? std::optional(inCapitals(*code)) : std::move(name);
}

std::optional<std::string> streetLine(const std::optional<std::string>& houseNumber,
                                      const std::optional<std::string>& street) {
  return houseNumber && street ? std::optional(*houseNumber + " " + *street) : street;
}

/// The documented quality for a type of result; nothing for the types of things that have an address.
std::optional<std::string> qualityOfType(const std::optional<std::string>& type) {
  struct Row {
    std::string_view type;
    const char* quality;
  };
  static constexpr std::array<Row, 20> kRows{{
      {"house", "address"}, {"building", "address"},   {"address", "address"},   {"street", "street"},
      {"road", "street"},   {"residential", "street"}, {"pedestrian", "street"}, {"intersection", "intersection"},
      {"postcode", "zip"},  {"postalcode", "zip"},     {"city", "city"},         {"town", "city"},
      {"village", "city"},  {"municipality", "city"},  {"localadmin", "city"},   {"county", "county"},
      {"state", "state"},   {"province", "state"},     {"region", "state"},      {"country", "country"},
  }};
  if (!type) return std::nullopt;
  const auto row = std::find_if(kRows.begin(), kRows.end(), [&](const Row& known) { return known.type == *type; });
  return row != kRows.end() ? std::optional<std::string>(row->quality) : std::nullopt;
}

void addQuality(DocumentedKeys& keys, const std::optional<std::string>& type, bool hasHouseNumber) {
  auto quality = qualityOfType(type);
  if (!quality && hasHouseNumber) quality = "address";
  keys.add("geoQuality", std::move(quality));
}

/// A result that is a street, a city and so on has that part's text as its own name.
void nameThePart(DocumentedKeys& keys, const std::optional<std::string>& type, std::optional<std::string> name) {
  struct Row {
    std::string_view type;
    const char* key;
  };
  static constexpr std::array<Row, 9> kRows{{{"street", "street"},
                                             {"road", "street"},
                                             {"locality", "neighborhood"},
                                             {"district", "neighborhood"},
                                             {"city", "city"},
                                             {"town", "city"},
                                             {"village", "city"},
                                             {"county", "county"},
                                             {"state", "state"}}};
  if (!type) return;
  const auto row = std::find_if(kRows.begin(), kRows.end(), [&](const Row& known) { return known.type == *type; });
  if (row != kRows.end() && !keys.has(row->key)) keys.add(row->key, std::move(name));
}

/// The position of a GeoJSON feature: longitude before latitude.
void addGeometry(DocumentedKeys& keys, DialectFields& feature) {
  static_cast<void>(feature.text("type"));
  DialectFields geometry = feature.inside("geometry");
  static_cast<void>(geometry.text("type"));
  const ZROHMValue* const found = geometry.value("coordinates");
  if (found == nullptr) return;
  const ZROHMArray* const numbers = found->array();
  const bool isPair = numbers != nullptr && numbers->size() >= 2;
  const auto longitude = isPair ? finiteNumber((*numbers)[0]) : std::nullopt;
  const auto latitude = isPair ? finiteNumber((*numbers)[1]) : std::nullopt;
  if (!longitude || !latitude) geometry.noteUnusable("coordinates");
  keys.addPosition(latitude, longitude);
}

/// The parts as Photon and GeocodeJSON name them.
void addNamedParts(DocumentedKeys& keys, DialectFields& parts, std::string_view countryCodeKey) {
  auto identifier = openStreetMapIdentifier(parts);
  auto ownIdentifier = parts.firstText({"id", "place_id"});
  keys.add("zrid", identifier ? std::move(identifier) : std::move(ownIdentifier));
  const auto houseNumber = parts.text("housenumber");
  keys.add("street", streetLine(houseNumber, parts.text("street")));
  keys.add("neighborhood", parts.firstText({"locality", "district"}));
  keys.add("city", parts.text("city"));
  keys.add("county", parts.text("county"));
  keys.add("state", parts.text("state"));
  keys.add("zip", parts.text("postcode"));
  keys.add("country", countryFrom(parts, countryCodeKey));
  const auto type = parts.text("type");
  addQuality(keys, type, houseNumber.has_value());
  keys.add("type", type);
  nameThePart(keys, type, parts.text("name"));
}

void readNominatim(DialectFields& result, DocumentedKeys& keys) {
  keys.addPosition(result.number("lat"), result.number("lon"));
  auto identifier = openStreetMapIdentifier(result);
  auto ownIdentifier = result.text("place_id");
  keys.add("zrid", identifier ? std::move(identifier) : std::move(ownIdentifier));
  DialectFields parts = result.inside("address");
  const auto houseNumber = parts.text("house_number");
  keys.add("street", streetLine(houseNumber, parts.firstText({"road", "pedestrian", "footway", "cycleway", "path"})));
  keys.add("neighborhood", parts.firstText({"neighbourhood", "quarter", "suburb", "borough"}));
  keys.add("city", parts.firstText({"city", "town", "village", "municipality", "hamlet"}));
  keys.add("county", parts.text("county"));
  keys.add("state", parts.firstText({"state", "province", "region"}));
  keys.add("zip", parts.text("postcode"));
  keys.add("country", countryFrom(parts, "country_code"));
  const auto type = result.firstText({"addresstype", "type"});
  addQuality(keys, type, houseNumber.has_value());
  keys.add("type", type);
  nameThePart(keys, type, result.text("name"));  // all there is where the parts were not asked for
}

void readPhoton(DialectFields& feature, DialectFields& properties, DocumentedKeys& keys) {
  addGeometry(keys, feature);
  addNamedParts(keys, properties, "countrycode");
}

void readPelias(DialectFields& feature, DialectFields& properties, DocumentedKeys& keys) {
  addGeometry(keys, feature);
  keys.add("zrid", properties.firstText({"gid", "id"}));
  const auto houseNumber = properties.text("housenumber");
  keys.add("street", streetLine(houseNumber, properties.text("street")));
  keys.add("neighborhood", properties.firstText({"neighbourhood", "borough"}));
  keys.add("city", properties.firstText({"locality", "localadmin"}));
  keys.add("county", properties.text("county"));
  keys.add("state", properties.text("region"));
  keys.add("zip", properties.text("postalcode"));

  auto code = properties.text("country_code");
  auto longCode = properties.text("country_a");
  auto name = properties.text("country");
  if (longCode == "USA") longCode = "US";  // the display texts know these two countries by their two letters
  if (longCode == "CAN") longCode = "CA";
  keys.add("country", code ? inCapitals(*code) : longCode ? std::move(longCode) : std::move(name));

  const auto layer = properties.text("layer");
  addQuality(keys, layer == "locality" ? "city" : layer, houseNumber.has_value());
  keys.add("type", layer);
}

void readGeocodeJSON(DialectFields& feature, DialectFields& properties, DocumentedKeys& keys) {
  addGeometry(keys, feature);
  DialectFields parts = properties.inside("geocoding");
  addNamedParts(keys, parts, "country_code");
  DialectFields levels = parts.inside("admin");
  auto state = levels.text("level4");
  auto county = levels.text("level6");
  if (!keys.has("state")) keys.add("state", std::move(state));
  if (!keys.has("county")) keys.add("county", std::move(county));
}

using FeatureReader = void (*)(DialectFields& feature, DialectFields& properties, DocumentedKeys& keys);

ZRGeoAddressReading readFeature(const ZROHMValue& result, FeatureReader read) {
  ZRGeoAddressReading reading;
  DocumentedKeys keys;
  bool hasProperties = false;
  {
    DialectFields feature(result.dictionary(), "", reading);
    DialectFields properties = feature.inside("properties");
    hasProperties = properties.exists();
    read(feature, properties, keys);
  }
  if (hasProperties) reading.address = keys.address();
  return reading;
}

ZRGeoAddressReading readNominatim(const ZROHMValue& result) {
  ZRGeoAddressReading reading;
  DocumentedKeys keys;
  {
    DialectFields fields(result.dictionary(), "", reading);
    readNominatim(fields, keys);
  }
  if (result.dictionary() != nullptr) reading.address = keys.address();
  return reading;
}

}  // namespace

ZRGeoAddressReading ZRReadGeoAddress(const ZROHMValue& result, ZRGeoAddressDialect dialect) {
  switch (dialect) {
    case ZRGeoAddressDialect::documented:
      return readDocumented(result);
    case ZRGeoAddressDialect::nominatim:
      return readNominatim(result);
    case ZRGeoAddressDialect::photon:
      return readFeature(result, readPhoton);
    case ZRGeoAddressDialect::pelias:
      return readFeature(result, readPelias);
    case ZRGeoAddressDialect::geocodeJSON:
      return readFeature(result, readGeocodeJSON);
  }
  return {};
}

std::shared_ptr<ZRGeoAddress> ZRGeoAddressFromNominatim(const ZROHMValue& result) {
  return ZRReadGeoAddress(result, ZRGeoAddressDialect::nominatim).address;
}

std::shared_ptr<ZRGeoAddress> ZRGeoAddressFromPhoton(const ZROHMValue& result) {
  return ZRReadGeoAddress(result, ZRGeoAddressDialect::photon).address;
}

std::shared_ptr<ZRGeoAddress> ZRGeoAddressFromPelias(const ZROHMValue& result) {
  return ZRReadGeoAddress(result, ZRGeoAddressDialect::pelias).address;
}

std::shared_ptr<ZRGeoAddress> ZRGeoAddressFromGeocodeJSON(const ZROHMValue& result) {
  return ZRReadGeoAddress(result, ZRGeoAddressDialect::geocodeJSON).address;
}
