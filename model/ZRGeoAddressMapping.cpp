// SPDX-License-Identifier: Apache-2.0
// How services' dictionaries become addresses.
#include <ZRCore/ZRGeoAddress.h>
#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZROHMRegistry.h>

namespace {

ZROHMTable mappingTable() {
  return {
      {"ZrId", "zrid"},
      {"zrID", "zrid"},
      {"Street", "street"},
      {"streetAddress", "street"},
      {"AdminArea1", "country"},
      {"adminArea1", "country"},
      {"addressCountry", "country"},
      {"AdminArea3", "state"},
      {"adminArea3", "state"},
      {"addressRegion", "state"},
      {"region", "state"},
      {"AdminArea4", "county"},
      {"adminArea4", "county"},
      {"adminArea", "county"},
      {"AdminArea5", "city"},
      {"adminArea5", "city"},
      {"locality", "city"},
      {"addressLocality", "city"},
      {"AdminArea6", "neighborhood"},
      {"adminArea6", "neighborhood"},
      {"PostalCode", "zip"},
      {"postalCode", "zip"},
      {"ResultCode", "resultCode"},
      {"resultCode", "resultCode"},
      {"SideOfStreet", "sideOfStreet"},
      {"LatLng", "coordinate"},
      {"latLng", "coordinate"},
      {"geocode", "coordinate"},
      {"displayLatLng", "displayCoordinate"},
      {"DisplayLatLng", "displayCoordinate"},
      {"geocodeQualityCode", "qualityCode"},
  };
}

ZROHMValue identifierFrom(const ZROHMValue& value) { return value.isNull() ? value : ZROHMValue(value.text()); }

ZROHMValue coordinateFrom(const ZROHMValue& value) {
  const ZROHMDictionary* const position = value.dictionary();
  if (position == nullptr) return CLLocationCoordinate2D{};
  const auto degreesUnder = [position](std::string_view key) {
    const ZROHMValue* const degrees = position->find(key);
    return degrees != nullptr ? degrees->doubleValue() : 0.0;
  };
  if (position->contains("Lat")) return CLLocationCoordinate2D{degreesUnder("Lat"), degreesUnder("Lng")};
  if (position->contains("lat")) return CLLocationCoordinate2D{degreesUnder("lat"), degreesUnder("lng")};
  return CLLocationCoordinate2D{};
}

ZROHMValue qualityFrom(const ZROHMValue& value) {
  const std::string* const text = value.string();
  return text != nullptr ? ZRGeoAddress::geoQualityForString(*text) : std::uint64_t{ZRGeoAddressQualityUnknown};
}

ZROHMTable adapterTable() {
  return {
      {"zrid", identifierFrom},
      {"coordinate", coordinateFrom},
      {"displayCoordinate", coordinateFrom},
      {"geoQuality", qualityFrom},
  };
}

ZROHMClassInfo& registered() {
  using Address = ZRGeoAddress;
  ZROHMClassInfo& info =
      *ZROHMClassBuilder<Address>("ZRGeoAddress", NSObject::staticClassInfo())
           .property("zrid", &Address::zrid, &Address::setZrid)
           .property("street", &Address::street, &Address::setStreet)
           .property("neighborhood", &Address::neighborhood, &Address::setNeighborhood)
           .property("city", &Address::city, &Address::setCity)
           .property("county", &Address::county, &Address::setCounty)
           .property("state", &Address::state, &Address::setState)
           .property("zip", &Address::zip, &Address::setZip)
           .property("country", &Address::country, &Address::setCountry)
           .property("sideOfStreet", &Address::sideOfStreet, &Address::setSideOfStreet)
           .property("resultCode", &Address::resultCode, &Address::setResultCode)
           .property("qualityCode", &Address::qualityCode, &Address::setQualityCode)
           .property("type", &Address::type, &Address::setType)
           .property("geoQuality", &Address::geoQuality, &Address::setGeoQuality)
           .property("coordinate", &Address::coordinate, &Address::setCoordinate)
           .property("displayCoordinate", &Address::displayCoordinate, &Address::setDisplayCoordinate)
           .build()
           .release();
  ZROHMMappable(info);
  ZROHMSetMapping(info, mappingTable());
  ZROHMSetAdapter(info, adapterTable());
  return info;
}

}  // namespace

// The first use registers, whoever's it is: a host's own static may parse an address before any load hook has run.
ZROHMClassInfo& ZRGeoAddress::staticClassInfo() {
  static ZROHMClassInfo& info = registered();
  return info;
}

ZROHMClassInfo& ZRGeoAddress::classInfo() const { return staticClassInfo(); }

std::shared_ptr<ZRGeoAddress> ZRGeoAddress::geoAddressFromDictionary(const ZROHMDictionary& dictionary) {
  auto address = init();
  address->setValuesForKeysWithDictionary(dictionary);
  return address;
}
