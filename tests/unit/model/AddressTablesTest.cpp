// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <vector>

#include "AddressValues.h"

namespace {

using Text = std::optional<std::string>;
constexpr CLLocationCoordinate2D kPlace{40.5, -75.25};

/// The value of every property, by its name; a coordinate is given the place above.
ZROHMDictionary everythingIn(const ZRGeoAddress& address) {
  return address.dictionaryWithValuesForKeys({"zrid", "street", "neighborhood", "city", "county", "state", "zip",
                                              "country", "sideOfStreet", "resultCode", "qualityCode", "type",
                                              "coordinate", "displayCoordinate"});
}

struct KeyRow {
  const char* key;
  Text (*read)(const ZRGeoAddress&);
};

#define READS(property) [](const ZRGeoAddress& address) { return address.property(); }

const std::vector<KeyRow> kTextKeys{
    {"ZrId", READS(zrid)},
    {"zrID", READS(zrid)},
    {"zrid", READS(zrid)},
    {"Street", READS(street)},
    {"streetAddress", READS(street)},
    {"street", READS(street)},
    {"AdminArea1", READS(country)},
    {"adminArea1", READS(country)},
    {"addressCountry", READS(country)},
    {"country", READS(country)},
    {"AdminArea3", READS(state)},
    {"adminArea3", READS(state)},
    {"addressRegion", READS(state)},
    {"region", READS(state)},
    {"state", READS(state)},
    {"AdminArea4", READS(county)},
    {"adminArea4", READS(county)},
    {"adminArea", READS(county)},
    {"county", READS(county)},
    {"AdminArea5", READS(city)},
    {"adminArea5", READS(city)},
    {"locality", READS(city)},
    {"addressLocality", READS(city)},
    {"city", READS(city)},
    {"AdminArea6", READS(neighborhood)},
    {"adminArea6", READS(neighborhood)},
    {"neighborhood", READS(neighborhood)},
    {"PostalCode", READS(zip)},
    {"postalCode", READS(zip)},
    {"zip", READS(zip)},
    {"ResultCode", READS(resultCode)},
    {"resultCode", READS(resultCode)},
    {"SideOfStreet", READS(sideOfStreet)},
    {"sideOfStreet", READS(sideOfStreet)},
    {"geocodeQualityCode", READS(qualityCode)},
    {"qualityCode", READS(qualityCode)},
    {"type", READS(type)},
};

TEST(AddressKeys, EachSpellingFillsItsPropertyAndNoOther) {
  const ZROHMDictionary nothing = everythingIn(*ZRGeoAddress::init());
  for (const auto& [key, read] : kTextKeys) {
    SCOPED_TRACE(key);
    const auto address = addressOf({{key, "here"}});
    EXPECT_EQ(read(*address), "here");
    std::size_t changed = 0;
    for (const auto& [name, value] : everythingIn(*address)) changed += *nothing.find(name) == value ? 0 : 1;
    EXPECT_EQ(changed, 1U);
    EXPECT_EQ(read(*addressOf({{key, 4711}})), "4711");
    EXPECT_EQ(read(*addressOf({{key, nullptr}})), std::nullopt);
  }
}

TEST(AddressKeys, EachSpellingOfAPositionFillsTheRightCoordinate) {
  for (const char* const key : {"LatLng", "latLng", "geocode", "coordinate"}) {
    for (const ZROHMDictionary& position :
         {ZROHMDictionary{{"Lat", 40.5}, {"Lng", -75.25}}, ZROHMDictionary{{"lat", "40.5"}, {"lng", "-75.25"}},
          ZROHMDictionary{{"lat", 1}, {"lng", 2}, {"Lng", -75.25}, {"Lat", 40.5}}}) {
      SCOPED_TRACE(key);
      const auto address = addressOf({{key, position}});
      EXPECT_EQ(address->coordinate(), kPlace);
      EXPECT_EQ(address->displayCoordinate(), CLLocationCoordinate2D{});
    }
  }
  for (const char* const key : {"displayLatLng", "DisplayLatLng", "displayCoordinate"}) {
    SCOPED_TRACE(key);
    const auto address = addressOf({{key, ZROHMDictionary{{"lat", 40.5}, {"lng", -75.25}}}});
    EXPECT_EQ(address->displayCoordinate(), kPlace);
    EXPECT_EQ(address->coordinate(), CLLocationCoordinate2D{});
  }
}

TEST(AddressKeys, NothingThatAServiceSendsMakesParsingFail) {
  for (const char* const position : {"null", "[40.5]", "\"40.5\"", "{}", "{\"lng\":3}", "7"}) {
    SCOPED_TRACE(position);
    EXPECT_EQ(addressOf("{\"latLng\":" + std::string(position) + "}")->coordinate(), CLLocationCoordinate2D{});
  }
  EXPECT_EQ(addressOf(R"({"latLng":{"lat":40.5}})")->coordinate(), (CLLocationCoordinate2D{40.5, 0.0}));
  const auto address = addressOf(R"({"city":{"name":"x"},"zip":[],"geoQuality":2,"nonsense":{"a":[1]},"state":"IL"})");
  EXPECT_EQ(address->city(), std::nullopt);
  EXPECT_EQ(address->zip(), std::nullopt);
  EXPECT_EQ(address->geoQuality(), 0U);
  EXPECT_EQ(address->state(), "IL");
  EXPECT_EQ(addressOf(R"({"geoQuality":null})")->geoQuality(), 0U);
  EXPECT_NE(addressOf(R"({"ZrId":[1]})")->zrid(), std::nullopt) << "any identifier has a text";
}

// A host's own static, initialised in whatever order the linker chose.
const std::string cityBeforeMain = addressOf({{"AdminArea5", "Springfield"}})->city().value_or("not mapped");

TEST(AddressKeys, AreKnownToAHostsOwnStaticsToo) { EXPECT_EQ(cityBeforeMain, "Springfield"); }

struct QualityRow {
  std::uint64_t level;
  Text written;
  const char* read;  // null: nothing reads as this level
  std::uint64_t zoom;
};

const std::vector<QualityRow> kQualities{
    {0, "unknown", nullptr, 15},
    {1, "side_of_street", "sideofstreet", 16},
    {2, "address", "address", 16},
    {3, "street", "street", 15},
    {4, "intersection", "intersection", 15},
    {5, "zip", "zip", 11},
    {6, "city", "city", 11},
    {7, "county", "county", 11},
    {8, "state", "state", 11},
    {9, "country", "country", 5},
    {10, std::nullopt, nullptr, 15},
    {11, std::nullopt, nullptr, 15},
};

TEST(AddressQuality, EachLevelHasItsTextAndZoom) {
  for (const auto& [level, written, read, zoom] : kQualities) {
    SCOPED_TRACE(level);
    EXPECT_EQ(ZRGeoAddress::stringForGeoQuality(level), written);
    const auto address = ZRGeoAddress::init();
    address->setGeoQuality(level);
    EXPECT_EQ(address->zoomLevelForGeoQuality(), zoom);
    if (read == nullptr) continue;
    std::string capitals(read);
    for (char& letter : capitals) letter = static_cast<char>(std::toupper(letter));
    EXPECT_EQ(ZRGeoAddress::geoQualityForString(capitals), level);
    EXPECT_EQ(addressOf({{"geoQuality", read}})->geoQuality(), level);
  }
  for (const char* const text : {"unknown", "side_of_street", "", "cit", "citys"}) {
    EXPECT_EQ(ZRGeoAddress::geoQualityForString(text), 0U) << text;
  }
}

TEST(AddressQuality, IsDerivedFromTheBeginningOfTheCode) {
  const std::vector<std::pair<const char*, std::uint64_t>> codes{
      {"A1XAX", 9}, {"A3", 8}, {"XX", 8}, {"A4", 7}, {"A5XAX", 6}, {"A6", 10},   {"Z1", 5}, {"ZIP", 5},
      {"L1AAA", 2}, {"DB", 2}, {"P1", 1}, {"I1", 4}, {"B", 3},     {"B3BCA", 3}, {"Z2", 3}, {"Z3", 3},
      {"a1", 0},    {"A2", 0}, {"Z", 0},  {"ZI", 0}, {" A1", 0},   {"", 0}};
  for (const auto& [code, level] : codes) {
    EXPECT_EQ(addressOf({{"resultCode", code}})->geoQuality(), level) << code;
    EXPECT_EQ(addressOf({{"qualityCode", code}})->geoQuality(), level) << code;
  }
}

TEST(AddressQuality, AnyResultCodeHidesTheQualityCodeAnEmptyOneToo) {
  EXPECT_EQ(addressOf({{"resultCode", "A5"}, {"qualityCode", "A1"}})->geoQuality(), 6U);
  EXPECT_EQ(addressOf({{"resultCode", ""}, {"qualityCode", "A1"}})->geoQuality(), 0U);
}

TEST(AddressQuality, SticksOnceItIsKnownAndIsAskedForAgainUntilThen) {
  const auto address = addressOf({{"resultCode", "?"}});
  EXPECT_EQ(address->geoQuality(), 0U);
  address->setResultCode("L1");
  EXPECT_EQ(address->geoQuality(), 2U);
  address->setResultCode("A1");
  EXPECT_EQ(address->geoQuality(), 2U);
  address->setGeoQuality(0);
  EXPECT_EQ(address->geoQuality(), 9U);
}

}  // namespace
