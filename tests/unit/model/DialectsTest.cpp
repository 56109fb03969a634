// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeoAddressDialects.h>
#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "AddressValues.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using Dialect = ZRGeoAddressDialect;

/// The parts of an address on one line, for comparing at one glance.
std::string partsOf(const ZRGeoAddress& address) {
  std::string parts;
  for (const auto& part : {address.zrid(), address.street(), address.neighborhood(), address.city(), address.county(),
                           address.state(), address.zip(), address.country(), address.type()}) {
    parts += part.value_or("-") + "|";
  }
  return parts + std::to_string(address.geoQuality());
}

struct DialectRow {
  const char* name;
  Dialect dialect;
  const char* json;
  const char* parts;
};

const std::vector<DialectRow> kRows{
    {"NominatimHouse", Dialect::nominatim,
     R"({"osm_type":"way","osm_id":5,"place_id":9,"lat":"50.5","lon":"7.25","type":"house","address":{
         "house_number":"12b","road":"Gasse","suburb":"Werder","city":"Ort","county":"Kreis","state":"Gau",
         "postcode":"59999","country":"Land","country_code":"de"}})",
     "W5|12b Gasse|Werder|Ort|Kreis|Gau|59999|DE|house|2"},
    {"NominatimVillageWithoutCode", Dialect::nominatim,
     R"({"place_id":9,"lat":50.5,"lon":7.25,"type":"administrative","addresstype":"village","address":{
         "village":"Dorf","town":null,"country":"Land"}})",
     "9|-|-|Dorf|-|-|-|-|village|6"},  // beside the country the display texts would drop the village
    {"NominatimStreetWithoutState", Dialect::nominatim,
     R"({"lat":50.5,"lon":7.25,"address":{"road":"Gasse","city":"Ort","country":"Land","ISO3166-2-lvl4":"XY-1"}})",
     "-|Gasse|-|Ort|-|XY-1|-|Land|-|0"},
    {"NominatimStateKeepsItsName", Dialect::nominatim,
     R"({"lat":50.5,"lon":7.25,"addresstype":"state","address":{"state":"Gau","ISO3166-2-lvl4":"XY-GA"}})",
     "-|-|-|-|-|Gau|-|-|state|8"},
    {"NominatimCityTakesTheStatesLetters", Dialect::nominatim,
     R"({"lat":50.5,"lon":7.25,"address":{"city":"Ort","state":"Gau","ISO3166-2-lvl4":"CZ-GA","country_code":"cz"}})",
     "-|-|-|Ort|-|GA|-|CZ|-|0"},
    {"NominatimFeature", Dialect::nominatim,
     R"({"geometry":{"coordinates":[7.25,50.5]},"properties":{"osm_type":"way","osm_id":5,"address":{"city":"Ort"}}})",
     "W5|-|-|Ort|-|-|-|-|-|0"},
    {"PhotonHouse", Dialect::photon,
     R"({"type":"Feature","geometry":{"type":"Point","coordinates":[7.25,50.5]},"properties":{"osm_type":"N","osm_id":5,
         "type":"house","name":"Café","housenumber":"7","street":"Rue","district":"Saint","city":"Ville",
         "county":"Orle","state":"Haut","postcode":"99120","country":"France","countrycode":"fr"}})",
     "N5|7 Rue|Saint|Ville|Orle|Haut|99120|FR|house|2"},
    {"PhotonCityNamesItself", Dialect::photon,
     R"({"geometry":{"coordinates":[7.25,50.5]},"properties":{"osm_type":"R","osm_id":5,"type":"city","name":"Ville"}})",
     "R5|-|-|Ville|-|-|-|-|city|6"},
    {"PeliasAddress", Dialect::pelias,
     R"({"geometry":{"coordinates":[7.25,50.5]},"properties":{"gid":"a:b:1","layer":"address","housenumber":14,
         "street":"Row","neighbourhood":"Quay","locality":"Mere","county":"Harlow","region":"IL","postalcode":"62999",
         "country":"United States","country_a":"USA"}})",
     "a:b:1|14 Row|Quay|Mere|Harlow|IL|62999|US|address|2"},
    {"PeliasLocality", Dialect::pelias,
     R"({"geometry":{"coordinates":[7.25,50.5]},"properties":{"layer":"locality","locality":"Vik","country_a":"SWE",
         "country_code":"se","region_a":"VL"}})",
     "-|-|-|Vik|-|VL|-|SE|locality|6"},
    {"GeocodeJSONHouse", Dialect::geocodeJSON,
     R"({"geometry":{"coordinates":[7.25,50.5]},"properties":{"geocoding":{"osm_type":"node","osm_id":5,"type":"house",
         "housenumber":"5","street":"Rua","locality":"Ponte","postcode":"36999","city":"Vila","country":"España",
         "country_code":"es","admin":{"level4":"Costa","level6":"Ria"}}}})",
     "N5|5 Rua|Ponte|Vila|Ria|Costa|36999|ES|house|2"},
    {"GeocodeJSONStateNamesItself", Dialect::geocodeJSON,
     R"({"geometry":{"coordinates":[7.25,50.5]},"properties":{"geocoding":{"id":"s1","type":"state","name":"Costa",
         "admin":{"level4":"Other"}}}})",
     "s1|-|-|-|-|Costa|-|-|state|8"},
};

