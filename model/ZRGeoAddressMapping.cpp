// SPDX-License-Identifier: Apache-2.0
// How services' dictionaries become addresses.
#include <ZRCore/ZRGeoAddress.h>
#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZROHMRegistry.h>

#include <optional>

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

ZROHMPart identifierFrom(const ZROHMDocument& document, ZROHMDocument::Place place) {
  ZROHMPart part = document.partAt(place);
  const bool isTaken = part.kind == ZROHMValue::Kind::string || part.kind == ZROHMValue::Kind::null;
  return isTaken ? part : ZROHMPart::of(ZROHMValue(document.valueAt(place).text()));
}

/// "Lat" and "Lng", or without a "Lat" "lat" and "lng"; of several entries with one key the last.
ZROHMPart coordinateFrom(const ZROHMDocument& document, ZROHMDocument::Place place) {
  std::optional<ZROHMDocument::Place> capitalLatitude, capitalLongitude, latitude, longitude;
  if (document.partAt(place).kind == ZROHMValue::Kind::dictionary) {
    for (auto content = document.contentOf(place); !content.isAtEnd();) {
      std::string_view key;
      const ZROHMDocument::Place entry = document.nextEntry(content, key);
      if (key == "lat") {
        latitude = entry;
      } else if (key == "lng") {
        longitude = entry;
      } else if (key == "Lat") {
        capitalLatitude = entry;
      } else if (key == "Lng") {
        capitalLongitude = entry;
      }
    }
  }
  const auto degreesAt = [&document](std::optional<ZROHMDocument::Place> entry) {
    if (!entry) return 0.0;
    const ZROHMPart degrees = document.partAt(*entry);
    return degrees.kind == ZROHMValue::Kind::number ? degrees.value.doubleValue()
                                                    : document.valueAt(*entry).doubleValue();
  };
  if (capitalLatitude) {
    return ZROHMPart::of(CLLocationCoordinate2D{degreesAt(capitalLatitude), degreesAt(capitalLongitude)});
  }
  if (latitude) return ZROHMPart::of(CLLocationCoordinate2D{degreesAt(latitude), degreesAt(longitude)});
  return ZROHMPart::of(CLLocationCoordinate2D{});
}

ZROHMValue qualityFrom(const ZROHMValue& value) {
  const std::string* const text = value.string();
  return text != nullptr ? ZRGeoAddress::geoQualityForString(*text) : std::uint64_t{ZRGeoAddressQualityUnknown};
}

ZROHMTable adapterTable() {
  return {
      {"zrid", ZROHMPartAdapter{identifierFrom}},
      {"coordinate", ZROHMPartAdapter{coordinateFrom}},
      {"displayCoordinate", ZROHMPartAdapter{coordinateFrom}},
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
