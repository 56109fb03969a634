// SPDX-License-Identifier: Apache-2.0
// Addresses for tests.
#ifndef ZRCORE_TESTS_SUPPORT_ADDRESSVALUES_H
#define ZRCORE_TESTS_SUPPORT_ADDRESSVALUES_H

#include <ZRCore/ZRGeoAddress.h>
#include <ZRCore/ZRGeometry.h>
#include <ZRCore/ZRJSON.h>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string_view>
#include <variant>

inline bool operator==(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  return a.latitude == b.latitude && a.longitude == b.longitude;
}
inline void PrintTo(CLLocationCoordinate2D coordinate, std::ostream* out) {
  *out << '(' << coordinate.latitude << ", " << coordinate.longitude << ')';
}

/// The value in a JSON text, null if the text is damaged.
inline ZROHMValue valueOf(std::string_view json) {
  auto result = ZRMakeJSONService()->valueFromJSON(json, ZRJSONFragments::allowed);
  const ZROHMValue* const value = std::get_if<ZROHMValue>(&result);
  EXPECT_NE(value, nullptr) << json;
  return value != nullptr ? *value : ZROHMValue();
}

inline std::shared_ptr<ZRGeoAddress> addressOf(const ZROHMDictionary& dictionary) {
  return ZRGeoAddress::geoAddressFromDictionary(dictionary);
}
inline std::shared_ptr<ZRGeoAddress> addressOf(std::string_view json) {
  const ZROHMValue value = valueOf(json);
  return addressOf(value.dictionary() != nullptr ? *value.dictionary() : ZROHMDictionary());
}

#endif
