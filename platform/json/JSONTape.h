// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_JSON_JSONTAPE_H
#define ZRCORE_PLATFORM_JSON_JSONTAPE_H

#include <ZRCore/ZROHMDocument.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

/// A document as simdjson leaves it: one list of words, each a value or its mark, in the order of the document. A mark
/// has its kind in the highest eight bits and a position in the others: of an array or an object that of what stands
/// behind its end, of a text that of its bytes (simdjson's doc/tape.md).
///
/// It reads only what the careful reader (JSON.h) would read, to the same values, and tells no faults: what it refuses
/// is the careful reader's. One thread at a time.
class JSONTape {
 public:
  JSONTape();
  ~JSONTape();
  JSONTape(const JSONTape&) = delete;
  JSONTape& operator=(const JSONTape&) = delete;

  /// Takes a document in place of the last one. @return whether it was read. The bytes are not needed any more then.
  bool read(std::string_view bytes, std::uint64_t mostValues);

  /// Whether the document is neither an array nor an object.
  bool isFragment() const { return kindAt(kRoot) != '[' && kindAt(kRoot) != '{'; }

  /// @name The document, as ZROHMDocument tells it
  /// Its own value stands at `kRoot`.
  /// @{
  using Content = ZROHMDocument::Content;
  ZROHMPart partAt(std::size_t place) const;
  Content contentOf(std::size_t container) const;
  std::size_t nextElement(Content& content) const;
  std::size_t nextEntry(Content& content, std::string_view& key) const;
  ZROHMValue valueAt(std::size_t place) const;
  /// @}

  /// Whether the memory that it keeps for the next document is little.
  bool isSmall() const;

  static constexpr std::size_t kRoot = 1;

 private:
  struct Parser;

  char kindAt(std::size_t place) const { return static_cast<char>(words_[place] >> 56U); }
  /// What stands behind the array or object there.
  std::size_t behind(std::size_t place) const { return words_[place] & 0xFFFFFFFF; }
  /// How many elements or entries the array or object there has, up to 2^24 - 1.
  std::size_t countAt(std::size_t place) const { return words_[place] >> 32U & 0xFFFFFF; }
  /// What stands behind the value there.
  std::size_t after(std::size_t place) const;
  std::string_view textAt(std::size_t place) const;
  ZROHMValue scalarAt(std::size_t place) const;

  std::unique_ptr<Parser> parser_;
  const std::uint64_t* words_ = nullptr;
  const char* texts_ = nullptr;
};

#endif
