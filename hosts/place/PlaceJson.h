// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_PLACE_PLACEJSON_H
#define ZRCORE_HOSTS_PLACE_PLACEJSON_H

#include <ZRCore/ZROHMValue.h>

#include <optional>
#include <string>
#include <vector>

#include "PlaceDocument.h"

namespace place {

/// Where the place is shown; nothing when that is not set.
std::optional<CLLocationCoordinate2D> position(const ZRPlace& place);

/// The quality in a word; for a level without one its number.
std::string qualityText(const ZRGeoAddress& address);

/// The addresses as an array of dictionaries, as services take them and as this tool reads them again.
ZROHMValue dictionariesOf(const std::vector<Result>& results, bool usesTambrelParams);

/// The places as a GeoJSON feature collection (RFC 7946): points, or no geometry for places without a position.
ZROHMValue featuresOf(const std::vector<Result>& results);

}  // namespace place

#endif
