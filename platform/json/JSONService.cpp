// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSON.h>

#include <atomic>
#include <memory>

#include "JSON.h"
#include "JSONTape.h"

namespace {

/// Keeps one tape between documents, because its memory costs more than reading a short one. Any thread.
class TapeRack {
 public:
  ~TapeRack() { delete spare_.load(); }

  std::unique_ptr<JSONTape> take() {
    std::unique_ptr<JSONTape> tape(spare_.exchange(nullptr));
    return tape ? std::move(tape) : std::make_unique<JSONTape>();
  }
  void putBack(std::unique_ptr<JSONTape> tape) {
    if (tape->isSmall()) delete spare_.exchange(tape.release());
  }

 private:
  std::atomic<JSONTape*> spare_{nullptr};
};

class JSONService final : public ZRJSONService {
 public:
  explicit JSONService(std::uint64_t mostValues) : mostValues_(mostValues) {}

  std::variant<ZROHMValue, NSError> valueFromJSON(std::string_view bytes, ZRJSONFragments fragments) const override {
    auto tape = rack_.take();
    if (!tape->read(bytes, mostValues_) || (tape->isFragment() && fragments == ZRJSONFragments::refused)) {
      return readJSONCarefully(bytes, fragments, mostValues_);
    }
    ZROHMValue value = tape->valueAt(JSONTape::kRoot);
    rack_.putBack(std::move(tape));
    return value;
  }
  std::variant<std::string, NSError> JSONFromValue(const ZROHMValue& value, ZRJSONLayout layout) const override {
    return writeJSON(value, layout);
  }

 private:
  const std::uint64_t mostValues_;
  mutable TapeRack rack_;
};

}  // namespace

std::shared_ptr<ZRJSONService> ZRMakeJSONService(std::uint64_t mostValues) {
  return std::make_shared<JSONService>(mostValues);
}
