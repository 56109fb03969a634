// SPDX-License-Identifier: Apache-2.0
// Reads any bytes as services' answers in every dialect, and checks what holds for every address and every answer.
#include <ZRCore/ZRGeoAddressDialects.h>
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZRObjectsFromJSON.h>
#include <ZRCore/ZRPlace.h>

#include <place/PlaceDocument.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "ExactText.h"
#include "FuzzLaws.h"

namespace {

ZROHMDictionary contentOf(const ZRGeoAddress& address) {
  return address.dictionaryWithValuesForKeys(ZRGeoAddress::staticClassInfo().propertyNames());
}

void requireSound(const ZRGeoAddress& address) {
  for (const bool usesTambrelParams : {false, true}) {
    const ZROHMDictionary written = address.toDictionaryUsingTambrelParams(usesTambrelParams);
    const auto again = ZRGeoAddress::geoAddressFromDictionary(written);
    require(ZROHMValue(again->toDictionaryUsingTambrelParams(usesTambrelParams)) == ZROHMValue(written),
            "what an address writes reads back as what wrote it");
    if (written.contains("street")) require(again->street() == address.street(), "the street survives");
    if (ZRGeoAddress::coordinateIsValid(address.coordinate())) {
      require(again->coordinate().latitude == address.coordinate().latitude &&
                  again->coordinate().longitude == address.coordinate().longitude,
              "a valid coordinate survives");
    }
  }
  ZRMemoryCoder coder;
  address.encodeWithCoder(coder);
  const auto unarchived = ZRGeoAddress::initWithCoder(coder);
  unarchived->setType(address.type());
  // Compared as archived again: NaN equals nothing.
  ZRMemoryCoder again;
  unarchived->encodeWithCoder(again);
  require(ZROHMValue(again.values()) == ZROHMValue(coder.values()), "an archive reads back as what wrote it");
  require(ZROHMValue(contentOf(*address.copy())) == ZROHMValue(contentOf(address)), "a copy has the same content");

  const auto place = ZRNamedPlace::placeFromGeoAddress(address.copy());
  static_cast<void>(place->description());
  static_cast<void>(place->hashCoordinates());
  require(address.stringForFormat(0) == place->title(), "a place shows its address");
}

void requireSoundIn(const ZROHMValue& result, ZRGeoAddressDialect dialect) {
  const ZRGeoAddressReading reading = ZRReadGeoAddress(result, dialect);
  require(reading.address == nullptr || result.dictionary() != nullptr, "only objects are results");
  if (reading.address) requireSound(*reading.address);
}

/// Straight from the bytes come the addresses that come by way of a value.
void requireSameStraight(std::string_view bytes, const ZRJSONService& json, const ZROHMValue* document) {
  const auto straight = ZRGeoAddressesFromJSON(bytes, {}, &json);
  require(std::holds_alternative<NSError>(straight) == (document == nullptr), "both ways read it, or neither");
  if (document == nullptr) return;
  std::size_t count = 0;
  for (const ZROHMValue& element : document->array() != nullptr ? *document->array() : ZROHMArray{*document}) {
    if (element.dictionary() == nullptr) continue;
    const auto general = ZRGeoAddress::geoAddressFromDictionary(*element.dictionary());
    require(exactText(contentOf(*std::get<0>(straight).at(count++))) == exactText(contentOf(*general)),
            "both ways give the same address");
  }
  require(count == std::get<0>(straight).size(), "both ways give as many");
}

/// Reads the bytes as a tool does.
void requireSoundAccount(std::string_view bytes, std::optional<ZRGeoAddressDialect> dialect, bool isJSON) {
  std::uint64_t results = 0, last = 0;
  const auto account = place::readDocument(bytes, dialect, [&](const place::Result& result) {
    require(result.number > last, "the results' numbers grow");
    last = result.number;
    ++results;
    requireSound(*result.place->geoAddress());
  });
  require(results + account.faultCount > 0, "an answer without a place has a fault");
  require(account.faultCount >= account.faults.size(), "what is told is counted");
  require(isJSON || account.faultCount > 0, "what is no JSON has a fault");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto json = ZRMakeJSONService();
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto parsed = json->valueFromJSON(bytes, ZRJSONFragments::refused);
  const ZROHMValue* const document = std::get_if<ZROHMValue>(&parsed);
  requireSameStraight(bytes, *json, document);
  requireSoundAccount(bytes, std::nullopt, document != nullptr);
  for (const ZRGeoAddressDialect dialect : ZRGeoAddressDialects()) {
    requireSoundAccount(bytes, dialect, document != nullptr);
    if (document != nullptr) requireSoundIn(*document, dialect);
  }
  std::string often = "[";
  for (int i = 0; i < 8; ++i) (often += bytes) += i < 7 ? ',' : ']';
  requireLinear(often.size(), [&] { place::readDocument(often, std::nullopt, [](const auto&) {}); });
  return 0;
}
