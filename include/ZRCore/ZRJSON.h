// SPDX-License-Identifier: Apache-2.0
/// @file
/// The JSON service for hosts, and documents of any size part by part. Link ZRCore::JSON.
#ifndef ZRCORE_ZRJSON_H
#define ZRCORE_ZRJSON_H

#include <ZRCore/ZRDocumentLimits.h>
#include <ZRCore/ZRJSONService.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Reads and writes JSON. Without state; any thread.
/// @param mostValues  of a document that is read, its keys included: a longer one is an error (ZRDocumentErrorDomain,
///                    ZRDocumentErrorTooManyValues)
std::shared_ptr<ZRJSONService> ZRMakeJSONService(std::uint64_t mostValues = ZRMostDocumentValues);

/// Hears the parts of a document in their order. An object is `beginObject`, for each entry `key` and its value, then
/// `endObject`; an array is its elements between `beginArray` and `endArray`.
class ZRJSONListener {
 public:
  virtual ~ZRJSONListener();

  virtual void beginObject() = 0;
  virtual void key(std::string key) = 0;
  virtual void endObject() = 0;
  virtual void beginArray() = 0;
  virtual void endArray() = 0;
  /// Null, a boolean, a number or a text.
  virtual void scalar(ZROHMValue value) = 0;
};

/// Reads a document part by part, by the rules of `ZRJSONService::valueFromJSON`, of any number of values. It holds no
/// more of the document than its longest text and the levels that are open.
/// @return what is wrong with the document, if anything; the listener has heard what stands before that.
std::optional<NSError> ZRReadJSON(std::string_view bytes, ZRJSONFragments fragments, ZRJSONListener& listener);

/// Makes a value of the parts that it hears.
class ZRJSONBuilder final : public ZRJSONListener {
 public:
  void beginObject() override { levels_.emplace_back(); }
  void key(std::string key) override { levels_.back().key = std::move(key); }
  void endObject() override;
  void beginArray() override { levels_.emplace_back().isArray = true; }
  void endArray() override;
  void scalar(ZROHMValue value) override { add(std::move(value)); }

  /// The value, once it is whole. The builder then begins anew.
  ZROHMValue take();

 private:
  struct Level {
    bool isArray = false;
    ZROHMArray elements;
    ZROHMDictionary entries;
    std::string key;
  };

  void add(ZROHMValue&& value);

  std::vector<Level> levels_;
  ZROHMValue root_;
};

#endif
