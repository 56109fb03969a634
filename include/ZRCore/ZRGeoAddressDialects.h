// SPDX-License-Identifier: Apache-2.0
/// @file
/// Addresses from what public geocoding services answer. An addition: `ZRGeoAddress` itself reads the documented keys
/// and no others.
#ifndef ZRCORE_ZRGEOADDRESSDIALECTS_H
#define ZRCORE_ZRGEOADDRESSDIALECTS_H

#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeoAddress.h>
#include <ZRCore/ZROHMValue.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// How a service writes one result.
enum class ZRGeoAddressDialect : std::uint8_t {
  documented,  ///< the keys of `ZRGeoAddress::geoAddressFromDictionary`
  nominatim,   ///< an object, or a GeoJSON feature's properties, with "lat", "lon" and, inside "address", the parts
  photon,      ///< a GeoJSON feature with the parts in its properties, "countrycode" among them
  pelias,      ///< a GeoJSON feature with the parts in its properties, "gid" among them
  geocodeJSON  ///< a GeoJSON feature with the parts inside "geocoding" in its properties
};

/// All dialects. A result is in the first of them of which it has a recogniser key; the documented one is the last.
ZR_EXPORT std::span<const ZRGeoAddressDialect> ZRGeoAddressDialects();

/// What command lines and messages call a dialect: "nominatim".
ZR_EXPORT std::string_view ZRGeoAddressDialectName(ZRGeoAddressDialect dialect);

/// The key paths ("lon", "properties.gid"; one dot at most) of which a result in that dialect has at least one. Of the
/// documented dialect: all keys of a part or a position, but not of an identifier or a code, which other objects have.
ZR_EXPORT std::span<const std::string_view> ZRGeoAddressDialectRecogniserKeys(ZRGeoAddressDialect dialect);

/// @name One result of a dialect
/// One result as an address; null for what is not an object (of the GeoJSON dialects: for what has no properties). The
/// parts are put under the documented keys, and the address is then made by `geoAddressFromDictionary`:
///
/// - the street is "house number street"; a result that is itself a street, a city and so on gives that part its name
///   where the part is missing;
/// - the state of a Nominatim city is the letters of its ISO 3166-2 code ("US-IL" is "IL"), else its name, else the
///   code;
/// - the country is the two-letter code in capitals where there is one, because the display texts know codes, not
///   names; it is left out beside a city without a street and a state, because the display texts then show no city;
/// - the identifier is the OpenStreetMap one ("N42", "W42", "R42") where there is one, else the service's own (of
///   Pelias always its own, the "gid");
/// - the quality is taken from the type of the result, or from the presence of a house number.
///
/// A part that is neither a text nor a number is left out, and so is a position of which a number is missing. Pure; any
/// thread; nothing throws.
/// @{
ZR_EXPORT std::shared_ptr<ZRGeoAddress> ZRGeoAddressFromNominatim(const ZROHMValue& result);
ZR_EXPORT std::shared_ptr<ZRGeoAddress> ZRGeoAddressFromPhoton(const ZROHMValue& result);
ZR_EXPORT std::shared_ptr<ZRGeoAddress> ZRGeoAddressFromPelias(const ZROHMValue& result);
ZR_EXPORT std::shared_ptr<ZRGeoAddress> ZRGeoAddressFromGeocodeJSON(const ZROHMValue& result);
/// @}

/// An address and what became of the entries it was made from. Entries are named by key path ("address.road").
struct ZRGeoAddressReading {
  std::shared_ptr<ZRGeoAddress> address{};  ///< null as above
  std::vector<std::string> unknownKeys{};   ///< the dialect has no use for these
  std::vector<std::string> unusableKeys{};  ///< these it has, but the value is of a wrong kind (null is not)
  bool hasKnownKeys = false;                ///< whether there is anything that the dialect knows
};

/// Reads one result in that dialect and reports what was in it, for tools that show people their data. What is unusable
/// is left out, in the documented dialect too.
ZR_EXPORT ZRGeoAddressReading ZRReadGeoAddress(const ZROHMValue& result, ZRGeoAddressDialect dialect);

#endif
