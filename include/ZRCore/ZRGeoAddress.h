// SPDX-License-Identifier: Apache-2.0
/// @file
/// Geocoded addresses: parsed from what geocoding services answer, and written for people and for services.
#ifndef ZRCORE_ZRGEOADDRESS_H
#define ZRCORE_ZRGEOADDRESS_H

#include <ZRCore/NSCoder.h>
#include <ZRCore/NSObject.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeometry.h>
#include <ZRCore/ZROHMValue.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// How exact a geocoding result is.
enum ZRGeoAddressQuality : std::uint64_t {
  ZRGeoAddressQualityUnknown = 0,
  ZRGeoAddressQualitySideOfStreet = 1,
  ZRGeoAddressQualityAddress = 2,
  ZRGeoAddressQualityStreet = 3,
  ZRGeoAddressQualityIntersection = 4,
  ZRGeoAddressQualityZip = 5,
  ZRGeoAddressQualityCity = 6,
  ZRGeoAddressQualityCounty = 7,
  ZRGeoAddressQualityState = 8,
  ZRGeoAddressQualityCountry = 9,
  ZRGeoAddressQualityNeighborhood = 10  ///< derived from codes only: it has no text
};

/// One result of a geocoding or search service. A text may be absent, which is not the same as empty; a coordinate of
/// exactly (0, 0) is not set. One thread at a time; expected to be the main thread.
///
/// The type is mappable: its tables fold the key spellings of several services onto its properties.
class ZR_EXPORT ZRGeoAddress : public NSObject, public NSCoding {
 public:
  /// An address with nothing in it.
  static std::shared_ptr<ZRGeoAddress> init();

  /// An address from an archive (`encodeWithCoder`).
  static std::shared_ptr<ZRGeoAddress> initWithCoder(const NSCoder& coder);

  /// An address from a service's dictionary. Numbers become the text of text properties; other values of a wrong kind
  /// leave the property absent, a position without "Lat" and "lat" leaves (0, 0), a quality that is not a known text 0.
  /// Unknown keys are ignored. Never fails, never null.
  static std::shared_ptr<ZRGeoAddress> geoAddressFromDictionary(const ZROHMDictionary& dictionary);

  ~ZRGeoAddress() override;

  /// The service's identifier of the result.
  const std::optional<std::string>& zrid() const { return zrid_; }
  void setZrid(std::optional<std::string> zrid) { zrid_ = std::move(zrid); }
  /// House number and street, or an intersection.
  const std::optional<std::string>& street() const { return street_; }
  void setStreet(std::optional<std::string> street) { street_ = std::move(street); }
  const std::optional<std::string>& neighborhood() const { return neighborhood_; }
  void setNeighborhood(std::optional<std::string> neighborhood) { neighborhood_ = std::move(neighborhood); }
  const std::optional<std::string>& city() const { return city_; }
  void setCity(std::optional<std::string> city) { city_ = std::move(city); }
  const std::optional<std::string>& county() const { return county_; }
  void setCounty(std::optional<std::string> county) { county_ = std::move(county); }
  /// State or region.
  const std::optional<std::string>& state() const { return state_; }
  void setState(std::optional<std::string> state) { state_ = std::move(state); }
  /// Postal code.
  const std::optional<std::string>& zip() const { return zip_; }
  void setZip(std::optional<std::string> zip) { zip_ = std::move(zip); }
  /// Country; the display texts know "US" and "CA".
  const std::optional<std::string>& country() const { return country_; }
  void setCountry(std::optional<std::string> country) { country_ = std::move(country); }
  /// The service's code for the side of the street.
  const std::optional<std::string>& sideOfStreet() const { return sideOfStreet_; }
  void setSideOfStreet(std::optional<std::string> sideOfStreet) { sideOfStreet_ = std::move(sideOfStreet); }
  /// The service's result or quality code.
  const std::optional<std::string>& resultCode() const { return resultCode_; }
  void setResultCode(std::optional<std::string> resultCode) { resultCode_ = std::move(resultCode); }
  /// The service's quality code, asked only while there is no result code. An empty result code is one.
  const std::optional<std::string>& qualityCode() const { return qualityCode_; }
  void setQualityCode(std::optional<std::string> qualityCode) { qualityCode_ = std::move(qualityCode); }
  /// The service's type of the result.
  const std::optional<std::string>& type() const { return type_; }
  void setType(std::optional<std::string> type) { type_ = std::move(type); }

