// SPDX-License-Identifier: Apache-2.0
// The mapping engine on ready values against the code that a programmer would write for one type by hand, and what the
// steps under it cost.
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZROHMRegistry.h>
#include <benchmark/benchmark.h>

#include <array>
#include <nlohmann/json.hpp>

namespace {

constexpr std::size_t kTexts = 12;
constexpr std::array<const char*, kTexts> kNames = {"name", "line",    "number", "district", "town",  "region",
                                                    "code", "country", "phone",  "category", "level", "note"};
constexpr std::array<const char*, kTexts> kSourceKeys = {"Name", "Line",    "number", "District", "Town",  "Region",
                                                         "Code", "Country", "Phone",  "category", "Level", "note"};

/// Fifteen properties: twelve texts, a coordinate with an adapter, and two numbers.
class Shop : public NSObject {
 public:
  template <std::size_t I>
  const std::optional<std::string>& text() const {
    return texts_[I];
  }
  template <std::size_t I>
  void setText(std::optional<std::string> text) {
    texts_[I] = std::move(text);
  }
  CLLocationCoordinate2D place() const { return place_; }
  void setPlace(CLLocationCoordinate2D place) { place_ = place; }
  std::uint64_t visitors() const { return visitors_; }
  void setVisitors(std::uint64_t visitors) { visitors_ = visitors; }
  double rating() const { return rating_; }
  void setRating(double rating) { rating_ = rating; }

  static ZROHMClassInfo& staticClassInfo();
  ZROHMClassInfo& classInfo() const override { return staticClassInfo(); }

  void fillByHand(const ZROHMDictionary& content);

 private:
  std::array<std::optional<std::string>, kTexts> texts_;
  CLLocationCoordinate2D place_{};
  std::uint64_t visitors_ = 0;
  double rating_ = 0.0;
};

CLLocationCoordinate2D coordinateFrom(const ZROHMValue& value) {
  const ZROHMDictionary* const content = value.dictionary();
  const ZROHMValue* const latitude = content != nullptr ? content->find("lat") : nullptr;
  const ZROHMValue* const longitude = content != nullptr ? content->find("lng") : nullptr;
  return {latitude != nullptr ? latitude->doubleValue() : 0.0, longitude != nullptr ? longitude->doubleValue() : 0.0};
}

template <std::size_t... I>
void declareTexts(ZROHMClassBuilder<Shop>& builder, std::index_sequence<I...>) {
  (builder.property(kNames[I], &Shop::text<I>, &Shop::setText<I>), ...);
}

ZROHMClassInfo& Shop::staticClassInfo() {
  static auto* const info = [] {
    ZROHMClassBuilder<Shop> builder("Shop", NSObject::staticClassInfo());
    declareTexts(builder, std::make_index_sequence<kTexts>());
    auto built = builder.property("place", &Shop::place, &Shop::setPlace)
                     .property("visitors", &Shop::visitors, &Shop::setVisitors)
                     .property("rating", &Shop::rating, &Shop::setRating)
                     .build();
    ZROHMTable mapping{{"LatLng", "place"}, {"Visitors", "visitors"}};
    for (std::size_t i = 0; i < kTexts; ++i) {
      if (std::string_view(kNames[i]) != kSourceKeys[i]) mapping.set(kSourceKeys[i], kNames[i]);
    }
    ZROHMMappable(*built);
    ZROHMSetMapping(*built, mapping);
    ZROHMSetAdapter(
        *built,
        ZROHMTable{{"place", ZROHMAdapter([](const ZROHMValue& value) { return ZROHMValue(coordinateFrom(value)); })}});
    return built.release();
  }();
  return *info;
}

void Shop::fillByHand(const ZROHMDictionary& content) {
  for (const auto& [key, value] : content) {
    if (key == "LatLng") {
      place_ = coordinateFrom(value);
    } else if (key == "Visitors") {
      visitors_ = value.integerBits();
    } else if (key == "rating") {
      rating_ = value.doubleValue();
    } else {
      for (std::size_t i = 0; i < kTexts; ++i) {
        if (key == kSourceKeys[i]) {
          if (value.string() != nullptr) texts_[i] = *value.string();
          break;
        }
      }
    }
  }
}

ZROHMDictionary shopContent() {
  ZROHMDictionary content;
  for (const char* const key : kSourceKeys) content.set(key, "a text of ordinary length");
  content.set("LatLng", ZROHMDictionary{{"lat", 52.5}, {"lng", 13.4}});
  content.set("Visitors", 1234);
  content.set("rating", 4.5);
  return content;
}

void engineFillsAnObject(benchmark::State& state) {
  const ZROHMDictionary content = shopContent();
  for (auto _ : state) {
    Shop shop;
    shop.setValuesForKeysWithDictionary(content);
    benchmark::DoNotOptimize(shop);
  }
}
BENCHMARK(engineFillsAnObject);

void handWrittenCodeFillsAnObject(benchmark::State& state) {
  const ZROHMDictionary content = shopContent();
  for (auto _ : state) {
    Shop shop;
    shop.fillByHand(content);
    benchmark::DoNotOptimize(shop);
  }
}
BENCHMARK(handWrittenCodeFillsAnObject);

void engineExportsAnObject(benchmark::State& state) {
  Shop shop;
  shop.setValuesForKeysWithDictionary(shopContent());
  const auto& keys = *ZROHMMappableKeys(Shop::staticClassInfo());
  for (auto _ : state) benchmark::DoNotOptimize(shop.dictionaryWithValuesForKeys(keys));
}
BENCHMARK(engineExportsAnObject);

void registryLookUp(benchmark::State& state) {
  const ZROHMClassInfo& type = Shop::staticClassInfo();
  for (auto _ : state) {
    benchmark::DoNotOptimize(ZROHMRegistry::table(type, ZROHMRegistry::Slot::mapping)->find("Country"));
  }
}
BENCHMARK(registryLookUp);

void jsonServiceReadsAnObject(benchmark::State& state) {
  const auto json = ZRMakeJSONService();
  const auto text = std::get<std::string>(json->JSONFromValue(shopContent(), ZRJSONLayout::compact));
  for (auto _ : state) benchmark::DoNotOptimize(json->valueFromJSON(text, ZRJSONFragments::refused));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(jsonServiceReadsAnObject);

void nlohmannReadsAnObject(benchmark::State& state) {
  const auto text = std::get<std::string>(ZRMakeJSONService()->JSONFromValue(shopContent(), ZRJSONLayout::compact));
  for (auto _ : state) benchmark::DoNotOptimize(nlohmann::json::parse(text));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(nlohmannReadsAnObject);

}  // namespace
