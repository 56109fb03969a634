// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_PLACE_OUTLINE_H
#define ZRCORE_HOSTS_PLACE_OUTLINE_H

#include <ZRCore/ZRGeoAddressDialects.h>
#include <ZRCore/ZRJSON.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace place {

/// Whether a list under that key is a list of results, in any case: "results", "Features".
bool isListKey(std::string_view key);

/// Where the results of a document are. What an object is, only its end tells: its last key may be the one by which its
/// dialect is known, or the one of the list that it is wrapped around. So a document is read twice, here for its shape,
/// and one byte is kept of each object and array.
class Outline final : public ZRJSONListener {
 public:
  /// What an object or array is good for.
  struct Use {
    enum class Kind : std::uint8_t {
      unknown,      ///< no key of a dialect is in it, however deep
      listsInside,  ///< the results are in the lists under its list keys
      inside,       ///< the results are somewhere in it
      result        ///< it is a result itself
    };
    Kind kind = Kind::unknown;
    ZRGeoAddressDialect dialect = ZRGeoAddressDialect::documented;  ///< of a result
  };

  /// @param only  the one dialect that counts; nothing: all
  explicit Outline(std::optional<ZRGeoAddressDialect> only);

  void beginObject() override { open(false); }
  void key(std::string key) override;
  void endObject() override { close(); }
  void beginArray() override { open(true); }
  void endArray() override { close(); }
  void scalar(ZROHMValue) override {}

  /// Closes what a damaged document left open.
  void finish();

  /// Of the object or array that is the `position`th to begin, from 0.
  Use use(std::size_t position) const;

 private:
  struct Level {
    std::size_t position;
    bool isArray;
    bool hasList = false;         // under a list key
    bool holdsSomething = false;  // that is good for results
    std::uint32_t dialects = 0;   // a bit for each dialect of which it has a key
    std::string path{};           // what recogniser keys of the object around it begin with here: "properties."
  };

  void open(bool isArray);
  void close();
  std::uint32_t dialectsWith(const std::string& path) const;

  std::map<std::string, std::uint32_t, std::less<>> recogniserKeys_;  // and a bit for each dialect that has it
  std::set<std::string, std::less<>> paths_;                          // before the dots of recogniser keys
  std::vector<Level> levels_;
  std::string key_;  // the last one
  std::vector<std::uint8_t> uses_;
};

}  // namespace place

#endif
