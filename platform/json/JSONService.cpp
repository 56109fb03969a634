// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSON.h>

#include "JSON.h"

namespace {

class JSONService final : public ZRJSONService {
 public:
  explicit JSONService(std::uint64_t mostValues) : mostValues_(mostValues) {}

  std::variant<ZROHMValue, NSError> valueFromJSON(std::string_view bytes, ZRJSONFragments fragments) const override {
    return readJSON(bytes, fragments, mostValues_);
  }
  std::variant<std::string, NSError> JSONFromValue(const ZROHMValue& value, ZRJSONLayout layout) const override {
    return writeJSON(value, layout);
  }

 private:
  const std::uint64_t mostValues_;
};

}  // namespace

std::shared_ptr<ZRJSONService> ZRMakeJSONService(std::uint64_t mostValues) {
  return std::make_shared<JSONService>(mostValues);
}
