// SPDX-License-Identifier: Apache-2.0
#include "PlaceJson.h"

#include <utility>

namespace place {

namespace {

ZROHMValue geometryOf(const ZRPlace& place) {
  const auto found = position(place);
  if (!found) return nullptr;
  return ZROHMDictionary{{"type", "Point"}, {"coordinates", ZROHMArray{found->longitude, found->latitude}}};
}

ZROHMValue featureOf(const ZRPlace& place) {
  const ZRGeoAddress& address = *place.geoAddress();
  ZROHMDictionary properties{{"title", place.title()},
                             {"subtitle", place.subtitle()},
                             {"address", address.singleLineString()},
                             {"quality", qualityText(address)},
                             {"zoom", address.zoomLevelForGeoQuality()}};
  if (place.zrid()) properties.set("zrid", *place.zrid());
  return ZROHMDictionary{{"type", "Feature"}, {"geometry", geometryOf(place)}, {"properties", std::move(properties)}};
}

}  // namespace

std::optional<CLLocationCoordinate2D> position(const ZRPlace& place) {
  const CLLocationCoordinate2D coordinate = place.coordinate();
  return ZRGeoAddress::coordinateIsValid(coordinate) ? std::optional(coordinate) : std::nullopt;
}

std::string qualityText(const ZRGeoAddress& address) {
  const std::uint64_t level = address.geoQuality();
  return ZRGeoAddress::stringForGeoQuality(level).value_or(std::to_string(level));
}

ZROHMValue dictionariesOf(const std::vector<Result>& results, bool usesTambrelParams) {
  ZROHMArray dictionaries;
  dictionaries.reserve(results.size());
  for (const Result& result : results) {
    dictionaries.emplace_back(result.place->geoAddress()->toDictionaryUsingTambrelParams(usesTambrelParams));
  }
  return dictionaries;
}

ZROHMValue featuresOf(const std::vector<Result>& results) {
  ZROHMArray features;
  features.reserve(results.size());
  for (const Result& result : results) features.push_back(featureOf(*result.place));
  return ZROHMDictionary{{"type", "FeatureCollection"}, {"features", std::move(features)}};
}

}  // namespace place
