// SPDX-License-Identifier: Apache-2.0
#include "PlaceDocument.h"

#include <ZRCore/ZRPrintableText.h>

#include <algorithm>
#include <array>
#include <utility>
#include <variant>

namespace place {

namespace {

constexpr std::array<std::pair<std::string_view, ZRGeoAddressDialect>, 5> kNames{{
    {"documented", ZRGeoAddressDialect::documented},
    {"nominatim", ZRGeoAddressDialect::nominatim},
    {"photon", ZRGeoAddressDialect::photon},
    {"pelias", ZRGeoAddressDialect::pelias},
    {"geocodejson", ZRGeoAddressDialect::geocodeJSON},
}};

bool hasAny(const ZROHMDictionary& entries, std::initializer_list<std::string_view> keys) {
  return std::any_of(keys.begin(), keys.end(), [&entries](std::string_view key) { return entries.contains(key); });
}

/// The list of results in a document; null when the document is itself one.
const ZROHMArray* listIn(const ZROHMValue& document) {
  if (document.array() != nullptr) return document.array();
  const ZROHMDictionary* const entries = document.dictionary();
  if (entries == nullptr) return nullptr;
  for (const char* const key : {"results", "features"}) {
    const ZROHMValue* const list = entries->find(key);
    if (list != nullptr && list->array() != nullptr) return list->array();
  }
  return nullptr;
}

/// What a service says instead of a result; empty when it says nothing.
std::string serviceError(const ZROHMValue& result) {
  const ZROHMDictionary* const entries = result.dictionary();
  const ZROHMValue* error = entries != nullptr ? entries->find("error") : nullptr;
  if (error != nullptr && error->dictionary() != nullptr) error = error->dictionary()->find("message");
  return error != nullptr && error->string() != nullptr ? *error->string() : std::string();
}

/// Takes a position off the Earth away. @return whether it did.
bool dropOutOfRange(ZRGeoAddress& address) {
  bool dropped = false;
  if (!CLLocationCoordinate2DIsValid(address.coordinate())) {
    address.setCoordinate({});
    dropped = true;
  }
  if (!CLLocationCoordinate2DIsValid(address.displayCoordinate())) {
    address.setDisplayCoordinate({});
    dropped = true;
  }
  return dropped;
}

class Reader {
 public:
  explicit Reader(std::optional<ZRGeoAddressDialect> dialect) : dialect_(dialect) {}

  void read(const ZROHMValue& result) {
    ++number_;
    if (result.dictionary() == nullptr) return fault("is no object");
    const auto dialect = dialect_.value_or(detectDialect(result));
    ZRGeoAddressReading reading = ZRReadGeoAddress(result, dialect);
    if (!reading.address || !reading.hasKnownKeys) return fault(reasonForNothing(result, dialect));
    for (const std::string& key : reading.unknownKeys) ++document.unknownKeys[key];
    for (const std::string& key : reading.unusableKeys) {
      fault('"' + ZRPrintableText(key, ZRLongestExcerpt) + "\" can't be used as it stands");
    }
    if (dropOutOfRange(*reading.address)) fault("the position is out of range and was left out");
    document.results.push_back({number_, ZRPlace::placeFromGeoAddress(std::move(reading.address))});
  }

  Document document;

 private:
  void fault(std::string text) { document.faults.push_back({number_, std::move(text)}); }

  static std::string reasonForNothing(const ZROHMValue& result, ZRGeoAddressDialect dialect) {
    const std::string error = serviceError(result);
    if (!error.empty()) return "the service answered: " + ZRPrintableText(error, ZRLongestExcerpt);
    return "is no result in the dialect '" + std::string(nameOfDialect(dialect)) + "'; choose another with --dialect";
  }

  std::optional<ZRGeoAddressDialect> dialect_;
  std::size_t number_ = 0;
};

}  // namespace

ZRGeoAddressDialect detectDialect(const ZROHMValue& result) {
  const ZROHMDictionary* const entries = result.dictionary();
  if (entries == nullptr) return ZRGeoAddressDialect::documented;
  const ZROHMValue* const inside = entries->find("properties");
  const ZROHMDictionary* const properties = inside != nullptr ? inside->dictionary() : nullptr;
  if (properties != nullptr) {
    if (properties->contains("geocoding")) return ZRGeoAddressDialect::geocodeJSON;
    const bool isPelias = hasAny(*properties, {"gid", "layer", "country_a", "postalcode"});
    return isPelias ? ZRGeoAddressDialect::pelias : ZRGeoAddressDialect::photon;
  }
  if (inside != nullptr) return ZRGeoAddressDialect::photon;  // a feature without properties: no dialect reads it
  const bool isNominatim = hasAny(*entries, {"lon", "display_name", "osm_id"});
  return isNominatim ? ZRGeoAddressDialect::nominatim : ZRGeoAddressDialect::documented;
}

Document readDocument(const ZRJSONService& json, std::string_view bytes, std::optional<ZRGeoAddressDialect> dialect) {
  const auto parsed = json.valueFromJSON(bytes, ZRJSONFragments::refused);
  Reader reader(dialect);
  if (const NSError* const error = std::get_if<NSError>(&parsed)) {
    reader.document.faults.push_back({0, error->localizedDescription()});
  } else if (const ZROHMValue& document = std::get<ZROHMValue>(parsed);
             const ZROHMArray* const list = listIn(document)) {
    for (const ZROHMValue& result : *list) reader.read(result);
    if (list->empty()) reader.document.faults.push_back({0, "holds no result"});
  } else {
    reader.read(document);
  }
  return std::move(reader.document);
}

std::string_view nameOfDialect(ZRGeoAddressDialect dialect) {
  return std::find_if(kNames.begin(), kNames.end(), [dialect](const auto& row) { return row.second == dialect; })
      ->first;
}

std::optional<ZRGeoAddressDialect> dialectNamed(std::string_view name) {
  const auto row =
      std::find_if(kNames.begin(), kNames.end(), [name](const auto& known) { return known.first == name; });
  return row != kNames.end() ? std::optional(row->second) : std::nullopt;
}

}  // namespace place
