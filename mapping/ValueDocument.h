// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MAPPING_VALUEDOCUMENT_H
#define ZRCORE_MAPPING_VALUEDOCUMENT_H

#include <ZRCore/ZROHMDocument.h>

/// A value as a document, for as long as the value stays as it is. Places are addresses: of values, elements, entries.
class ValueDocument final : public ZROHMDocument {
 public:
  explicit ValueDocument(const ZROHMValue& root) : root_(root) {}

  Place root() const override { return placeOf(root_); }
  ZROHMPart partAt(Place place) const override;
  Content contentOf(Place container) const override;
  Place nextElement(Content& content) const override;
  Place nextEntry(Content& content, std::string_view& key) const override;
  ZROHMValue valueAt(Place place) const override { return at<ZROHMValue>(place); }

  template <class Thing>
  static Place placeOf(const Thing& thing) {
    return reinterpret_cast<std::uintptr_t>(&thing);
  }

 private:
  template <class Thing>
  static const Thing& at(Place place) {
    return *reinterpret_cast<const Thing*>(static_cast<std::uintptr_t>(place));
  }

  const ZROHMValue& root_;
};

#endif
