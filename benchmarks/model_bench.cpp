// SPDX-License-Identifier: Apache-2.0
// From the bytes of a service's answer to addresses, against the libraries that a programmer would take with a plain
// struct; the mapping engine alone against code written by hand for the one type; and the display texts.
#include <ZRCore/NSURLSession_ZR.h>
#include <ZRCore/ZRGeoAddress.h>
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZRObjectsFromJSON.h>
#include <ZRCore/ZRPlatform.h>
#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <simdjson.h>

#include <nlohmann/json.hpp>

#include "model_answer.h"

namespace {

constexpr int kResults = 100;

/// What the libraries fill: the same fields as an address.
struct PlainAddress {
  std::optional<std::string> zrid, street, neighborhood, city, county, state, zip, country, sideOfStreet, resultCode,
      qualityCode, type;
  double latitude = 0.0, longitude = 0.0, displayLatitude = 0.0, displayLongitude = 0.0;
};

std::string textOf(const nlohmann::json& value) { return value.is_string() ? value.get<std::string>() : value.dump(); }

void read(const nlohmann::json& json, const char* key, std::optional<std::string>& text) {
  const auto found = json.find(key);
  if (found != json.end() && !found->is_null()) text = textOf(*found);
}

void read(const nlohmann::json& json, const char* key, double& latitude, double& longitude) {
  const auto found = json.find(key);
  if (found == json.end() || !found->is_object()) return;
  latitude = found->value("lat", 0.0);
  longitude = found->value("lng", 0.0);
}

void from_json(const nlohmann::json& json, PlainAddress& address) {
  read(json, "zrID", address.zrid);
  read(json, "streetAddress", address.street);
  read(json, "adminArea6", address.neighborhood);
  read(json, "adminArea5", address.city);
  read(json, "adminArea4", address.county);
  read(json, "adminArea3", address.state);
  read(json, "postalCode", address.zip);
  read(json, "adminArea1", address.country);
  read(json, "SideOfStreet", address.sideOfStreet);
  read(json, "resultCode", address.resultCode);
  read(json, "geocodeQualityCode", address.qualityCode);
  read(json, "type", address.type);
  read(json, "latLng", address.latitude, address.longitude);
  read(json, "displayLatLng", address.displayLatitude, address.displayLongitude);
}

void read(const rapidjson::Value& value, std::optional<std::string>& text) {
  if (value.IsString()) text.emplace(value.GetString(), value.GetStringLength());
  if (value.IsInt64()) text = std::to_string(value.GetInt64());
}

void read(const rapidjson::Value& value, double& latitude, double& longitude) {
  if (!value.IsObject()) return;
  const auto degrees = [&value](const char* key) {
    const auto found = value.FindMember(key);
    return found != value.MemberEnd() && found->value.IsNumber() ? found->value.GetDouble() : 0.0;
  };
  latitude = degrees("lat");
  longitude = degrees("lng");
}

void read(simdjson::dom::element value, std::optional<std::string>& text) {
  if (value.is_string()) text.emplace(value.get_string().value_unsafe());
  if (value.is_int64()) text = std::to_string(value.get_int64().value_unsafe());
}

void read(simdjson::dom::element value, double& latitude, double& longitude) {
  for (const auto [key, degrees] : value.get_object()) {
    if (key == "lat") latitude = degrees.get_double();
    if (key == "lng") longitude = degrees.get_double();
  }
}

template <class Value>
void take(std::string_view key, const Value& value, PlainAddress& address) {
  if (key == "zrID") {
    read(value, address.zrid);
  } else if (key == "streetAddress") {
    read(value, address.street);
  } else if (key == "adminArea6") {
    read(value, address.neighborhood);
  } else if (key == "adminArea5") {
    read(value, address.city);
  } else if (key == "adminArea4") {
    read(value, address.county);
  } else if (key == "adminArea3") {
    read(value, address.state);
  } else if (key == "postalCode") {
    read(value, address.zip);
  } else if (key == "adminArea1") {
    read(value, address.country);
  } else if (key == "SideOfStreet") {
    read(value, address.sideOfStreet);
  } else if (key == "resultCode") {
    read(value, address.resultCode);
  } else if (key == "geocodeQualityCode") {
    read(value, address.qualityCode);
  } else if (key == "type") {
    read(value, address.type);
  } else if (key == "latLng") {
    read(value, address.latitude, address.longitude);
  } else if (key == "displayLatLng") {
    read(value, address.displayLatitude, address.displayLongitude);
  }
}

PlainAddress addressFrom(const rapidjson::Value& object) {
  PlainAddress address;
  for (const auto& member : object.GetObject()) {
    take({member.name.GetString(), member.name.GetStringLength()}, member.value, address);
  }
  return address;
}

PlainAddress addressFrom(simdjson::dom::object object) {
  PlainAddress address;
  for (const auto [key, value] : object) take(key, value, address);
  return address;
}

std::optional<std::string> text(const ZROHMValue& value) {
  return value.string() != nullptr ? *value.string() : value.isNumber() ? std::optional(value.text()) : std::nullopt;
}

CLLocationCoordinate2D coordinate(const ZROHMValue& value) {
  const ZROHMDictionary* const position = value.dictionary();
  if (position == nullptr) return {};
  const ZROHMValue* const latitude = position->find("lat");
  const ZROHMValue* const longitude = position->find("lng");
  return {latitude != nullptr ? latitude->doubleValue() : 0.0, longitude != nullptr ? longitude->doubleValue() : 0.0};
}

/// What the engine does, written by hand for these keys.
std::shared_ptr<ZRGeoAddress> addressByHand(const ZROHMDictionary& dictionary) {
  auto address = ZRGeoAddress::init();
  for (const auto& [key, value] : dictionary) {
    if (key == "zrID") {
      address->setZrid(text(value));
    } else if (key == "streetAddress") {
      address->setStreet(text(value));
    } else if (key == "adminArea6") {
      address->setNeighborhood(text(value));
    } else if (key == "adminArea5") {
      address->setCity(text(value));
    } else if (key == "adminArea4") {
      address->setCounty(text(value));
    } else if (key == "adminArea3") {
      address->setState(text(value));
    } else if (key == "postalCode") {
      address->setZip(text(value));
    } else if (key == "adminArea1") {
      address->setCountry(text(value));
    } else if (key == "SideOfStreet") {
      address->setSideOfStreet(text(value));
    } else if (key == "resultCode") {
      address->setResultCode(text(value));
    } else if (key == "geocodeQualityCode") {
      address->setQualityCode(text(value));
    } else if (key == "type") {
      address->setType(text(value));
    } else if (key == "latLng") {
      address->setCoordinate(coordinate(value));
    } else if (key == "displayLatLng") {
      address->setDisplayCoordinate(coordinate(value));
    }
  }
  return address;
}

void reportPerAddress(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * kResults);
  state.counters["s/address"] =
      benchmark::Counter(kResults, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_BytesToAddresses(benchmark::State& state) {
  const std::string answer = answerOf(kResults);
  const auto json = ZRMakeJSONService();
  for (auto _ : state) {
    const auto parsed = json->valueFromJSON(answer, ZRJSONFragments::refused);
    std::vector<std::shared_ptr<ZRGeoAddress>> addresses;
    for (const ZROHMValue& result : *std::get<ZROHMValue>(parsed).array()) {
      addresses.push_back(ZRGeoAddress::geoAddressFromDictionary(*result.dictionary()));
    }
    benchmark::DoNotOptimize(addresses);
  }
  reportPerAddress(state);
}
BENCHMARK(BM_BytesToAddresses);

void BM_BytesStraightToAddresses(benchmark::State& state) {
  const std::string answer = answerOf(kResults);
  const auto json = ZRMakeJSONService();
  for (auto _ : state) {
    auto addresses = std::get<0>(ZRGeoAddressesFromJSON(answer, {}, json.get()));
    benchmark::DoNotOptimize(addresses);
  }
  reportPerAddress(state);
}
BENCHMARK(BM_BytesStraightToAddresses);

/// A session that has the answer already.
class ReadySession final : public NSURLSession {
 public:
  struct Task final : NSURLSessionDataTask {
    Task(const std::string& body, CompletionHandler handler) : answer(body), complete(std::move(handler)) {}
    void resume() override { complete(NSData(answer), nullptr, std::nullopt); }
    void cancel() override {}
    NSURLSessionTaskState state() const override { return NSURLSessionTaskState::suspended; }
    const std::string& answer;
    CompletionHandler complete;
  };
  std::shared_ptr<NSURLSessionDataTask> dataTaskWithRequest(NSMutableURLRequest, CompletionHandler complete) override {
    return std::make_shared<Task>(answer_, std::move(complete));
  }

 private:
  const std::string answer_ = answerOf(kResults);
};

void BM_JSONTaskToAddresses(benchmark::State& state) {
  struct Queue final : ZRMainQueue {
    void post(std::function<void()> work) override { posted = std::move(work); }
    std::function<void()> posted;
  };
  static const auto queue = std::make_shared<Queue>();
  static const bool isInstalled = [] {
    ZRPlatform platform;
    platform.json = ZRMakeJSONService();
    platform.mainQueue = queue;
    platform.httpSession = std::make_shared<ReadySession>();
    return ZRPlatformInstall(platform);
  }();
  if (!isInstalled) state.SkipWithError("the platform was used before");
  for (auto _ : state) {
    std::vector<std::shared_ptr<ZRGeoAddress>> addresses;
    const auto task = NSURLSession_ZR::jsonDataTaskWithRequestSuccessFailure(
        NSMutableURLRequest(),
        [&addresses](const auto&, const ZROHMValue& document) {
          for (const ZROHMValue& result : *document.array()) {
            addresses.push_back(ZRGeoAddress::geoAddressFromDictionary(*result.dictionary()));
          }
        },
        nullptr);
    task->resume();
    std::exchange(queue->posted, nullptr)();
    benchmark::DoNotOptimize(addresses);
    if (addresses.size() != kResults) state.SkipWithError("no addresses came");
  }
  reportPerAddress(state);
}
BENCHMARK(BM_JSONTaskToAddresses);

void BM_BytesToPlainStructsByNlohmann(benchmark::State& state) {
  const std::string answer = answerOf(kResults);
  for (auto _ : state) {
    auto addresses = nlohmann::json::parse(answer).get<std::vector<PlainAddress>>();
    benchmark::DoNotOptimize(addresses);
  }
  reportPerAddress(state);
}
BENCHMARK(BM_BytesToPlainStructsByNlohmann);

void BM_BytesToPlainStructsByRapidJSON(benchmark::State& state) {
  const std::string answer = answerOf(kResults);
  for (auto _ : state) {
    rapidjson::Document document;
    document.Parse(answer.data(), answer.size());
    std::vector<PlainAddress> addresses;
    for (const rapidjson::Value& result : document.GetArray()) addresses.push_back(addressFrom(result));
    benchmark::DoNotOptimize(addresses);
  }
  reportPerAddress(state);
}
BENCHMARK(BM_BytesToPlainStructsByRapidJSON);

void BM_BytesToPlainStructsBySimdjson(benchmark::State& state) {
  const std::string answer = answerOf(kResults);
  simdjson::dom::parser parser;
  for (auto _ : state) {
    std::vector<PlainAddress> addresses;
    for (const simdjson::dom::object result : parser.parse(answer).get_array()) {
      addresses.push_back(addressFrom(result));
    }
    benchmark::DoNotOptimize(addresses);
  }
  reportPerAddress(state);
}
BENCHMARK(BM_BytesToPlainStructsBySimdjson);

void BM_BytesToValues(benchmark::State& state) {
  const std::string answer = answerOf(kResults);
  const auto json = ZRMakeJSONService();
  for (auto _ : state) {
    auto parsed = json->valueFromJSON(answer, ZRJSONFragments::refused);
    benchmark::DoNotOptimize(parsed);
  }
  reportPerAddress(state);
}
BENCHMARK(BM_BytesToValues);

/// Addresses from values that are there already, by `make`.
template <class Make>
void fromReadyValues(benchmark::State& state, Make make) {
  const auto parsed = ZRMakeJSONService()->valueFromJSON(answerOf(kResults), ZRJSONFragments::refused);
  const ZROHMArray& results = *std::get<ZROHMValue>(parsed).array();
  for (auto _ : state) {
    for (const ZROHMValue& result : results) {
      auto address = make(*result.dictionary());
      benchmark::DoNotOptimize(address);
    }
  }
  reportPerAddress(state);
}

void BM_EngineAlone(benchmark::State& state) { fromReadyValues(state, ZRGeoAddress::geoAddressFromDictionary); }
BENCHMARK(BM_EngineAlone);

void BM_ByHandAlone(benchmark::State& state) { fromReadyValues(state, addressByHand); }
BENCHMARK(BM_ByHandAlone);

void BM_Export(benchmark::State& state) {
  const auto parsed = ZRMakeJSONService()->valueFromJSON(answerOf(1), ZRJSONFragments::refused);
  const auto address =
      ZRGeoAddress::geoAddressFromDictionary(*std::get<ZROHMValue>(parsed).array()->front().dictionary());
  const auto& keys = ZRGeoAddress::staticClassInfo().propertyNames();
  for (auto _ : state) benchmark::DoNotOptimize(address->dictionaryWithValuesForKeys(keys));
}
BENCHMARK(BM_Export);

void BM_StringForFormat(benchmark::State& state) {
  const auto parsed = ZRMakeJSONService()->valueFromJSON(answerOf(1), ZRJSONFragments::refused);
  const auto address =
      ZRGeoAddress::geoAddressFromDictionary(*std::get<ZROHMValue>(parsed).array()->front().dictionary());
  for (auto _ : state) benchmark::DoNotOptimize(address->stringForFormat(2));
}
BENCHMARK(BM_StringForFormat);

}  // namespace
