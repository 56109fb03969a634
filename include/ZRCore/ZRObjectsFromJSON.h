// SPDX-License-Identifier: Apache-2.0
/// @file
/// Objects straight from the bytes of a service's answer.
#ifndef ZRCORE_ZROBJECTSFROMJSON_H
#define ZRCORE_ZROBJECTSFROMJSON_H

#include <ZRCore/NSError.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeoAddress.h>
#include <ZRCore/ZRPlace.h>

#include <memory>
#include <string_view>
#include <variant>
#include <vector>

class ZRJSONService;

/// @name Objects from JSON
/// What reading the bytes into a value and filling an object from each dictionary gives, without the value: texts go
/// from the document into the objects. Values are made only of what neither a property nor a part adapter of the
/// type takes as it stands.
///
/// The document is an array of dictionaries, each of which makes an object, in order, and whose other elements are
/// passed over; or it is one dictionary, which makes one object.
///
/// @param bytes    a JSON document
/// @param key      where not empty: what stands under this key of the document, a dictionary, is read in its place;
///                 "results", say. Where nothing does, there are no objects.
/// @param service  which reads the document; null: that of the platform in use. Quickest is one that derives from
///                 ZRJSONDocuments, as that of ZRMakeJSONService does.
/// @return the objects, or the service's error
/// @throw as NSObject::setValuesForKeysWithDictionary; addresses take anything
/// @{
ZR_EXPORT std::variant<std::vector<std::shared_ptr<ZRGeoAddress>>, NSError> ZRGeoAddressesFromJSON(
    std::string_view bytes, std::string_view key = {}, const ZRJSONService* service = nullptr);

/// Places by their own tables and properties ("title", "geoAddress" ...).
ZR_EXPORT std::variant<std::vector<std::shared_ptr<ZRPlace>>, NSError> ZRPlacesFromJSON(
    std::string_view bytes, std::string_view key = {}, const ZRJSONService* service = nullptr);

/// @param type  any type that makes instances; of one that does not there are none
ZR_EXPORT std::variant<std::vector<std::shared_ptr<NSObject>>, NSError> ZRObjectsFromJSON(
    const ZROHMClassInfo& type, std::string_view bytes, std::string_view key = {},
    const ZRJSONService* service = nullptr);
/// @}

#endif
