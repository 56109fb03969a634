// SPDX-License-Identifier: Apache-2.0
// Reads any bytes as services' answers in every dialect, and checks what holds for every address.
#include <ZRCore/ZRGeoAddressDialects.h>
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZRPlace.h>

#include <array>
#include <cstdint>

#include "FuzzLaws.h"

namespace {

constexpr std::array kDialects{ZRGeoAddressDialect::documented, ZRGeoAddressDialect::nominatim,
                               ZRGeoAddressDialect::photon, ZRGeoAddressDialect::pelias,
                               ZRGeoAddressDialect::geocodeJSON};

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

void requireSoundIn(const ZROHMValue& result) {
  for (const ZRGeoAddressDialect dialect : kDialects) {
    const ZRGeoAddressReading reading = ZRReadGeoAddress(result, dialect);
    require(reading.address == nullptr || result.dictionary() != nullptr, "only objects are results");
    if (reading.address) requireSound(*reading.address);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto json = ZRMakeJSONService();
  const auto parsed = json->valueFromJSON({reinterpret_cast<const char*>(data), size}, ZRJSONFragments::allowed);
  const ZROHMValue* const document = std::get_if<ZROHMValue>(&parsed);
  if (document == nullptr) return 0;
  requireSoundIn(*document);
  const ZROHMValue* list = document;
  if (const ZROHMDictionary* const entries = document->dictionary()) {
    if (const ZROHMValue* const features = entries->find("features")) list = features;
  }
  if (const ZROHMArray* const results = list->array()) {
    for (const ZROHMValue& result : *results) requireSoundIn(result);
  }
  return 0;
}
