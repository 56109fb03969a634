// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZROHMValue.h>

#include <atomic>
#include <utility>

/// Content that does not fit into a value: shared by the copies, counted, and changed only by its last owner.
struct ZROHMValue::Box {
  explicit Box(Tag kindOfContent) : tag(kindOfContent) {}
  std::atomic<std::uint32_t> references{1};
  const Tag tag;
};
struct ZROHMValue::Container : Box {
  using Box::Box;
  Box* nextOrphan = nullptr;
};
struct ZROHMValue::TextBox : Box {
  explicit TextBox(std::string text) : Box(Tag::string), content(std::move(text)) {}
  std::string content;
};
struct ZROHMValue::ArrayBox : Container {
  explicit ArrayBox(ZROHMArray elements) : Container(Tag::array), content(std::move(elements)) {}
  ZROHMArray content;
};
struct ZROHMValue::DictionaryBox : Container {
  explicit DictionaryBox(ZROHMDictionary entries) : Container(Tag::dictionary), content(std::move(entries)) {}
  ZROHMDictionary content;
};
struct ZROHMValue::CoordinateBox : Box {
  explicit CoordinateBox(CLLocationCoordinate2D coordinate) : Box(Tag::coordinate), content(coordinate) {}
  CLLocationCoordinate2D content;
};
struct ZROHMValue::ObjectBox : Box {
  explicit ObjectBox(std::shared_ptr<NSObject> object) : Box(Tag::object), content(std::move(object)) {}
  std::shared_ptr<NSObject> content;
};

ZROHMValue::ZROHMValue(std::string text) {
  payload_.box = new TextBox(std::move(text));
  tag_ = Tag::string;
}

ZROHMValue::ZROHMValue(std::optional<std::string> text) {
  if (text) *this = ZROHMValue(std::move(*text));
}

ZROHMValue::ZROHMValue(ZROHMArray elements) {
  payload_.box = elements.empty() ? nullptr : new ArrayBox(std::move(elements));
  tag_ = Tag::array;
}

ZROHMValue::ZROHMValue(ZROHMDictionary entries) {
  payload_.box = entries.empty() ? nullptr : new DictionaryBox(std::move(entries));
  tag_ = Tag::dictionary;
}

ZROHMValue::ZROHMValue(CLLocationCoordinate2D coordinate) {
  payload_.box = new CoordinateBox(coordinate);
  tag_ = Tag::coordinate;
}

ZROHMValue::ZROHMValue(std::shared_ptr<NSObject> object) {
  if (!object) return;
  payload_.box = new ObjectBox(std::move(object));
  tag_ = Tag::object;
}

ZROHMValue::ZROHMValue(const ZROHMValue& other) noexcept : tag_(other.tag_), payload_(other.payload_) {
  if (isBoxed() && payload_.box) payload_.box->references.fetch_add(1, std::memory_order_relaxed);
}

ZROHMValue& ZROHMValue::operator=(const ZROHMValue& other) noexcept { return *this = ZROHMValue(other); }

ZROHMValue& ZROHMValue::operator=(ZROHMValue&& other) noexcept {
  // `other` is taken before anything is released, because it may lie in what is replaced.
  ZROHMValue taken(std::move(other));
  std::swap(tag_, taken.tag_);
  std::swap(payload_, taken.payload_);
  return *this;
}

void ZROHMValue::release() noexcept {
  if (payload_.box && payload_.box->references.fetch_sub(1, std::memory_order_acq_rel) == 1) destroy(payload_.box);
}

