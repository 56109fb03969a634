// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRArchive.h>
#include <ZRCore/ZRGeoAddress.h>
#include <ZRCore/ZROHMClassInfo.h>
#include <gmock/gmock.h>

#include <limits>
#include <random>

#include "AddressValues.h"
#include "TestSeed.h"

namespace {

using testing::ElementsAre;

std::vector<std::string> keysOf(const ZROHMDictionary& dictionary) {
  std::vector<std::string> keys;
  for (const auto& entry : dictionary) keys.push_back(entry.first);
  return keys;
}

const char* const kFull =
    R"({"zrid":"42","street":"1 Main St","neighborhood":"Old Town","city":"Springfield","county":"Sangamon",)"
    R"("state":"IL","zip":"62704","country":"US","type":"v","sideOfStreet":"R","resultCode":"L1","qualityCode":"A5",)"
    R"("latLng":{"lat":39.5,"lng":-89.25},"displayLatLng":{"lat":39.75,"lng":-89.5}})";

TEST(CoordinateIsValid, RefusesOnlyTheOriginAndWhatIsOffTheEarth) {
  EXPECT_FALSE(ZRGeoAddress::coordinateIsValid({0, 0}));
  EXPECT_FALSE(ZRGeoAddress::coordinateIsValid({-0.0, 0}));
  EXPECT_TRUE(ZRGeoAddress::coordinateIsValid({0, 1}));
  EXPECT_TRUE(ZRGeoAddress::coordinateIsValid({-90, 180}));
  EXPECT_FALSE(ZRGeoAddress::coordinateIsValid({91, 0}));
  EXPECT_FALSE(ZRGeoAddress::coordinateIsValid({1, -180.5}));
}

TEST(CoordinateForDictionary, IsTheFirstValidOne) {
  const auto address = ZRGeoAddress::init();
  EXPECT_EQ(address->coordinateForDictionaryRespresentation(), std::nullopt);
  address->setDisplayCoordinate({1, 2});
  EXPECT_EQ(ZROHMValue(*address->coordinateForDictionaryRespresentation()), valueOf(R"({"lat":1,"lng":2})"));
  address->setCoordinate({91, 0});
  EXPECT_EQ(ZROHMValue(*address->coordinateForDictionaryRespresentation()), valueOf(R"({"lat":1,"lng":2})"));
  address->setCoordinate({0, 5});
  EXPECT_EQ(ZROHMValue(*address->coordinateForDictionaryRespresentation()), valueOf(R"({"lat":0,"lng":5})"));
}

TEST(DictionaryForm, HasTheKeysOfItsDialectInOrder) {
  const auto address = addressOf(kFull);
  EXPECT_THAT(keysOf(address->toDictionaryUsingTambrelParams(false)),
              ElementsAre("latLng", "zrid", "street", "neighborhood", "city", "county", "state", "postalCode",
                          "country", "type"));
  EXPECT_THAT(keysOf(address->toDictionaryUsingTambrelParams(true)),
              ElementsAre("latLng", "zrid", "street", "adminArea6", "locality", "adminArea", "region", "postalCode",
                          "country", "type"));
}

TEST(DictionaryForm, LeavesOutWhatIsEmptyAndEveryTypeButOne) {
  const auto address = addressOf(R"({"zrid":"","city":"","type":"V","state":"IL"})");
  EXPECT_THAT(keysOf(address->toDictionaryUsingTambrelParams(false)), ElementsAre("state"));
}

TEST(DictionaryForm, ReadsBackAsTheSameAddressInBothDialects) {
  std::mt19937 random(testSeed(20261121));
  for (int round = 0; round < 200; ++round) {
    ZROHMDictionary parts;
    for (const char* key : {"zrid", "street", "neighborhood", "city", "county", "state", "zip", "country"}) {
      if (random() % 3 != 0) parts.set(key, std::string(key) + std::to_string(random()));
    }
    if (random() % 2 != 0) parts.set("type", "v");
    const auto degrees = [&random] { return static_cast<double>(random() % 16500) / 97.0 - 85.0; };
    if (random() % 3 != 0) parts.set("latLng", ZROHMDictionary{{"lat", degrees()}, {"lng", degrees()}});
    const auto address = addressOf(parts);
    for (const bool usesTambrelParams : {false, true}) {
      const auto again = addressOf(address->toDictionaryUsingTambrelParams(usesTambrelParams));
      for (const char* name : {"zrid", "street", "neighborhood", "city", "county", "state", "zip", "country", "type"}) {
        EXPECT_EQ(again->dictionaryWithValuesForKeys({name}), address->dictionaryWithValuesForKeys({name})) << name;
      }
      EXPECT_EQ(again->coordinate(), address->coordinate());
    }
  }
}

TEST(Export, GivesEachMappedPropertyUnderItsFirstSourceKey) {
  const ZROHMDictionary exported = addressOf(kFull)->dictionaryWithValuesForKeys({"zrid", "street", "zip", "type"});
  EXPECT_EQ(*exported.find("ZrId"), ZROHMValue("42"));
  EXPECT_EQ(*exported.find("Street"), ZROHMValue("1 Main St"));
  EXPECT_EQ(*exported.find("PostalCode"), ZROHMValue("62704"));
  EXPECT_EQ(*exported.find("type"), ZROHMValue("v"));
  EXPECT_FALSE(exported.contains("street") || exported.contains("streetAddress") || exported.contains("zip"));
}

TEST(AddressEquality, IsByIdentifierOrElseByIdentity) {
  const auto one = addressOf({{"zrid", "1"}, {"street", "a"}});
  const auto same = addressOf({{"zrid", "1"}, {"street", "b"}});
  const auto none = addressOf({{"street", "a"}});
  const auto noneAgain = addressOf({{"street", "a"}});
  EXPECT_TRUE(one->isEqual(same.get()));
  EXPECT_EQ(one->hash(), same->hash());
  EXPECT_FALSE(one->isEqual(addressOf({{"zrid", "2"}, {"street", "a"}}).get()));
  EXPECT_FALSE(none->isEqual(noneAgain.get()));
  EXPECT_FALSE(none->isEqual(one.get()));
  EXPECT_FALSE(one->isEqual(none.get()));
  EXPECT_TRUE(none->isEqual(none.get()));
  EXPECT_NE(none->hash(), noneAgain->hash());
  EXPECT_FALSE(one->isEqual(nullptr));
  EXPECT_FALSE(one->isEqual(std::make_shared<NSObject>().get()));
}

TEST(AddressEquality, AnEmptyIdentifierIsOneButHasNoHash) {
  const auto empty = addressOf({{"zrid", ""}});
  const auto other = addressOf({{"zrid", ""}});
  EXPECT_TRUE(empty->isEqual(other.get()));
  EXPECT_NE(empty->hash(), other->hash());
}

/// Everything that an address holds, its level as stored.
ZROHMDictionary contentOf(const ZRGeoAddress& address) {
  return address.dictionaryWithValuesForKeys(ZRGeoAddress::staticClassInfo().propertyNames());
}

TEST(AddressCopy, HasEverythingAndIsIndependent) {
  const auto address = addressOf(kFull);
  const auto copy = address->copy();
  EXPECT_EQ(contentOf(*copy), contentOf(*address));
  EXPECT_EQ(contentOf(*copy).size(), 15U);
  copy->setCity("Elsewhere");
  EXPECT_EQ(address->city(), "Springfield");
}

TEST(AddressCopy, TakesTheLevelAsItStandsAndDerivesItLater) {
  const auto address = addressOf({{"resultCode", "L1"}});
  const auto before = address->copy();
  EXPECT_EQ(address->geoQuality(), 2U);
  const auto after = address->copy();
  for (const auto& copy : {before, after}) copy->setResultCode("A1");
  EXPECT_EQ(before->geoQuality(), 9U);
  EXPECT_EQ(after->geoQuality(), 2U);
}

class MarkedAddress : public ZRGeoAddress {
 public:
  int mark = 0;