  /// A ZRGeoAddressQuality, or whatever was set. While it is 0 it is derived from the result code or the quality code
  /// at each call; a level other than 0 that was derived or set stays, whatever becomes of the codes.
  std::uint64_t geoQuality() const;
  void setGeoQuality(std::uint64_t level) { geoQuality_ = level; }

  /// The geocoded position, degrees.
  CLLocationCoordinate2D coordinate() const { return coordinate_; }
  void setCoordinate(CLLocationCoordinate2D coordinate) { coordinate_ = coordinate; }
  /// Where to display the result, degrees.
  CLLocationCoordinate2D displayCoordinate() const { return displayCoordinate_; }
  void setDisplayCoordinate(CLLocationCoordinate2D coordinate) { displayCoordinate_ = coordinate; }

  /// The text of a level: nothing for 10 and for what is not a level.
  static std::optional<std::string> stringForGeoQuality(std::uint64_t level);
  /// The level of a text in any capitals; 0 for unknown texts. "side_of_street", the text of level 1, is one of them:
  /// services write it as "sideofstreet".
  static std::uint64_t geoQualityForString(std::string_view text);

  /// The map zoom level that suits the quality: 16 for levels 1 and 2, 15 for 3 and 4, 11 for 5 to 8, 5 for 9, and 15
  /// for 0 and all others.
  std::uint64_t zoomLevelForGeoQuality() const;

  /// False for exactly (0, 0), which means "not set"; else `CLLocationCoordinate2DIsValid`.
  static bool coordinateIsValid(CLLocationCoordinate2D coordinate);
  /// {"lat": degrees, "lng": degrees}: the coordinate if it is valid, else the display coordinate if that is, else
  /// nothing. The spelling is part of the interface.
  std::optional<ZROHMDictionary> coordinateForDictionaryRespresentation() const;

  /// The address for a service's request: "latLng" (`coordinateForDictionaryRespresentation`), "zrid", "street",
  /// "neighborhood", "city", "county", "state", "postalCode", "country" and, only when it is "v", "type"; in this
  /// order, without what is absent or empty.
  /// @param usesTambrelParams  whether the keys are those of the second dialect: "adminArea6" for "neighborhood",
  ///                           "locality" for "city", "adminArea" for "county", "region" for "state".
  ZROHMDictionary toDictionaryUsingTambrelParams(bool usesTambrelParams) const;

  /// A text for people: the first line for 0, the second line for 1, everything on a single line for other numbers.
  /// Empty where there is nothing to say; without white space at its ends. A zip of five and four digits loses the
  /// four, and the country is shown unless it is "US" or "CA".
  std::string stringForFormat(std::uint64_t format) const;
  std::string primaryString() const { return stringForFormat(0); }
  std::string secondaryString() const { return stringForFormat(1); }
  std::string singleLineString() const { return stringForFormat(2); }

  /// Whether `other` is an address that `isEqualToAddress` accepts.
  bool isEqual(const NSObject* other) const override;
  /// Whether both have an identifier and it is the same text, whatever else differs; where one has none, whether they
  /// are the same object.
  bool isEqualToAddress(const ZRGeoAddress* other) const;
  std::size_t hash() const override;

  /// An address with the same values. The level is copied as it stands: one that was not derived yet is 0 in the copy.
  std::shared_ptr<ZRGeoAddress> copy() const { return copyObject(); }

  /// Writes everything but `type`, the level as `geoQuality` returns it, in 32 bits.
  void encodeWithCoder(NSCoder& coder) const override;

  /// The type's descriptor, mappable and with its tables from the first call on.
  static ZROHMClassInfo& staticClassInfo();
  ZROHMClassInfo& classInfo() const override;

 protected:
  ZRGeoAddress();
  ZRGeoAddress(const ZRGeoAddress& other);
  explicit ZRGeoAddress(const NSCoder& coder);
  ZRGeoAddress& operator=(const ZRGeoAddress&) = delete;

  /// What `copy` hands out: a subtype makes one of its own type here.
  virtual std::shared_ptr<ZRGeoAddress> copyObject() const;

 private:
  std::optional<std::string> zrid_, street_, neighborhood_, city_, county_, state_, zip_, country_, sideOfStreet_,
      resultCode_, qualityCode_, type_;
  mutable std::uint64_t geoQuality_ = ZRGeoAddressQualityUnknown;  // derived on demand
  CLLocationCoordinate2D coordinate_{};
  CLLocationCoordinate2D displayCoordinate_{};
};

#endif