/// Becomes null. A container of which this was the last owner joins the orphans instead of being destroyed here.
void ZROHMValue::giveUpContainer(Box*& orphans) noexcept {
  if (tag_ != Tag::array && tag_ != Tag::dictionary) return;
  tag_ = Tag::null;
  auto* const container = static_cast<Container*>(payload_.box);
  if (!container || container->references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
  container->nextOrphan = orphans;
  orphans = container;
}

void ZROHMValue::destroy(Box* box) noexcept {
  // A list instead of recursion: containers may be nested deeper than the stack is.
  for (Box* orphans = box; orphans != nullptr;) {
    Box* const current = std::exchange(orphans, nullptr);
    switch (current->tag) {
      case Tag::array: {
        auto* const array = static_cast<ArrayBox*>(current);
        orphans = array->nextOrphan;
        for (ZROHMValue& element : array->content) element.giveUpContainer(orphans);
        delete array;
        break;
      }
      case Tag::dictionary: {
        auto* const dictionary = static_cast<DictionaryBox*>(current);
        orphans = dictionary->nextOrphan;
        for (std::size_t i = 0; i < dictionary->content.size(); ++i) {
          dictionary->content.valueAt(i).giveUpContainer(orphans);
        }
        delete dictionary;
        break;
      }
      case Tag::coordinate:
        delete static_cast<CoordinateBox*>(current);
        break;
      case Tag::object:
        delete static_cast<ObjectBox*>(current);
        break;
      default:
        delete static_cast<TextBox*>(current);
        break;
    }
  }
}

ZROHMValue::Kind ZROHMValue::kind() const noexcept {
  switch (tag_) {
    case Tag::null:
      return Kind::null;
    case Tag::string:
      return Kind::string;
    case Tag::array:
      return Kind::array;
    case Tag::dictionary:
      return Kind::dictionary;
    case Tag::coordinate:
      return Kind::coordinate;
    case Tag::object:
      return Kind::object;
    default:
      return Kind::number;
  }
}

std::optional<ZROHMValue::NumberType> ZROHMValue::numberType() const noexcept {
  switch (tag_) {
    case Tag::boolean:
      return NumberType::boolean;
    case Tag::signed64:
      return NumberType::signed64;
    case Tag::unsigned64:
      return NumberType::unsigned64;
    case Tag::real:
      return NumberType::real;
    default:
      return std::nullopt;
  }
}

const std::string* ZROHMValue::string() const noexcept {
  return tag_ == Tag::string ? &static_cast<const TextBox*>(payload_.box)->content : nullptr;
}

const ZROHMArray* ZROHMValue::array() const noexcept {
  static const auto* const none = new ZROHMArray;
  if (tag_ != Tag::array) return nullptr;
  return payload_.box ? &static_cast<const ArrayBox*>(payload_.box)->content : none;
}

const ZROHMDictionary* ZROHMValue::dictionary() const noexcept {
  static const auto* const none = new ZROHMDictionary;
  if (tag_ != Tag::dictionary) return nullptr;
  return payload_.box ? &static_cast<const DictionaryBox*>(payload_.box)->content : none;
}

const CLLocationCoordinate2D* ZROHMValue::coordinate() const noexcept {
  return tag_ == Tag::coordinate ? &static_cast<const CoordinateBox*>(payload_.box)->content : nullptr;
}

const std::shared_ptr<NSObject>& ZROHMValue::object() const noexcept {
  static const auto* const none = new std::shared_ptr<NSObject>;
  return tag_ == Tag::object ? static_cast<const ObjectBox*>(payload_.box)->content : *none;
}

ZROHMArray& ZROHMValue::modifiableArray() {
  const bool isOurs =
      tag_ == Tag::array && payload_.box && payload_.box->references.load(std::memory_order_acquire) == 1;
  if (!isOurs) {
    Box* const box = new ArrayBox(tag_ == Tag::array ? *array() : ZROHMArray());
    *this = nullptr;
    payload_.box = box;
    tag_ = Tag::array;
  }
  return static_cast<ArrayBox*>(payload_.box)->content;
}

ZROHMDictionary& ZROHMValue::modifiableDictionary() {
  const bool isOurs =
      tag_ == Tag::dictionary && payload_.box && payload_.box->references.load(std::memory_order_acquire) == 1;
  if (!isOurs) {
    Box* const box = new DictionaryBox(tag_ == Tag::dictionary ? *dictionary() : ZROHMDictionary());
    *this = nullptr;
    payload_.box = box;
    tag_ = Tag::dictionary;
  }
  return static_cast<DictionaryBox*>(payload_.box)->content;
}
