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

/// A document on a tape, which goes back to its rack.
class TapeDocument final : public ZROHMDocument {
 public:
  TapeDocument(std::shared_ptr<TapeRack> rack, std::unique_ptr<JSONTape> tape)
      : rack_(std::move(rack)), tape_(std::move(tape)) {}
  ~TapeDocument() override { rack_->putBack(std::move(tape_)); }
  TapeDocument(const TapeDocument&) = delete;
  TapeDocument& operator=(const TapeDocument&) = delete;

  Place root() const override { return JSONTape::kRoot; }
  ZROHMPart partAt(Place place) const override { return tape_->partAt(place); }
  Content contentOf(Place container) const override { return tape_->contentOf(container); }
  Place nextElement(Content& content) const override { return tape_->nextElement(content); }
  Place nextEntry(Content& content, std::string_view& key) const override { return tape_->nextEntry(content, key); }
  ZROHMValue valueAt(Place place) const override { return tape_->valueAt(place); }

 private:
  std::shared_ptr<TapeRack> rack_;
  std::unique_ptr<JSONTape> tape_;
};

class JSONService final : public ZRJSONService, public ZRJSONDocuments {
 public:
  explicit JSONService(std::uint64_t mostValues) : mostValues_(mostValues) {}

  std::variant<ZROHMValue, NSError> valueFromJSON(std::string_view bytes, ZRJSONFragments fragments) const override {
    auto tape = tapeOf(bytes, fragments);
    if (!tape) return readJSONCarefully(bytes, fragments, mostValues_);
    ZROHMValue value = tape->valueAt(JSONTape::kRoot);
    rack_->putBack(std::move(tape));
    return value;
  }
  std::variant<std::unique_ptr<const ZROHMDocument>, NSError> documentFromJSON(
      std::string_view bytes, ZRJSONFragments fragments) const override {
    if (auto tape = tapeOf(bytes, fragments)) return std::make_unique<const TapeDocument>(rack_, std::move(tape));
    auto read = readJSONCarefully(bytes, fragments, mostValues_);
    if (NSError* const error = std::get_if<NSError>(&read)) return std::move(*error);
    return ZROHMDocumentOfValue(std::get<ZROHMValue>(std::move(read)));
  }
  std::variant<std::string, NSError> JSONFromValue(const ZROHMValue& value, ZRJSONLayout layout) const override {
    return writeJSON(value, layout);
  }

 private:
  /// The document on a tape; null where it is the careful reader's.
  std::unique_ptr<JSONTape> tapeOf(std::string_view bytes, ZRJSONFragments fragments) const {
    auto tape = rack_->take();
    const bool isRead = tape->read(bytes, mostValues_);
    if (isRead && (fragments == ZRJSONFragments::allowed || !tape->isFragment())) return tape;
    rack_->putBack(std::move(tape));
    return nullptr;
  }

  const std::uint64_t mostValues_;
  const std::shared_ptr<TapeRack> rack_ = std::make_shared<TapeRack>();
};

}  // namespace

std::shared_ptr<ZRJSONService> ZRMakeJSONService(std::uint64_t mostValues) {
  return std::make_shared<JSONService>(mostValues);
}
