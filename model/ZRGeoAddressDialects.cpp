// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeoAddressDialects.h>
#include <text/ASCII.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "DialectFields.h"
#include "DocumentedKeys.h"

namespace {

/// "W42" for a way, however the service writes the type: "way", "W".
std::optional<std::string> openStreetMapIdentifier(DialectFields& fields) {
  const auto type = fields.text("osm_type");
  const auto number = fields.text("osm_id");
  if (!type || !number) return std::nullopt;
  const std::string letter = text::upperCase(type->substr(0, 1));
  return letter == "N" || letter == "W" || letter == "R" ? std::optional(letter + *number) : std::nullopt;
}

std::optional<std::string> countryFrom(DialectFields& fields, std::string_view codeKey) {
  const auto code = fields.text(codeKey);
  auto name = fields.text("country");
  return code ? std::optional(text::upperCase(*code)) : std::move(name);
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
  static constexpr std::array<Row, 14> kRows{{{"street", "street"},
                                              {"road", "street"},
                                              {"locality", "neighborhood"},
                                              {"district", "neighborhood"},
                                              {"city", "city"},
                                              {"town", "city"},
                                              {"village", "city"},
                                              {"hamlet", "city"},
                                              {"municipality", "city"},
                                              {"localadmin", "city"},
                                              {"county", "county"},
                                              {"state", "state"},
                                              {"province", "state"},
                                              {"region", "state"}}};
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
  const auto type = parts.firstText({"type", "osm_value"});
  addQuality(keys, type, houseNumber.has_value());
  keys.add("type", type);
  nameThePart(keys, type, parts.text("name"));
}

/// "IL" of "US-IL"; nothing of "JP-13", whose second half tells nobody anything.
std::optional<std::string> lettersOfStateCode(const std::optional<std::string>& code) {
  const std::size_t dash = code ? code->find('-') : std::string::npos;
  if (dash == std::string::npos) return std::nullopt;
  const std::string letters = code->substr(dash + 1);
  const bool isWord = !letters.empty() && std::none_of(letters.begin(), letters.end(), text::isDigit);
  return isWord ? std::optional(letters) : std::nullopt;
}

/// The state of a Nominatim result. A city that is a state itself (Berlin) has the code alone.
std::optional<std::string> stateOf(DialectFields& parts, bool hasCity) {
  auto name = parts.firstText({"state", "province", "region"});
  auto code = parts.text("ISO3166-2-lvl4");
  auto letters = hasCity ? lettersOfStateCode(code) : std::nullopt;
  return letters ? std::move(letters) : name ? std::move(name) : hasCity ? std::move(code) : std::nullopt;
}

std::optional<std::string> nameOf(DialectFields& result) {
  auto name = result.text("name");
  auto wholeAddress = result.text("display_name");
  if (!name && wholeAddress) wholeAddress->resize(std::min(wholeAddress->find(", "), wholeAddress->size()));
  return name ? std::move(name) : std::move(wholeAddress);
}

void readNominatimObject(DialectFields& result, DocumentedKeys& keys) {
  auto identifier = openStreetMapIdentifier(result);
  auto ownIdentifier = result.text("place_id");
  keys.add("zrid", identifier ? std::move(identifier) : std::move(ownIdentifier));
  DialectFields parts = result.inside("address");
  const auto houseNumber = parts.text("house_number");
  keys.add("street", streetLine(houseNumber, parts.firstText({"road", "pedestrian", "footway", "cycleway", "path"})));
  keys.add("neighborhood", parts.firstText({"neighbourhood", "quarter", "suburb", "borough"}));
  keys.add("city", parts.firstText({"city", "town", "village", "municipality", "hamlet"}));
  keys.add("county", parts.text("county"));
  keys.add("state", stateOf(parts, keys.has("city")));
  keys.add("zip", parts.text("postcode"));
  keys.add("country", countryFrom(parts, "country_code"));
  const auto type = result.firstText({"addresstype", "type"});
  addQuality(keys, type, houseNumber.has_value());
  keys.add("type", type);
  nameThePart(keys, type, nameOf(result));  // all there is where the parts were not asked for
}

void readNominatim(DialectFields& result, DocumentedKeys& keys) {
  DialectFields properties = result.inside("properties");
  if (properties.exists()) {
    addGeometry(keys, result);
    readNominatimObject(properties, keys);
  } else {
    keys.addPosition(result.number("lat"), result.number("lon"));
    readNominatimObject(result, keys);
  }
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
  keys.add("state", properties.firstText({"region", "region_a", "macroregion"}));
  keys.add("zip", properties.text("postalcode"));

  auto code = properties.text("country_code");
  auto longCode = properties.text("country_a");
  auto name = properties.text("country");
  if (longCode == "USA") longCode = "US";  // the display texts know these two countries by their two letters
  if (longCode == "CAN") longCode = "CA";
  keys.add("country", code ? text::upperCase(*code) : longCode ? std::move(longCode) : std::move(name));

  const auto layer = properties.text("layer");
  const auto type = layer == "locality" ? "city" : layer;  // elsewhere a locality is a part of a city
  addQuality(keys, type, houseNumber.has_value());
  keys.add("type", layer);
  nameThePart(keys, type, properties.text("name"));
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

template <void (*read)(DialectFields& feature, DialectFields& properties, DocumentedKeys& keys)>
ZRGeoAddressReading readFeature(const ZROHMValue& result) {
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

/// A dialect, whole. The rows stand in the order in which a result is tried for them.
struct Dialect {
  ZRGeoAddressDialect dialect;
  std::string_view name;
  std::vector<std::string_view> recogniserKeys;
  ZRGeoAddressReading (*read)(const ZROHMValue& result);
};

using Dialects = std::array<Dialect, 5>;

const Dialects& dialects() {
  using enum ZRGeoAddressDialect;
  static const Dialects& rows = *new const Dialects{{
      {geocodeJSON, "geocodejson", {"properties.geocoding"}, readFeature<readGeocodeJSON>},
      {pelias,
       "pelias",
       {"properties.gid", "properties.layer", "properties.country_a", "properties.postalcode"},
       readFeature<readPelias>},
      {nominatim, "nominatim", {"lon", "display_name", "osm_id", "properties.display_name"}, readNominatim},
      {photon, "photon", {"properties"}, readFeature<readPhoton>},
      {documented, "documented", documentedRecogniserKeys(), readDocumented},
  }};
  return rows;
}

/// Null for a number that is not a dialect's.
const Dialect* find(ZRGeoAddressDialect dialect) {
  const auto row = std::find_if(dialects().begin(), dialects().end(),
                                [dialect](const Dialect& known) { return known.dialect == dialect; });
  return row != dialects().end() ? &*row : nullptr;
}

}  // namespace

std::span<const ZRGeoAddressDialect> ZRGeoAddressDialects() {
  static const auto all = [] {
    std::array<ZRGeoAddressDialect, std::tuple_size_v<Dialects>> found{};
    std::transform(dialects().begin(), dialects().end(), found.begin(), [](const Dialect& row) { return row.dialect; });
    return found;
  }();
  return all;
}

std::string_view ZRGeoAddressDialectName(ZRGeoAddressDialect dialect) {
  const Dialect* const row = find(dialect);
  return row != nullptr ? row->name : std::string_view();
}

std::span<const std::string_view> ZRGeoAddressDialectRecogniserKeys(ZRGeoAddressDialect dialect) {
  const Dialect* const row = find(dialect);
  return row != nullptr ? std::span(row->recogniserKeys) : std::span<const std::string_view>();
}

ZRGeoAddressReading ZRReadGeoAddress(const ZROHMValue& result, ZRGeoAddressDialect dialect) {
  const Dialect* const row = find(dialect);
  return row != nullptr ? row->read(result) : ZRGeoAddressReading();
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
