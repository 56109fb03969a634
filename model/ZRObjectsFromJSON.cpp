// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSONService.h>
#include <ZRCore/ZROHMRegistry.h>
#include <ZRCore/ZRObjectsFromJSON.h>
#include <ZRCore/ZRPlatform.h>

#include <optional>

namespace {

using Place = ZROHMDocument::Place;

bool isDictionary(const ZROHMDocument& document, Place place) {
  return document.partAt(place).kind == ZROHMValue::Kind::dictionary;
}

/// What stands under the key of the root, of several entries the last; the root itself for no key.
std::optional<Place> placeUnder(const ZROHMDocument& document, std::string_view key) {
  if (key.empty()) return document.root();
  std::optional<Place> found;
  if (!isDictionary(document, document.root())) return found;
  for (auto content = document.contentOf(document.root()); !content.isAtEnd();) {
    std::string_view name;
    const Place place = document.nextEntry(content, name);
    if (name == key) found = place;
  }
  return found;
}

template <class Object, class Make>
std::variant<std::vector<std::shared_ptr<Object>>, NSError> objectsFrom(std::string_view bytes, std::string_view key,
                                                                        const ZRJSONService* service, Make make) {
  const std::shared_ptr<ZRJSONService> ofPlatform = service == nullptr ? ZRPlatformInUse().json : nullptr;
  const auto read = ZRDocumentFromJSON(service != nullptr ? *service : *ofPlatform, bytes, ZRJSONFragments::refused);
  if (const NSError* const error = std::get_if<NSError>(&read)) return *error;
  const ZROHMDocument& document = *std::get<0>(read);

  std::vector<std::shared_ptr<Object>> objects;
  const auto add = [&](Place place) {
    std::shared_ptr<Object> object = isDictionary(document, place) ? make() : nullptr;
    if (!object) return;
    ZROHMSetValuesFromDocument(*object, document, place);
    objects.push_back(std::move(object));
  };
  const std::optional<Place> place = placeUnder(document, key);
  if (place && isDictionary(document, *place)) {
    add(*place);
  } else if (place) {
    for (auto content = document.contentOf(*place); !content.isAtEnd();) add(document.nextElement(content));
  }
  return objects;
}

}  // namespace

std::variant<std::vector<std::shared_ptr<ZRGeoAddress>>, NSError> ZRGeoAddressesFromJSON(std::string_view bytes,
                                                                                         std::string_view key,
                                                                                         const ZRJSONService* service) {
  return objectsFrom<ZRGeoAddress>(bytes, key, service, ZRGeoAddress::init);
}

std::variant<std::vector<std::shared_ptr<ZRPlace>>, NSError> ZRPlacesFromJSON(std::string_view bytes,
                                                                              std::string_view key,
                                                                              const ZRJSONService* service) {
  return objectsFrom<ZRPlace>(bytes, key, service, ZRPlace::init);
}

std::variant<std::vector<std::shared_ptr<NSObject>>, NSError> ZRObjectsFromJSON(const ZROHMClassInfo& type,
                                                                                std::string_view bytes,
                                                                                std::string_view key,
                                                                                const ZRJSONService* service) {
  return objectsFrom<NSObject>(bytes, key, service, [&type] { return type.makeInstance(); });
}
