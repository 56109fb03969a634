// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSON.h>

#include "JSON.h"

namespace {

class JSONService final : public ZRJSONService {
 public:
  std::variant<ZROHMValue, NSError> valueFromJSON(std::string_view bytes, ZRJSONFragments fragments) const override {
    return readJSON(bytes, fragments);
  }
  std::variant<std::string, NSError> JSONFromValue(const ZROHMValue& value, ZRJSONLayout layout) const override {
    return writeJSON(value, layout);
  }
};

}  // namespace

std::shared_ptr<ZRJSONService> ZRMakeJSONService() { return std::make_shared<JSONService>(); }