 protected:
  std::shared_ptr<ZRGeoAddress> copyObject() const override {
    return std::shared_ptr<ZRGeoAddress>(new MarkedAddress(*this));
  }
};

TEST(AddressCopy, IsOfTheReceiversOwnType) {
  const auto type = ZROHMClassBuilder<MarkedAddress>("MarkedAddress", ZRGeoAddress::staticClassInfo()).build();
  const auto address = std::dynamic_pointer_cast<MarkedAddress>(type->makeInstance());
  ASSERT_NE(address, nullptr) << "the supertype's init is not the type's own";
  address->mark = 7;
  address->setCity("Springfield");
  const auto copy = std::dynamic_pointer_cast<MarkedAddress>(address->copy());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->mark, 7);
  EXPECT_EQ(copy->city(), "Springfield");
}

TEST(AddressArchive, HasTheDerivedLevelAndNoType) {
  const auto address = addressOf(kFull);
  ZRMemoryCoder coder;
  address->encodeWithCoder(coder);
  EXPECT_THAT(keysOf(coder.values()),
              ElementsAre("coordinate_lat", "coordinate_lng", "displayCoordinate_lat", "displayCoordinate_lng", "zrid",
                          "street", "city", "neighborhood", "state", "zip", "county", "country", "qualityCode",
                          "sideOfStreet", "geoQuality", "resultCode"));
  EXPECT_EQ(coder.decodeInt32ForKey("geoQuality"), 2);
  const auto read = ZRGeoAddress::initWithCoder(coder);
  address->setType(std::nullopt);
  EXPECT_EQ(contentOf(*read), contentOf(*address));
}

TEST(AddressArchive, KeepsNothingAndOddNumbersThroughADocument) {
  const auto address = ZRGeoAddress::init();
  address->setCoordinate({-0.0, std::numeric_limits<double>::infinity()});
  address->setZrid("");
  address->setGeoQuality((std::uint64_t{7} << 32) + 3);
  const ZRArchive archive(ZRMakeJSONService(), {&ZRGeoAddress::staticClassInfo()});
  const auto document = std::get<std::string>(archive.archivedDataWithRootObject(address));
  const auto read = std::dynamic_pointer_cast<ZRGeoAddress>(
      std::get<std::shared_ptr<NSObject>>(archive.unarchivedObjectFromData(document)));
  ASSERT_NE(read, nullptr);
  EXPECT_TRUE(std::signbit(read->coordinate().latitude));
  EXPECT_EQ(read->coordinate(), address->coordinate());
  EXPECT_EQ(read->zrid(), "");
  EXPECT_EQ(read->street(), std::nullopt);
  EXPECT_EQ(read->geoQuality(), 3U) << "the level is cut to 32 bits";
}

}  // namespace
