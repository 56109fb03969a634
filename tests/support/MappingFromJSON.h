// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_MAPPINGFROMJSON_H
#define ZRCORE_TESTS_SUPPORT_MAPPINGFROMJSON_H

#include <ZRCore/ZRJSON.h>

#include <string>

#include "MappingWorld.h"

/// Fills an object from a JSON document that has each key of the dictionary twice: first in its order with a value that
/// does not count, then in the opposite order with its own.
inline void fillFromJSON(NSObject& object, const ZROHMDictionary& content) {
  static const auto service = ZRMakeJSONService();
  const auto json = [](const ZROHMValue& value) {
    return std::get<std::string>(service->JSONFromValue(value, ZRJSONLayout::compact));
  };
  std::string first = "{", second;
  for (const auto& [key, value] : content) {
    first += json(key) + ":[{}],";
    second = json(key) + ":" + json(value) + "," + second;
  }
  std::string document = first + second;
  if (!content.empty()) document.pop_back();
  const auto read = ZRDocumentFromJSON(*service, document + "}", ZRJSONFragments::refused);
  ZROHMSetValuesFromDocument(object, *std::get<0>(read), std::get<0>(read)->root());
}

#endif
