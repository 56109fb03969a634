// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRArchive.h>
#include <ZRCore/ZRCoreLoad.h>
#include <ZRCore/ZROHMRegistry.h>
#include <ZRCore/ZRPlace.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "AddressValues.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::shared_ptr<ZRPlace> placeAt(CLLocationCoordinate2D coordinate, CLLocationCoordinate2D displayCoordinate = {}) {
  const auto address = ZRGeoAddress::init();
  address->setCoordinate(coordinate);
  address->setDisplayCoordinate(displayCoordinate);
  return ZRPlace::placeFromGeoAddress(address);
}

const ZROHMDictionary kIdentifiedHouse{{"zrid", "7"},
                                       {"Street", "1 Main St"},
                                       {"AdminArea5", "Springfield"},
                                       {"AdminArea3", "IL"},
                                       {"PostalCode", "62704"}};

TEST(Place, WithoutAnAddressShowsWhatWasSet) {
  const auto place = ZRPlace::init();
  EXPECT_EQ(place->coordinate(), kCLLocationCoordinate2DInvalid);
  EXPECT_EQ(place->title(), std::nullopt);
  EXPECT_TRUE(place->isNavigable());
  EXPECT_EQ(place->description(), "(null) (null)");
  place->setTitle("Home");
  place->setZrid("9");
  EXPECT_EQ(place->description(), "Home (null)");
  EXPECT_TRUE(place->toDictionaryUsingTambrelParams(false).empty());
}

TEST(Place, FollowsTheAddressThatItSharesOrOwns) {
  const auto address = addressOf(kIdentifiedHouse);
  const auto place = ZRPlace::initWithGeoAddress(address);
  place->setTitle("Home");
  address->setStreet("2 Main St");
  EXPECT_EQ(place->title(), "2 Main St");
  EXPECT_EQ(place->subtitle(), "Springfield, IL 62704");
  EXPECT_EQ(place->description(), "[7] 2 Main St Springfield, IL 62704");
  place->setGeoAddress(address);
  address->setStreet("3 Main St");
  EXPECT_EQ(place->title(), "2 Main St");
  place->setGeoAddress(nullptr);
  EXPECT_EQ(place->title(), "Home");
  EXPECT_EQ(ZRPlace::placeFromGeoAddressDict(kIdentifiedHouse)->title(), "1 Main St");
}

TEST(Place, IsShownAtTheFirstCoordinateThatIsSet) {
  EXPECT_EQ(placeAt({40, -75})->coordinate(), (CLLocationCoordinate2D{40, -75}));
  EXPECT_EQ(placeAt({40, -75}, {0, 5})->coordinate(), (CLLocationCoordinate2D{0, 5}));
  EXPECT_EQ(placeAt({0, 0}, {-0.0, 0})->coordinate(), kCLLocationCoordinate2DInvalid);
  EXPECT_TRUE(std::isnan(placeAt({40, -75}, {kNaN, 0})->coordinate().latitude));
}

TEST(Place, MovesItsDrawnPositionAndFillsInAMissingOne) {
  const auto place = ZRPlace::init();
  place->setCoordinate({1, 2});
  EXPECT_EQ(place->geoAddress()->coordinate(), (CLLocationCoordinate2D{1, 2}));
  place->setCoordinate({3, 4});
  EXPECT_EQ(place->geoAddress()->coordinate(), (CLLocationCoordinate2D{1, 2}));
  EXPECT_EQ(place->geoAddress()->displayCoordinate(), (CLLocationCoordinate2D{3, 4}));
}

TEST(PlaceIdentifier, IsTheAddressesWhereItHasOne) {
  const auto place = ZRPlace::init();
  place->setZrid("own");
  EXPECT_EQ(place->zrid(), "own");
  const auto address = addressOf({{"zrid", ""}});
  place->setGeoAddress(address);
  EXPECT_EQ(place->zrid(), "") << "an empty identifier is one";
}

TEST(PlaceIdentifier, IsPassedOnUnlessItIsThePlacesOwnAlready) {
  const auto address = addressOf({{"zrid", "address"}});
  const auto place = ZRPlace::initWithGeoAddress(address);
  place->setZrid(std::nullopt);
  EXPECT_EQ(address->zrid(), std::nullopt) << "absent onto absent still clears the address's";
  place->setZrid("a");
  EXPECT_EQ(address->zrid(), "a");
  address->setZrid("b");
  place->setZrid("a");
  EXPECT_EQ(address->zrid(), "b");
  place->setZrid(std::nullopt);
  EXPECT_EQ(address->zrid(), std::nullopt);
}

TEST(PlaceCoordinateIsValid, TakesEveryZeroForAMissingValue) {
  for (const CLLocationCoordinate2D c : {CLLocationCoordinate2D{0, 10}, {10, 0}, {10, -0.0}, {91, 10}, {10, 181}}) {
    EXPECT_FALSE(ZRPlace::coordinateIsValid(c)) << c.latitude << ' ' << c.longitude;
  }
  EXPECT_TRUE(ZRPlace::coordinateIsValid({10, 10}));
}

