// SPDX-License-Identifier: Apache-2.0
/// @file
/// Documents whose parts can be looked at without making values of them.
#ifndef ZRCORE_ZROHMDOCUMENT_H
#define ZRCORE_ZROHMDOCUMENT_H

#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeometry.h>
#include <ZRCore/ZROHMValue.h>

#include <cstdint>
#include <memory>
#include <string_view>

/// One value, by its kind. What does not belong to that kind is empty.
struct ZROHMPart {
  ZROHMValue::Kind kind = ZROHMValue::Kind::null;
  std::string_view text{};              ///< of a text
  CLLocationCoordinate2D coordinate{};  ///< of a coordinate
  /// Of a number or an object. Of a part that stands in no document also an array or a dictionary, and what a text
  /// lives in.
  ZROHMValue value{};

  static ZROHMPart of(std::string_view text) { return {.kind = ZROHMValue::Kind::string, .text = text}; }
  static ZROHMPart of(CLLocationCoordinate2D coordinate) {
    return {.kind = ZROHMValue::Kind::coordinate, .coordinate = coordinate};
  }
  /// Any value. The part keeps it.
  static ZROHMPart of(ZROHMValue value) {
    ZROHMPart part{.kind = value.kind(), .value = std::move(value)};
    if (const std::string* const text = part.value.string()) part.text = *text;
    if (const CLLocationCoordinate2D* const coordinate = part.value.coordinate()) part.coordinate = *coordinate;
    return part;
  }
};

/// A document that was read and is looked at part by part. Any thread; it does not change.
class ZR_EXPORT ZROHMDocument {
 public:
  /// Where a value stands: a number of the document's own.
  using Place = std::uint64_t;
  /// The elements or entries of an array or a dictionary that are still to come.
  struct Content {
    Place next = 0, end = 0;
    bool isAtEnd() const { return next == end; }
  };

  virtual ~ZROHMDocument();

  virtual Place root() const = 0;
  /// The value there, but for what an array or a dictionary holds. Its texts live as long as the document.
  virtual ZROHMPart partAt(Place place) const = 0;
  /// All elements or entries of an array or a dictionary; for every other value none.
  virtual Content contentOf(Place container) const = 0;
  /// Passes over one element of an array, which must not be at its end. @return where the element stands.
  virtual Place nextElement(Content& content) const = 0;
  /// Passes over one entry of a dictionary, as it stands in the document: of entries with the same key the last value
  /// counts, at the first one's place. @return where the entry's value stands.
  virtual Place nextEntry(Content& content, std::string_view& key) const = 0;
  /// Everything there as a value, whose dictionaries have each key once.
  virtual ZROHMValue valueAt(Place place) const = 0;
};

/// A document that is a value. Never null.
ZR_EXPORT std::unique_ptr<ZROHMDocument> ZROHMDocumentOfValue(ZROHMValue value);

#endif
