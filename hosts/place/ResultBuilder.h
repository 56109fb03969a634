// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_PLACE_RESULTBUILDER_H
#define ZRCORE_HOSTS_PLACE_RESULTBUILDER_H

#include <ZRCore/ZRJSON.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace place {

/// Makes the value of one result and keeps it small, whatever the service sends. Of an array it takes the first
/// elements: a position has two numbers, a country's outline millions. In the place of a text that is longer than any
/// name it puts an empty array, of which no part of a place can be made. Of the rest it takes a megabyte.
class ResultBuilder final : public ZRJSONListener {
 public:
  static constexpr std::size_t kMostBytes = std::size_t{1} << 20U;

  void beginObject() override;
  void key(std::string key) override;
  void endObject() override;
  void beginArray() override;
  void endArray() override;
  void scalar(ZROHMValue value) override;

  /// Whether an object or array has begun and not ended.
  bool isOpen() const { return !elements_.empty() || skipped_ > 0; }

  /// The value, once it is whole; nothing for one that took more than `kMostBytes`. The builder then begins anew.
  std::optional<ZROHMValue> take();

 private:
  bool charge(std::size_t bytes);
  bool takes(std::size_t bytes);
  void begin(bool isArray);
  bool end();

  ZRJSONBuilder builder_;
  std::vector<std::optional<std::size_t>> elements_;  // of each open array, so far; nothing for an object
  std::size_t skipped_ = 0;                           // open levels that are not kept, inside the others
  std::size_t bytes_ = 0;
};

}  // namespace place

#endif
