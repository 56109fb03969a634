// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZROHMRegistry.h>
#include <ZRCore/ZRObjectsFromJSON.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include "ExactText.h"
#include "TestSeed.h"

namespace {

/// A service that reads values alone, as a host's own may.
class ValuesAlone final : public ZRJSONService {
 public:
  std::variant<ZROHMValue, NSError> valueFromJSON(std::string_view bytes, ZRJSONFragments fragments) const override {
    return json_->valueFromJSON(bytes, fragments);
  }
  std::variant<std::string, NSError> JSONFromValue(const ZROHMValue& value, ZRJSONLayout layout) const override {
    return json_->JSONFromValue(value, layout);
  }

 private:
  std::shared_ptr<ZRJSONService> json_ = ZRMakeJSONService();
};

template <class Object>
std::string contentOf(const std::shared_ptr<Object>& object) {
  return exactText(object->dictionaryWithValuesForKeys(object->classInfo().propertyNames())) + '\n';
}

template <class Object>
std::string contentOf(const std::variant<std::vector<std::shared_ptr<Object>>, NSError>& read) {
  if (const NSError* const error = std::get_if<NSError>(&read)) return "error " + error->localizedDescription();
  std::string content;
  for (const auto& object : std::get<0>(read)) content += contentOf(object);
  return content;
}

class ObjectsFromJSON : public testing::Test {
 protected:
  /// By way of a value.
  std::string generally(std::string_view bytes) {
    const auto read = service->valueFromJSON(bytes, ZRJSONFragments::refused);
    if (const NSError* const error = std::get_if<NSError>(&read)) return "error " + error->localizedDescription();
    const auto& root = std::get<ZROHMValue>(read);
    std::string content;
    for (const ZROHMValue& element : root.array() != nullptr ? *root.array() : ZROHMArray{root}) {
      if (element.dictionary() == nullptr) continue;
      content += contentOf(ZRGeoAddress::geoAddressFromDictionary(*element.dictionary()));
    }
    return content;
  }

  std::shared_ptr<ZRJSONService> service = ZRMakeJSONService();
  ValuesAlone valuesAlone;
};

TEST_F(ObjectsFromJSON, AnyDocumentGivesTheAddressesOfTheGeneralWay) {
  const std::array<std::string_view, 26> pieces{R"("street":"1 Lantern Row",)",
                                                R"("Street":7,)",
                                                R"("streetAddress":null,)",
                                                R"("street":["a"],)",
                                                R"("zrid":9.50,)",
                                                R"("zrID":"x\u00e4",)",
                                                R"("ZrId":null,)",
                                                R"("zrid":{"a":[1]},)",
                                                R"("latLng":{"lat":1.5,"lng":"-2.5 west"},)",
                                                R"("LatLng":{"Lng":4,"lat":3,"Lat":2,"Lat":true},)",
                                                R"("coordinate":[1,2],)",
                                                R"("displayLatLng":{"lng":5},)",
                                                R"("geocode":null,)",
                                                R"("geoQuality":"City",)",
                                                R"("geoQuality":3,)",
                                                R"("geoQuality":null,)",
                                                R"("unknown":{"street":1},)",
                                                R"("resultCode":18446744073709551615,)",
                                                R"("type":true,)",
                                                R"("adminArea5":"\ud83d\ude00",)",
                                                R"("zip":-0.0,)",
                                                R"({},)",
                                                R"(},{)",
                                                R"("street":"2",)",
                                                R"("AdminArea5":1e-7,)",
                                                R"("coordinate":{"Lat":1,"Lng":2},)"};
  std::mt19937 random(testSeed(20261122));
  for (int round = 0; round < 2000; ++round) {
    std::string document = "[{";
    for (std::size_t count = random() % 12; count > 0; --count) document += pieces[random() % pieces.size()];
    document += R"("country":"US"},7,[],null])";
    const std::string expected = generally(document);
    ASSERT_EQ(contentOf(ZRGeoAddressesFromJSON(document, {}, service.get())), expected) << document;
    ASSERT_EQ(contentOf(ZRGeoAddressesFromJSON(document, {}, &valuesAlone)), expected) << document;
  }
}

TEST_F(ObjectsFromJSON, AreReadUnderAKeyFromOneDictionaryOrNot) {
  const std::pair<const char*, std::size_t> rows[] = {{R"({"results":[{},1,{"city":"a"}]})", 2},
                                                      {R"({"results":[{}],"results":[{},{},{}]})", 3},
                                                      {R"({"results":{"city":"a"}})", 1},
                                                      {R"({"results":"none"})", 0},
                                                      {R"({"other":[{}]})", 0},
                                                      {R"([{"results":[{}]}])", 0}};
  for (const auto& [document, count] : rows) {
    for (const ZRJSONService* const reader :
         {static_cast<const ZRJSONService*>(service.get()), static_cast<const ZRJSONService*>(&valuesAlone)}) {
      EXPECT_EQ(std::get<0>(ZRGeoAddressesFromJSON(document, "results", reader)).size(), count) << document;
    }
  }
  EXPECT_TRUE(std::holds_alternative<NSError>(ZRGeoAddressesFromJSON("7", {}, service.get())));
  EXPECT_TRUE(std::holds_alternative<NSError>(ZRGeoAddressesFromJSON("[{},{}")));  // no platform, no service
}

TEST_F(ObjectsFromJSON, PlacesAndOtherTypesFollowTheirOwnTables) {
  const char* const document =
      R"([{"zrID":"7","GeoAddress":{"AdminArea5":"Quillmere","LatLng":{"Lat":1,"Lng":2}},"isNavigable":true}])";
  const auto places = std::get<0>(ZRPlacesFromJSON(document, {}, service.get()));
  ASSERT_EQ(places.size(), 1U);
  EXPECT_EQ(places[0]->geoAddress()->city(), "Quillmere");
  const auto value = std::get<ZROHMValue>(service->valueFromJSON(document, ZRJSONFragments::refused));
  const auto general = ZRPlace::init();
  general->setValuesForKeysWithDictionary(*value.array()->front().dictionary());
  EXPECT_EQ(contentOf(places[0]), contentOf(general));

  EXPECT_EQ(contentOf(ZRObjectsFromJSON(ZRPlace::staticClassInfo(), document, {}, service.get())),
            contentOf(places[0]));
  EXPECT_THROW(static_cast<void>(ZRPlacesFromJSON(R"([{"isNavigable":null}])", {}, service.get())),
               NSInvalidArgumentException);
  EXPECT_THROW(static_cast<void>(ZRObjectsFromJSON(NSObject::staticClassInfo(), R"([{"a":1}])", {}, service.get())),
               NSUndefinedKeyException);
}

}  // namespace
