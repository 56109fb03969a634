// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZROHMDocument.h>

#include <utility>

#include "ValueDocument.h"

namespace {

class OwnedValueDocument final : public ZROHMDocument {
 public:
  explicit OwnedValueDocument(ZROHMValue value) : value_(std::move(value)) {}

  Place root() const override { return document_.root(); }
  ZROHMPart partAt(Place place) const override { return document_.partAt(place); }
  Content contentOf(Place container) const override { return document_.contentOf(container); }
  Place nextElement(Content& content) const override { return document_.nextElement(content); }
  Place nextEntry(Content& content, std::string_view& key) const override { return document_.nextEntry(content, key); }
  ZROHMValue valueAt(Place place) const override { return document_.valueAt(place); }

 private:
  const ZROHMValue value_;
  const ValueDocument document_{value_};
};

template <class Elements>
ZROHMDocument::Content contentIn(const Elements& elements) {
  if (elements.empty()) return {};
  const auto& first = *elements.begin();
  const ZROHMDocument::Place begin = ValueDocument::placeOf(first);
  return {begin, begin + elements.size() * sizeof first};
}

}  // namespace

ZROHMDocument::~ZROHMDocument() = default;

std::unique_ptr<ZROHMDocument> ZROHMDocumentOfValue(ZROHMValue value) {
  return std::make_unique<OwnedValueDocument>(std::move(value));
}

ZROHMPart ValueDocument::partAt(Place place) const {
  const auto& value = at<ZROHMValue>(place);
  switch (value.kind()) {
    case ZROHMValue::Kind::string:
      return ZROHMPart::of(std::string_view(*value.string()));
    case ZROHMValue::Kind::coordinate:
      return ZROHMPart::of(*value.coordinate());
    case ZROHMValue::Kind::array:
    case ZROHMValue::Kind::dictionary:
      return {.kind = value.kind()};
    default:
      return {.kind = value.kind(), .value = value};
  }
}

ZROHMDocument::Content ValueDocument::contentOf(Place container) const {
  const auto& value = at<ZROHMValue>(container);
  if (const ZROHMArray* const array = value.array()) return contentIn(*array);
  if (const ZROHMDictionary* const dictionary = value.dictionary()) return contentIn(*dictionary);
  return {};
}

ZROHMDocument::Place ValueDocument::nextElement(Content& content) const {
  return std::exchange(content.next, content.next + sizeof(ZROHMValue));
}

ZROHMDocument::Place ValueDocument::nextEntry(Content& content, std::string_view& key) const {
  const auto& entry = at<ZROHMDictionary::value_type>(content.next);
  content.next += sizeof entry;
  key = entry.first;
  return placeOf(entry.second);
}
