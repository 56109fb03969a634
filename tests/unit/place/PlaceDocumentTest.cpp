// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSON.h>
#include <gmock/gmock.h>
#include <place/PlaceDocument.h>
#include <place/PlaceJson.h>

#include "AddressValues.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

place::Document documentOf(std::string_view json, std::optional<ZRGeoAddressDialect> dialect = {}) {
  return place::readDocument(*ZRMakeJSONService(), json, dialect);
}

std::vector<std::size_t> numbersOf(const place::Document& document) {
  std::vector<std::size_t> numbers;
  for (const place::Result& result : document.results) numbers.push_back(result.number);
  return numbers;
}

TEST(Answer, MayBeOneResultAnArrayOrAList) {
  const std::string result = R"({"city":"Ulm","state":"BW"})";
  for (const std::string& json :
       {result, "[" + result + "]", R"({"results":[)" + result + "]}", R"({"features":[)" + result + "]}"}) {
    const auto document = documentOf(json);
    ASSERT_EQ(document.results.size(), 1U) << json;
    EXPECT_EQ(document.results[0].place->title(), "Ulm, BW");
  }
}

TEST(Answer, TellsEachResultsDialectByItsLooks) {
  const auto detected = [](const char* json) { return place::detectDialect(valueOf(json)); };
  EXPECT_EQ(detected(R"({"latLng":{},"city":"a"})"), ZRGeoAddressDialect::documented);
  EXPECT_EQ(detected(R"({"lat":"1","lon":"2"})"), ZRGeoAddressDialect::nominatim);
  EXPECT_EQ(detected(R"({"properties":{"osm_id":1,"postcode":"1"}})"), ZRGeoAddressDialect::photon);
  EXPECT_EQ(detected(R"({"properties":{"gid":"a"}})"), ZRGeoAddressDialect::pelias);
  EXPECT_EQ(detected(R"({"properties":{"geocoding":{}}})"), ZRGeoAddressDialect::geocodeJSON);
  for (const auto dialect : {ZRGeoAddressDialect::documented, ZRGeoAddressDialect::geocodeJSON}) {
    EXPECT_EQ(place::dialectNamed(place::nameOfDialect(dialect)), dialect);
  }
}

TEST(Answer, KeepsTheGoodResultsAndNamesTheFaultyOnesByPosition) {
  const auto document = documentOf(
      R"([17,{"city":"a","state":[]},{"error":"Unable to geocode"},{"x":1},{"city":"b","latLng":{"lat":91,"lng":1}}])");
  EXPECT_THAT(numbersOf(document), ElementsAre(2, 5));
  std::string faults;
  for (const place::Fault& fault : document.faults) faults += std::to_string(fault.number) + " " + fault.text + "\n";
  EXPECT_EQ(faults,
            "1 is no object\n"
            "2 \"state\" can't be used as it stands\n"
            "3 the service answered: Unable to geocode\n"
            "4 is no result in the dialect 'documented'; choose another with --dialect\n"
            "5 the position is out of range and was left out\n");
  EXPECT_EQ(place::position(*document.results[1].place), std::nullopt);
}

TEST(Answer, ThatIsDamagedOrEmptyIsOneFault) {
  for (const char* const json : {"", "[", "[]", "7", R"({"results":[]})"}) {
    const auto document = documentOf(json);
    EXPECT_EQ(document.faults.size(), 1U) << json;
    EXPECT_TRUE(document.results.empty());
  }
}

TEST(Answer, IsWrittenAsDictionariesThatReadBackAndAsGeoJson) {
  const auto document = documentOf(R"([{"city":"Ulm","state":"BW","latLng":{"lat":48.4,"lng":10},"geoQuality":"city"},
                                       {"state":"BW","resultCode":"A6"}])");
  EXPECT_EQ(place::dictionariesOf(document.results, true),
            valueOf(R"([{"latLng":{"lat":48.4,"lng":10},"locality":"Ulm","region":"BW"},{"region":"BW"}])"));
  EXPECT_EQ(place::featuresOf(document.results), valueOf(R"({"type":"FeatureCollection","features":[
              {"type":"Feature","geometry":{"type":"Point","coordinates":[10,48.4]},
               "properties":{"title":"Ulm, BW","subtitle":"","address":"Ulm, BW","quality":"city","zoom":11}},
              {"type":"Feature","geometry":null,
               "properties":{"title":"BW","subtitle":"","address":"BW","quality":"10","zoom":15}}]})"));
}

}  // namespace