std::shared_ptr<ZRPlace> named(const char* identifier, std::shared_ptr<ZRPlace> place) {
  place->setZrid(identifier);
  return place;
}

TEST(PlaceEquality, IsByIdentifierOrByExactCoordinates) {
  const double next = std::nextafter(10.0, 11.0);
  struct Row {
    const char* name;
    std::shared_ptr<ZRPlace> a, b;
    bool areEqual;
  };
  const Row rows[] = {
      {"own identifiers", named("1", ZRPlace::init()), named("1", ZRPlace::init()), true},
      {"same identifier, other place", named("1", placeAt({10, 20})), named("1", placeAt({30, 40})), true},
      {"same place, other identifier", named("1", placeAt({10, 20})), named("2", placeAt({10, 20})), true},
      {"same coordinate", placeAt({10, 20}), placeAt({10, 20}, {50, 60}), true},
      {"the last bit differs", placeAt({10, 20}), placeAt({next, 20}), false},
      {"same display coordinate", placeAt({10, 20}, {50, 60}), placeAt({next, 20}, {50, 60}), true},
      {"a coordinate against a display coordinate", placeAt({10, 20}), placeAt({}, {10, 20}), false},
      {"on the equator", placeAt({0, 20}), placeAt({0, 20}), false},
      {"nothing known", ZRPlace::init(), ZRPlace::init(), false},
  };
  for (const auto& [name, a, b, areEqual] : rows) {
    SCOPED_TRACE(name);
    EXPECT_EQ(a->isEqualToPlace(b.get()), areEqual);
    EXPECT_EQ(b->isEqualToPlace(a.get()), areEqual);
  }
}

TEST(PlaceEquality, HasNoShortcutForIdentityAndIgnoresOtherTypes) {
  const auto place = ZRPlace::init();
  EXPECT_FALSE(place->isEqualToPlace(place.get()));
  EXPECT_TRUE(place->isEqual(place.get()));
  EXPECT_FALSE(placeAt({10, 20})->isEqualToPlace(nullptr));
  EXPECT_FALSE(placeAt({10, 20})->isEqualToPlace(placeAt({10, 20})->geoAddress().get()));
  const auto namedPlace = ZRNamedPlace::placeFromGeoAddress(placeAt({10, 20})->geoAddress());
  EXPECT_TRUE(placeAt({10, 20})->isEqualToPlace(namedPlace.get()));
}

TEST(PlaceHash, IsOfTheWholeDegreesAsTheyAreDrawn) {
  EXPECT_EQ(placeAt({40.9, 75.9})->hashCoordinates(), 40U ^ 75U);
  EXPECT_EQ(placeAt({1, 1}, {40.9, 75.9})->hashCoordinates(), 40U ^ 75U);
  EXPECT_EQ(placeAt({40.9, -75.9})->hashCoordinates(), 40U ^ static_cast<std::uint64_t>(-75));
  EXPECT_EQ(placeAt({kNaN, 3})->hashCoordinates(), 3U);
  EXPECT_EQ(placeAt({1e19, -1e300})->hashCoordinates(), 0U);
  EXPECT_EQ(placeAt({-9223372036854775808.0, 9223372036854775808.0})->hashCoordinates(), std::uint64_t{1} << 63);
}

TEST(PlaceCopy, IsOfTheSameTypeNavigableAndWithoutAnIdentifierOfItsOwn) {
  const auto home = ZRNamedPlace::init();
  home->setName("Home");
  const std::shared_ptr<ZRPlace> place = home;
  place->setIsNavigable(false);
  place->setZrid("own");
  place->setTitle("title");
  place->setSubtitle("subtitle");
  const auto copy = place->copy();
  EXPECT_TRUE(copy->isNavigable());
  EXPECT_EQ(copy->zrid(), std::nullopt);
  const auto namedCopy = std::dynamic_pointer_cast<ZRNamedPlace>(copy);
  ASSERT_NE(namedCopy, nullptr);
  EXPECT_EQ(namedCopy->title(), "Home");
  namedCopy->setName(std::nullopt);
  EXPECT_EQ(copy->title(), "title");
  EXPECT_EQ(copy->subtitle(), "subtitle");
  place->setGeoAddress(addressOf(kIdentifiedHouse));
  EXPECT_EQ(place->copy()->zrid(), "7");
  EXPECT_NE(place->copy()->geoAddress(), place->geoAddress());
}

