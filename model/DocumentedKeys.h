// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MODEL_DOCUMENTEDKEYS_H
#define ZRCORE_MODEL_DOCUMENTEDKEYS_H

#include <ZRCore/ZRGeoAddressDialects.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Collects the parts of an address under the documented keys.
class DocumentedKeys {
 public:
  void add(const char* key, std::optional<std::string> part) {
    if (part) entries_.set(key, *std::move(part));
  }
  void addPosition(std::optional<double> latitude, std::optional<double> longitude) {
    if (latitude && longitude) entries_.set("latLng", ZROHMDictionary{{"lat", *latitude}, {"lng", *longitude}});
  }
  bool has(std::string_view key) const { return entries_.contains(key); }

  std::shared_ptr<ZRGeoAddress> address() {
    leaveOutWhatHidesTheCity();
    return ZRGeoAddress::geoAddressFromDictionary(entries_);
  }

 private:
  /// The display texts of a country without a state are the country alone.
  void leaveOutWhatHidesTheCity() {
    if (has("city") && !has("street") && !has("state")) entries_.erase("country");
  }

  ZROHMDictionary entries_;
};

/// Reads a dictionary that has the documented keys already.
ZRGeoAddressReading readDocumented(const ZROHMValue& result);

/// The documented keys of parts and positions.
std::vector<std::string_view> documentedRecogniserKeys();

#endif
