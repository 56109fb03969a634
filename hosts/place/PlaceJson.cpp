// SPDX-License-Identifier: Apache-2.0
#include "PlaceJson.h"

#include <utility>
#include <variant>

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

ZROHMValue elementOf(const ZRPlace& place, DocumentShape shape) {
  if (shape == DocumentShape::geoJSON) return featureOf(place);
  return place.geoAddress()->toDictionaryUsingTambrelParams(shape == DocumentShape::tambrelDictionaries);
}

ZROHMValue emptyDocument(DocumentShape shape) {
  if (shape != DocumentShape::geoJSON) return ZROHMArray{};
  return ZROHMDictionary{{"type", "FeatureCollection"}, {"features", ZROHMArray{}}};
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

DocumentWriter::DocumentWriter(const ZRJSONService& json, DocumentShape shape,
                               std::function<void(std::string_view)> write)
    : json_(json), shape_(shape), write_(std::move(write)) {
  const std::string empty = std::get<std::string>(json.JSONFromValue(emptyDocument(shape), ZRJSONLayout::pretty));
  const std::size_t list = empty.find("[]") + 1;
  write_(std::string_view(empty).substr(0, list));
  end_ = empty.substr(list);
  newLine_ = shape == DocumentShape::geoJSON ? "\n  " : "\n";
}

std::optional<NSError> DocumentWriter::add(const ZRPlace& place) {
  const auto written = json_.JSONFromValue(elementOf(place, shape_), ZRJSONLayout::pretty);
  if (const NSError* const error = std::get_if<NSError>(&written)) return *error;
  const std::string start = newLine_ + "  ";
  std::string text = std::exchange(hasElements_, true) ? "," + start : start;
  for (const char byte : std::get<std::string>(written)) byte == '\n' ? text += start : text += byte;
  write_(text);
  return std::nullopt;
}

void DocumentWriter::finish() { write_((hasElements_ ? newLine_ : "") + end_ + "\n"); }

}  // namespace place