class Dialects : public testing::TestWithParam<DialectRow> {};

TEST_P(Dialects, FillThePartsAndThePosition) {
  const auto reading = ZRReadGeoAddress(valueOf(GetParam().json), GetParam().dialect);
  ASSERT_NE(reading.address, nullptr);
  EXPECT_EQ(partsOf(*reading.address), GetParam().parts);
  EXPECT_EQ(reading.address->coordinate(), (CLLocationCoordinate2D{50.5, 7.25}));
  EXPECT_THAT(reading.unusableKeys, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, Dialects, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(DialectFunctions, ReadTheirOwnDialect) {
  const auto city = [](const std::shared_ptr<ZRGeoAddress>& address) { return address->city(); };
  EXPECT_EQ(city(ZRGeoAddressFromNominatim(valueOf(R"({"address":{"town":"a"}})"))), "a");
  EXPECT_EQ(city(ZRGeoAddressFromPhoton(valueOf(R"({"properties":{"city":"a"}})"))), "a");
  EXPECT_EQ(city(ZRGeoAddressFromPelias(valueOf(R"({"properties":{"locality":"a"}})"))), "a");
  EXPECT_EQ(city(ZRGeoAddressFromGeocodeJSON(valueOf(R"({"properties":{"geocoding":{"city":"a"}}})"))), "a");
  for (const char* const noResult : {"null", "[]", "17", "\"a\"", "{\"properties\":7}"}) {
    EXPECT_EQ(ZRGeoAddressFromPhoton(valueOf(noResult)), nullptr) << noResult;
  }
  EXPECT_EQ(ZRGeoAddressFromNominatim(valueOf("[]")), nullptr);
}

TEST(DialectReading, NamesWhatItCannotUseAndWhatItDoesNotKnow) {
  auto reading = ZRReadGeoAddress(
      valueOf(R"({"lat":"47,5","lon":true,"licence":"x","osm_type":7,"osm_id":1,"address":{"city":["a"],"state":null,
                  "road":"Gasse","ISO":1}})"),
      Dialect::nominatim);
  EXPECT_THAT(reading.unusableKeys, UnorderedElementsAre("lat", "lon", "address.city"));
  EXPECT_THAT(reading.unknownKeys, UnorderedElementsAre("licence", "address.ISO"));
  EXPECT_EQ(reading.address->coordinate(), CLLocationCoordinate2D{});
  EXPECT_EQ(reading.address->street(), "Gasse");
  EXPECT_EQ(reading.address->zrid(), std::nullopt);

  for (const std::string half : {"[7.25]", "[7.25,null]", "[\"7,5\",50.5]"}) {
    const std::string json = R"({"properties":{"city":"a"},"geometry":{"coordinates":)" + half + "}}";
    reading = ZRReadGeoAddress(valueOf(json.c_str()), Dialect::photon);
    EXPECT_THAT(reading.unusableKeys, ElementsAre("geometry.coordinates")) << half;
    EXPECT_EQ(reading.address->coordinate(), CLLocationCoordinate2D{}) << half;
  }
  for (const char* const half : {R"({"lat":"50.5","osm_id":1})", R"({"lon":"7.25","osm_id":1})"}) {
    EXPECT_EQ(ZRGeoAddressFromNominatim(valueOf(half))->coordinate(), CLLocationCoordinate2D{}) << half;
  }

  reading = ZRReadGeoAddress(valueOf(R"({"Street":{},"city":null,"LatLng":"x","geoQuality":1,"town":"a"})"),
                             Dialect::documented);
  EXPECT_THAT(reading.unusableKeys, ElementsAre("Street", "LatLng", "geoQuality"));
  EXPECT_THAT(reading.unknownKeys, ElementsAre("town"));

  reading = ZRReadGeoAddress(valueOf(R"({"LatLng":{"Lat":1,"Lng":2},"latLng":{"lat":"52,5","lng":13},
                                         "displayLatLng":{"lat":null,"lng":13}})"),
                             Dialect::documented);
  EXPECT_THAT(reading.unusableKeys, ElementsAre("latLng", "displayLatLng"));
  EXPECT_EQ(reading.address->coordinate(), (CLLocationCoordinate2D{1, 2}));
  EXPECT_EQ(reading.address->displayCoordinate(), CLLocationCoordinate2D{});
  EXPECT_FALSE(ZRReadGeoAddress(valueOf(R"({"town":"a"})"), Dialect::documented).hasKnownKeys);
}

}  // namespace
