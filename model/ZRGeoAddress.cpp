// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSCoder.h>
#include <ZRCore/ZRGeoAddress.h>

#include <functional>

#include "UnsetCoordinate.h"

std::shared_ptr<ZRGeoAddress> ZRGeoAddress::init() { return std::shared_ptr<ZRGeoAddress>(new ZRGeoAddress()); }

std::shared_ptr<ZRGeoAddress> ZRGeoAddress::initWithCoder(const NSCoder& coder) {
  return std::shared_ptr<ZRGeoAddress>(new ZRGeoAddress(coder));
}

ZRGeoAddress::ZRGeoAddress() = default;
ZRGeoAddress::ZRGeoAddress(const ZRGeoAddress& other) = default;
ZRGeoAddress::~ZRGeoAddress() = default;

ZRGeoAddress::ZRGeoAddress(const NSCoder& coder)
    : zrid_(coder.decodeStringForKey("zrid")),
      street_(coder.decodeStringForKey("street")),
      neighborhood_(coder.decodeStringForKey("neighborhood")),
      city_(coder.decodeStringForKey("city")),
      county_(coder.decodeStringForKey("county")),
      state_(coder.decodeStringForKey("state")),
      zip_(coder.decodeStringForKey("zip")),
      country_(coder.decodeStringForKey("country")),
      sideOfStreet_(coder.decodeStringForKey("sideOfStreet")),
      resultCode_(coder.decodeStringForKey("resultCode")),
      qualityCode_(coder.decodeStringForKey("qualityCode")),
      geoQuality_(static_cast<std::uint64_t>(coder.decodeInt32ForKey("geoQuality"))),
      coordinate_{coder.decodeDoubleForKey("coordinate_lat"), coder.decodeDoubleForKey("coordinate_lng")},
      displayCoordinate_{coder.decodeDoubleForKey("displayCoordinate_lat"),
                         coder.decodeDoubleForKey("displayCoordinate_lng")} {}

bool ZRGeoAddress::coordinateIsValid(CLLocationCoordinate2D coordinate) {
  return !isUnset(coordinate) && CLLocationCoordinate2DIsValid(coordinate);
}

std::optional<ZROHMDictionary> ZRGeoAddress::coordinateForDictionaryRespresentation() const {
  for (const CLLocationCoordinate2D candidate : {coordinate_, displayCoordinate_}) {
    if (coordinateIsValid(candidate)) return ZROHMDictionary{{"lat", candidate.latitude}, {"lng", candidate.longitude}};
  }
  return std::nullopt;
}

ZROHMDictionary ZRGeoAddress::toDictionaryUsingTambrelParams(bool usesTambrelParams) const {
  ZROHMDictionary dictionary;
  dictionary.reserve(10);
  const auto add = [&dictionary](const char* key, const std::optional<std::string>& text) {
    if (text && !text->empty()) dictionary.set(key, *text);
  };
  if (auto position = coordinateForDictionaryRespresentation()) dictionary.set("latLng", *std::move(position));
  add("zrid", zrid_);
  add("street", street_);
  add(usesTambrelParams ? "adminArea6" : "neighborhood", neighborhood_);
  add(usesTambrelParams ? "locality" : "city", city_);
  add(usesTambrelParams ? "adminArea" : "county", county_);
  add(usesTambrelParams ? "region" : "state", state_);
  add("postalCode", zip_);
  add("country", country_);
  if (type_ == "v") add("type", type_);  // services take no other type
  return dictionary;
}

bool ZRGeoAddress::isEqual(const NSObject* other) const {
  return this == other || isEqualToAddress(dynamic_cast<const ZRGeoAddress*>(other));
}

bool ZRGeoAddress::isEqualToAddress(const ZRGeoAddress* other) const {
  if (other != nullptr && zrid_ && other->zrid_) return *zrid_ == *other->zrid_;
  return this == other;
}

std::size_t ZRGeoAddress::hash() const {
  // The empty text's hash is 0, as on the platform, and 0 stands for "no hash".
  const std::size_t hash = zrid_ && !zrid_->empty() ? static_cast<std::size_t>(ZROHMHashOfText(*zrid_)) : 0;
  return hash != 0 ? hash : NSObject::hash();
}

std::shared_ptr<ZRGeoAddress> ZRGeoAddress::copyObject() const {
  return std::shared_ptr<ZRGeoAddress>(new ZRGeoAddress(*this));
}

void ZRGeoAddress::encodeWithCoder(NSCoder& coder) const {
  coder.encodeDoubleForKey(coordinate_.latitude, "coordinate_lat");
  coder.encodeDoubleForKey(coordinate_.longitude, "coordinate_lng");
  coder.encodeDoubleForKey(displayCoordinate_.latitude, "displayCoordinate_lat");
  coder.encodeDoubleForKey(displayCoordinate_.longitude, "displayCoordinate_lng");
  coder.encodeStringForKey(zrid_, "zrid");
  coder.encodeStringForKey(street_, "street");
  coder.encodeStringForKey(city_, "city");
  coder.encodeStringForKey(neighborhood_, "neighborhood");
  coder.encodeStringForKey(state_, "state");
  coder.encodeStringForKey(zip_, "zip");
  coder.encodeStringForKey(county_, "county");
  coder.encodeStringForKey(country_, "country");
  coder.encodeStringForKey(qualityCode_, "qualityCode");
  coder.encodeStringForKey(sideOfStreet_, "sideOfStreet");
  coder.encodeInt32ForKey(static_cast<std::int32_t>(geoQuality()), "geoQuality");
  coder.encodeStringForKey(resultCode_, "resultCode");
}
