// SPDX-License-Identifier: Apache-2.0
// Any bytes as a JSON document: the quick reader and the careful one say the same of it, what is read once reads the
// same for ever after, and fills any object without harm.
#include <ZRCore/ZRJSON.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "ExactText.h"
#include "FuzzLaws.h"
#include "JSON.h"
#include "MappingModel.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto json = ZRMakeJSONService();
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto read = json->valueFromJSON(bytes, ZRJSONFragments::allowed);
  std::string often = "[";
  for (int i = 0; i < 8; ++i) (often += bytes) += i < 7 ? ',' : ']';
  requireLinear(often.size(), [&] { static_cast<void>(json->valueFromJSON(often, ZRJSONFragments::refused)); });
  const auto careful = readJSONCarefully(bytes, ZRJSONFragments::allowed, ZRMostDocumentValues);
  require(read.index() == careful.index(), "both readers read it, or neither");
  if (const NSError* const error = std::get_if<NSError>(&read)) {
    require(error->userInfo == std::get<NSError>(careful).userInfo, "they tell the same fault");
    return 0;
  }
  const ZROHMValue& value = std::get<ZROHMValue>(read);
  require(exactText(value) == exactText(std::get<ZROHMValue>(careful)), "they read the same value");

  for (const ZRJSONLayout layout : {ZRJSONLayout::compact, ZRJSONLayout::pretty}) {
    const auto written = json->JSONFromValue(value, layout);
    require(std::holds_alternative<std::string>(written), "what was read can be written");
    const auto again = json->valueFromJSON(std::get<std::string>(written), ZRJSONFragments::allowed);
    require(std::holds_alternative<ZROHMValue>(again), "what was written can be read");
    require(std::get<ZROHMValue>(again) == value, "it is the same value");
    require(json->JSONFromValue(std::get<ZROHMValue>(again), layout) == written, "it is the same document");
  }

  if (value.dictionary() == nullptr) return 0;
  static const bool isRegistered = [] {
    ZROHMSetMapping(Item::staticClassInfo(),
                    ZROHMTable{{"n", "name"}, {"c", "count"}, {"loop", "pool"}, {"pool", "loop"}});
    ZROHMSetArrayClasses(Item::staticClassInfo(), ZROHMTable{{"tags", &Item::staticClassInfo()}});
    ZROHMSetDictionaryClasses(Item::staticClassInfo(), ZROHMTable{{"extras", &Item::staticClassInfo()}});
    return true;
  }();
  static_cast<void>(isRegistered);
  Item item;
  try {
    item.setValuesForKeysWithDictionary(*value.dictionary());
  } catch (const NSInvalidArgumentException&) {
    return 0;  // nothing into a number
  } catch (const NSUndefinedKeyException&) {
    require(false, "a mappable object has no undefined keys");
  }
  const auto& keys = *ZROHMMappableKeys(Item::staticClassInfo());
  const ZROHMDictionary exported = item.dictionaryWithValuesForKeys(keys);
  Item copy;
  copy.setValuesForKeysWithDictionary(exported);
  require(ZROHMValue(copy.dictionaryWithValuesForKeys(keys)) == ZROHMValue(exported),
          "what was exported fills an equal object");
  return 0;
}