TEST(NamedPlace, ShowsItsNameAboveTheWholeAddress) {
  const auto place = ZRNamedPlace::placeFromGeoAddressDict(kIdentifiedHouse);
  EXPECT_EQ(place->title(), "1 Main St");
  place->setName("");
  EXPECT_EQ(place->title(), "1 Main St");
  EXPECT_EQ(place->subtitle(), "Springfield, IL 62704");
  EXPECT_FALSE(place->toDictionaryUsingTambrelParams(false).contains("name"));
  place->setName("Home");
  EXPECT_EQ(place->title(), "Home");
  EXPECT_EQ(place->subtitle(), "1 Main St, Springfield, IL 62704");
  EXPECT_EQ(place->description(), "[7] Home 1 Main St, Springfield, IL 62704");
  EXPECT_EQ(ZROHMValue(place->toDictionaryUsingTambrelParams(true)),
            valueOf(R"({"name":"Home","address":{"zrid":"7","street":"1 Main St","locality":"Springfield",)"
                    R"("region":"IL","postalCode":"62704"}})"));
  place->setGeoAddress(nullptr);
  place->setSubtitle("kept");
  EXPECT_EQ(place->subtitle(), "kept");
}

TEST(PlaceArchive, HasTheStoredTextsTheAddressAndTheNameButNoMore) {
  const auto place = ZRNamedPlace::placeFromGeoAddressDict(kIdentifiedHouse);
  place->setName("Home");
  place->setTitle("stored");
  place->setZrid("own");
  place->setIsNavigable(false);
  const ZRArchive archive(ZRMakeJSONService(), {&ZRNamedPlace::staticClassInfo(), &ZRPlace::staticClassInfo(),
                                                &ZRGeoAddress::staticClassInfo()});
  const auto document = std::get<std::string>(archive.archivedDataWithRootObject(place));
  for (const char* const key : {R"("geoAddress":{)", R"("title":"stored")", R"("subtitle":null)", R"("name":"Home")"}) {
    EXPECT_NE(document.find(key), std::string::npos) << key;
  }
  const auto read = std::dynamic_pointer_cast<ZRNamedPlace>(
      std::get<std::shared_ptr<NSObject>>(archive.unarchivedObjectFromData(document)));
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(read->title(), "Home");
  EXPECT_EQ(read->subtitle(), place->subtitle());
  EXPECT_TRUE(read->isNavigable());
  EXPECT_EQ(read->zrid(), "own") << "the address has it too";
  read->setName(std::nullopt);
  read->setGeoAddress(nullptr);
  EXPECT_EQ(read->zrid(), std::nullopt);
  EXPECT_EQ(read->title(), "stored");
  EXPECT_EQ(read->subtitle(), std::nullopt);
}

TEST(PlaceMapping, FillsThePlaceFromItsTwoKeysAndANamedOneFromNone) {
  ZRCoreLoad();
  ZRPlace::load();
  const ZROHMDictionary dictionary{{"zrID", 12}, {"GeoAddress", ZROHMDictionary{{"AdminArea5", "Ulm"}}}};
  const auto place = ZRPlace::init();
  place->setValuesForKeysWithDictionary(dictionary);
  ASSERT_NE(place->geoAddress(), nullptr);
  EXPECT_EQ(place->geoAddress()->city(), "Ulm");
  EXPECT_EQ(place->zrid(), "12");
  const auto plain = ZRPlace::init();
  plain->setValuesForKeysWithDictionary({{"title", "a"}, {"subtitle", "b"}, {"isNavigable", false}});
  EXPECT_EQ(plain->title(), "a");
  EXPECT_EQ(plain->subtitle(), "b");
  EXPECT_FALSE(plain->isNavigable());
  plain->setValuesForKeysWithDictionary({{"coordinate", CLLocationCoordinate2D{1, 2}}});
  EXPECT_EQ(plain->coordinate(), (CLLocationCoordinate2D{1, 2}));
  const auto namedPlace = ZRNamedPlace::init();
  namedPlace->setValuesForKeysWithDictionary(dictionary);
  EXPECT_EQ(namedPlace->geoAddress(), nullptr) << "tables are of the exact type";
  EXPECT_EQ(namedPlace->zrid(), std::nullopt);
}

TEST(Annotation, OffersWhatItsInterfacesSay) {
  class Pin : public ZRAnnotation {
    CLLocationCoordinate2D coordinate() const override { return {1, 2}; }
  };
  const Pin pin;
  const ZRAnnotation& bare = pin;
  EXPECT_EQ(bare.title(), std::nullopt);
  EXPECT_EQ(bare.subtitle(), std::nullopt);
  const auto place = ZRPlace::init();
  ZRAnnotation* const annotation = place.get();
  EXPECT_NE(dynamic_cast<ZRMovableAnnotation*>(annotation), nullptr);
  EXPECT_NE(dynamic_cast<ZRNavigableAnnotation*>(annotation), nullptr);
  EXPECT_EQ(dynamic_cast<ZRReusableAnnotation*>(annotation), nullptr);
}

}  // namespace
