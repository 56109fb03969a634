// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_PLACE_PLACEJSON_H
#define ZRCORE_HOSTS_PLACE_PLACEJSON_H

#include <ZRCore/ZRJSONService.h>
#include <ZRCore/ZRPlace.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace place {

/// Where the place is shown; nothing when that is not set.
std::optional<CLLocationCoordinate2D> position(const ZRPlace& place);

/// The quality in a word; for a level without one its number.
std::string qualityText(const ZRGeoAddress& address);

/// What a document of places looks like.
enum class DocumentShape {
  dictionaries,         ///< an array of the addresses' dictionaries, as services take them and as this tool reads them
  tambrelDictionaries,  ///< likewise, with the keys of the second dialect
  geoJSON  ///< a GeoJSON feature collection (RFC 7946): points, or no geometry for places without a position
};

/// Writes a document of places, one place at a time, laid out as the JSON service lays out whole documents.
class DocumentWriter {
 public:
  /// @param write  takes the next piece of the document
  DocumentWriter(const ZRJSONService& json, DocumentShape shape, std::function<void(std::string_view)> write);

  /// @return what is wrong with the place, of which nothing is written then
  std::optional<NSError> add(const ZRPlace& place);
  void finish();

 private:
  const ZRJSONService& json_;
  DocumentShape shape_;
  std::function<void(std::string_view)> write_;
  std::string end_;      // what stands after the list
  std::string newLine_;  // before the list's end; its elements stand two blanks further in
  bool hasElements_ = false;
};

}  // namespace place

#endif
