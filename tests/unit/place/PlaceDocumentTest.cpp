// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSON.h>
#include <gmock/gmock.h>
#include <place/PlaceDocument.h>
#include <place/PlaceJson.h>

#include "AddressValues.h"

namespace {

using testing::HasSubstr;

struct Document {
  std::vector<place::Result> results;
  place::Account account;

  /// "1 fault\n2 fault\n"
  std::string faults() const {
    std::string text;
    for (const place::Fault& fault : account.faults) text += std::to_string(fault.number) + " " + fault.text + "\n";
    return text;
  }
  /// "1 title, 2 title, "
  std::string titles() const {
    std::string text;
    for (const place::Result& result : results) {
      text += std::to_string(result.number) + " " + result.place->title().value_or("-") + ", ";
    }
    return text;
  }
};

Document documentOf(std::string_view json, std::optional<ZRGeoAddressDialect> dialect = {}) {
  Document document;
  document.account =
      place::readDocument(json, dialect, [&](place::Result result) { document.results.push_back(std::move(result)); });
  return document;
}

TEST(Answer, IsFoundWhereverItStands) {
  const std::pair<const char*, const char*> rows[] = {
      {R"(RESULT)", "1 Ulm, "},
      {R"([RESULT,RESULT])", "1 Ulm, 2 Ulm, "},
      {R"({"results":[RESULT]})", "1 Ulm, "},
      {R"({"Features":[RESULT],"type":"FeatureCollection"})", "1 Ulm, "},
      {R"({"addresses":[RESULT],"city":"asked for"})", "1 Ulm, "},
      {R"({"asked":{"city":"for"},"ADDRESSES":[RESULT]})", "1 Ulm, "},
      {R"({"GeoAddress":RESULT,"zrID":"7"})", "1 Ulm, "},
      {R"({"name":"Home","address":RESULT})", "1 Ulm, "},
      {R"({"status":0,"reply":{"data":[[RESULT],{"of":RESULT}],"x":[1]}})", "1 Ulm, 2 Ulm, "},
      {R"([{"results":[{"asked":{"street":"a"},"locations":[RESULT]}]},RESULT])", "1 Ulm, 2 Ulm, "},
  };
  for (const char* const result :
       {R"({"city":"Ulm"})", R"({"address":{"city":"Ulm"},"lat":"1","lon":"2"})", R"({"properties":{"city":"Ulm"}})"}) {
    for (const auto& [form, titles] : rows) {
      std::string json = form;
      for (std::size_t at = 0; (at = json.find("RESULT", at)) != json.npos;) json.replace(at, 6, result);
      const Document document = documentOf(json);
      EXPECT_EQ(document.titles(), titles) << json;
      EXPECT_EQ(document.faults(), "") << json;
    }
  }
}

TEST(Answer, TellsADialectByAnyOfItsKeysWhereverTheKeyStands) {
  const std::pair<const char*, const char*> rows[] = {
      {R"({"address":{"road":"a"},"boundingbox":[1,2],"lon":"2"})", "1 a, "},
      {R"({"properties":{"address":{"road":"a"},"display_name":"x"},"geometry":null})", "1 a, "},
      {R"({"properties":{"postcode":"1","street":"a"}})", "1 a, "},
      {R"({"properties":{"neighbourhood":"n","locality":"c","region":"r","layer":"neighbourhood"}})", "1 n, "},
      {R"({"properties":{"street":"no","geocoding":{"street":"a"}}})", "1 a, "},
  };
  for (const auto& [json, titles] : rows) {
    const Document document = documentOf(json);
    EXPECT_EQ(document.titles(), titles) << json;
    EXPECT_EQ(documentOf(std::string("[") + json + "," + json + "]").results.size(), 2U) << json;
  }
  for (const ZRGeoAddressDialect dialect : ZRGeoAddressDialects()) {
    EXPECT_EQ(place::dialectNamed(ZRGeoAddressDialectName(dialect)), dialect);
  }
}

TEST(Answer, InADialectThatWasAskedForIsReadInThatOneAlone) {
  const char* const json = R"([{"address":{"town":"a"}},{"city":"b","lon":1},{"properties":{"city":"c"}}])";
  EXPECT_EQ(documentOf(json, ZRGeoAddressDialect::nominatim).titles(), "1 a, 2 , 3 , ");
  EXPECT_EQ(documentOf(json, ZRGeoAddressDialect::documented).titles(), "2 b, 3 c, ");
  EXPECT_THAT(documentOf(json, ZRGeoAddressDialect::photon).faults(),
              HasSubstr("1 holds no result in the dialect photon (\"properties\"); choose another with --dialect\n"));
}

TEST(Answer, KeepsTheGoodResultsAndNamesTheFaultyOnesByPosition) {
  const auto document = documentOf(
      R"([17,{"city":"a","state":[]},{"error":"Unable to geocode"},{"x":1},{"city":"b","latLng":{"lat":91,"lng":1}},
          [1,[]],{"city":"c","latLng":{"lat":"52,5","lng":13},"displayLatLng":{"lat":null,"lng":13}},)");
  EXPECT_EQ(document.titles(), "2 a, 5 b, 7 c, ");
  EXPECT_THAT(document.faults(),
              testing::MatchesRegex("1 is no object\n"
                                    "2 \"state\" cannot be used as it stands\n"
                                    "3 the service answered: Unable to geocode\n"
                                    "4 holds no result in any dialect; looked for .*\"properties.geocoding\".*\n"
                                    "5 the position is out of range and was left out\n"
                                    "6 is no object\n"
                                    "7 \"latLng\" cannot be used as it stands\n"
                                    "7 \"displayLatLng\" cannot be used as it stands\n"
                                    "0 The JSON document cannot be read: .*\n"));
  for (const place::Result& result : document.results) EXPECT_EQ(place::position(*result.place), std::nullopt);
}

TEST(Answer, ThatIsDamagedOrEmptyIsOneFault) {
  for (const char* const json : {"", "[", "[]", "7", R"({"results":[]})", R"([{"city":"a")", "{\"x\":[1,{}]}"}) {
    const auto document = documentOf(json);
    EXPECT_EQ(document.account.faultCount, 1U) << json;
    EXPECT_EQ(document.account.faults.size(), 1U) << json;
    EXPECT_TRUE(document.results.empty());
  }
}

TEST(Answer, OfAnySizeKeepsItsAccountShort) {
  std::string json = "[";
  for (int i = 0; i < 3000; ++i) json += "7,{\"zip\":\"1\",\"" + std::to_string(i) + "\":0},";
  const auto document = documentOf(json);
  EXPECT_EQ(document.results.size(), 3000U);
  EXPECT_EQ(document.account.faultCount, 3001U);
  EXPECT_EQ(document.account.faults.size(), place::Account::kMostFaults + 1);
  EXPECT_THAT(document.account.faults.back().text, HasSubstr("JSON"));  // what matters most is not among the untold
  EXPECT_EQ(document.account.unknownCount, 3000U);
  EXPECT_EQ(document.account.unknownKeys.size(), place::Account::kMostKeys);
}

TEST(Answer, WithOverlongPartsLosesThoseAlone) {
  const std::string longText(100'000, 'a');
  std::string many = "0";
  for (int i = 1; i < 20'000; ++i) many += ",\"" + std::to_string(i) + "\":0";
  const auto document = documentOf(R"([{"city":"a","icon":")" + longText +
                                   R"(","outline":[[1,2],[3,4],[5,6],[7,[8]]],"state":"b"},{"city":")" + longText +
                                   R"(","zip":"1"},{"city":"c","x":)" + many +
                                   R"(},{"properties":{"city":"d"},"geometry":{"coordinates":[1,2,3,4]}}])");
  EXPECT_EQ(document.titles(), "1 a, b, 2 1, 4 d, ");
  EXPECT_EQ(document.faults(),
            "2 \"city\" cannot be used as it stands\n"
            "3 is larger than any result (a megabyte beside its lists) and was left out\n");
  EXPECT_TRUE(place::position(*document.results.back().place));
}

TEST(Answer, IsWrittenAsDictionariesThatReadBackAndAsGeoJson) {
  const auto json = ZRMakeJSONService();
  const auto written = [&json](std::string_view answer, place::DocumentShape shape) {
    std::string text;
    place::DocumentWriter writer(*json, shape, [&text](std::string_view piece) { text += piece; });
    for (const place::Result& result : documentOf(answer).results) EXPECT_FALSE(writer.add(*result.place));
    writer.finish();
    // It is laid out as a whole document is.
    EXPECT_EQ(text, std::get<std::string>(json->JSONFromValue(valueOf(text), ZRJSONLayout::pretty)) + "\n");
    return valueOf(text);
  };
  const char* const answer = R"([{"city":"Ulm","state":"BW","latLng":{"lat":48.4,"lng":10},"geoQuality":"city"},
                                 {"state":"BW","resultCode":"A6"}])";
  EXPECT_EQ(written(answer, place::DocumentShape::tambrelDictionaries),
            valueOf(R"([{"latLng":{"lat":48.4,"lng":10.0},"locality":"Ulm","region":"BW"},{"region":"BW"}])"));
  EXPECT_EQ(written(answer, place::DocumentShape::geoJSON), valueOf(R"({"type":"FeatureCollection","features":[
              {"type":"Feature","geometry":{"type":"Point","coordinates":[10,48.4]},
               "properties":{"title":"Ulm, BW","subtitle":"","address":"Ulm, BW","quality":"city","zoom":11}},
              {"type":"Feature","geometry":null,
               "properties":{"title":"BW","subtitle":"","address":"BW","quality":"10","zoom":15}}]})"));
  EXPECT_EQ(written("[]", place::DocumentShape::dictionaries), valueOf("[]"));
  EXPECT_EQ(written("[]", place::DocumentShape::geoJSON), valueOf(R"({"type":"FeatureCollection","features":[]})"));
}

}  // namespace
