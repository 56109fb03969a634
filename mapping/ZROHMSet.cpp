// SPDX-License-Identifier: Apache-2.0
// The way in: from dictionaries to objects, by the plan that is made of a type's tables.
#include <ZRCore/ZROHMRegistry.h>

#include <array>
#include <sstream>
#include <utility>

#include "TableEntries.h"
#include "ValueDocument.h"
#include "ZROHMPlan.h"

namespace {

using Kind = ZROHMValue::Kind;
using Place = ZROHMDocument::Place;

/// How many hooked sets this thread is inside of. Asked once for all sets of an object: looking up what is a thread's
/// own takes as long as looking up a key.
[[gnu::noinline]] std::size_t& nestedSets() {
  thread_local std::size_t sets = 0;
  return sets;
}

/// A hooked set, and those in it to which the tables lead on.
class NestedSet {
 public:
  explicit NestedSet(std::size_t& sets) : sets_(sets), outer_(sets) { ++sets_; }
  ~NestedSet() { sets_ = outer_; }
  NestedSet(const NestedSet&) = delete;
  NestedSet& operator=(const NestedSet&) = delete;
  void enter() { ++sets_; }
  bool isTooDeep() const { return sets_ > kDeepestNesting; }

 private:
  std::size_t& sets_;
  const std::size_t outer_;
};

std::string reason(const NSObject& object, const char* what, std::string_view key) {
  std::ostringstream text;
  text << "[<" << object.classInfo().name() << ' ' << static_cast<const void*>(&object) << "> " << what << ' ' << key
       << '.';
  return text.str();
}

/// What is to be set: a value that is there.
class ReadyValue {
 public:
  explicit ReadyValue(const ZROHMValue& value) : value_(value) {}

  Kind kind() const { return value_.kind(); }
  const ZROHMValue& value() const { return value_; }
  ZROHMPart adapted(ZROHMPartAdapter::Adapt adapt) const {
    const ValueDocument document(value_);
    return adapt(document, document.root());
  }
  void storeInto(NSObject& object, const ZROHMProperty& property) const { property.set(object, value_); }

  void fill(NSObject& instance) const { instance.setValuesForKeysWithDictionary(*value_.dictionary()); }
  bool beginsWithDictionary() const {
    return !value_.array()->empty() && value_.array()->front().dictionary() != nullptr;
  }
  std::size_t size() const { return value_.array() != nullptr ? value_.array()->size() : value_.dictionary()->size(); }
  template <class Take>
  void forEachElement(Take take) const {
    for (const ZROHMValue& element : *value_.array()) take(ReadyValue(element));
  }
  template <class Take>
  void forEachEntry(Take take) const {
    for (const auto& [key, value] : *value_.dictionary()) take(key, ReadyValue(value));
  }

 private:
  const ZROHMValue& value_;
};

/// What is to be set: something in a document, of which a value is made only where one is wanted.
class DocumentPart {
 public:
  DocumentPart(const ZROHMDocument& document, Place place)
      : document_(document), place_(place), part_(document.partAt(place)) {}

  Kind kind() const { return part_.kind; }
  ZROHMValue value() const { return document_.valueAt(place_); }
  ZROHMPart adapted(ZROHMPartAdapter::Adapt adapt) const { return adapt(document_, place_); }
  void storeInto(NSObject& object, const ZROHMProperty& property) const {
    if (part_.kind == Kind::string && property.setPart) {
      property.setPart(object, part_);
    } else if (part_.kind == Kind::number) {
      property.set(object, part_.value);
    } else {
      property.set(object, value());
    }
  }

  void fill(NSObject& instance) const { ZROHMSetValuesFromDocument(instance, document_, place_); }
  bool beginsWithDictionary() const {
    ZROHMDocument::Content content = document_.contentOf(place_);
    return !content.isAtEnd() && document_.partAt(document_.nextElement(content)).kind == Kind::dictionary;
  }
  std::size_t size() const { return 0; }  // not known before it is counted
  template <class Take>
  void forEachElement(Take take) const {
    for (ZROHMDocument::Content content = document_.contentOf(place_); !content.isAtEnd();) {
      take(DocumentPart(document_, document_.nextElement(content)));
    }
  }
  template <class Take>
  void forEachEntry(Take take) const {
    // By way of a value, in which each key is there once.
    const ZROHMValue dictionary = value();
    ReadyValue(dictionary).forEachEntry(take);
  }

 private:
  const ZROHMDocument& document_;
  const Place place_;
  const ZROHMPart part_;
};

/// A new instance of `type`, filled; null when the type makes no instances.
template <class Source>
std::shared_ptr<NSObject> filledInstance(const ZROHMClassInfo& type, const Source& content) {
  auto instance = type.makeInstance();
  if (instance) content.fill(*instance);
  return instance;
}

/// Objects for the dictionaries in `elements`, in order. Whatever else stands between them is skipped.
template <class Source>
ZROHMArray filledElements(const ZROHMClassInfo& elementType, const Source& elements) {
  ZROHMArray filled;
  filled.reserve(elements.size());
  elements.forEachElement([&](const auto& element) {
    if (element.kind() == Kind::dictionary) filled.emplace_back(filledInstance(elementType, element));
  });
  return filled;
}

template <class Source>
ZROHMDictionary filledEntries(const ZROHMClassInfo& valueType, const Source& entries) {
  ZROHMDictionary filled;
  filled.reserve(entries.size());
  entries.forEachEntry([&](const std::string& key, const auto& element) {
    if (element.kind() == Kind::dictionary) filled.set(key, filledInstance(valueType, element));
  });
  return filled;
}

ZROHMValue valueOf(const ZROHMPart& part) {
  if (!part.value.isNull()) return part.value;
  if (part.kind == Kind::string) return part.text;
  return part.kind == Kind::coordinate ? ZROHMValue(part.coordinate) : ZROHMValue();
}

/// The basic set into the row's target.
void storeUnderTarget(NSObject& object, const ZROHMPlan::Row& row, const ZROHMValue& value) {
  if (row.targetProperty == nullptr || value.isNull()) {
    zrohm_setValueForKey(object, value, row.target);
  } else {
    row.targetProperty->set(object, value);
  }
}

template <class Source>
void storeAdapted(NSObject& object, const ZROHMPlan::Row& row, const Source& source) {
  if (row.adaptPart == nullptr) return storeUnderTarget(object, row, (*row.adapter)(source.value()));
  const ZROHMPart part = source.adapted(row.adaptPart);
  const bool isPlain = part.kind == Kind::string || part.kind == Kind::coordinate;
  if (isPlain && row.targetProperty != nullptr && row.targetProperty->setPart) {
    row.targetProperty->setPart(object, part);
  } else {
    storeUnderTarget(object, row, valueOf(part));
  }
}

/// Stores what an adapter, or a table of classes, or a nested type takes. @return whether one did.
template <class Source>
bool storeConverted(NSObject& object, const ZROHMPlan::Row& row, const Source& source) {
  if (row.adapter != nullptr) {
    storeAdapted(object, row, source);
    return true;
  }
  if (source.kind() == Kind::array) {
    // Only the first element decides whether these are objects: a list is all of one kind.
    if (row.elementType == nullptr || !source.beginsWithDictionary()) return false;
    storeUnderTarget(object, row, filledElements(*row.elementType, source));
    return true;
  }
  if (source.kind() != Kind::dictionary) return false;
  if (row.valueType != nullptr) {
    storeUnderTarget(object, row, filledEntries(*row.valueType, source));
    return true;
  }
  const ZROHMClassInfo* const nested = row.declaredClass != nullptr ? &row.declaredClass() : nullptr;
  if (nested == nullptr || !nested->conformsToMappable()) return false;
  storeUnderTarget(object, row, filledInstance(*nested, source));
  return true;
}

/// The hooked set on an object of a mappable type. What no conversion takes is stored under the key as given, even
/// where the table maps that key elsewhere: a set that names a property sets that property. Else the table leads on.
template <class Source>
void setByRow(NSObject& object, const ZROHMPlan::Row* row, const Source& source, std::size_t& sets) {
  NestedSet nested(sets);
  while (row != nullptr && !nested.isTooDeep()) {
    if (storeConverted(object, *row, source)) return;
    if (row->keyProperty != nullptr) {
      if (source.kind() == Kind::null) return zrohm_setValueForKey(object, nullptr, row->key);
      return source.storeInto(object, *row->keyProperty);
    }
    row = row->next;
    nested.enter();
  }
}

void setReadyValue(NSObject& object, const ZROHMValue& value, std::string_view key, std::size_t& sets) {
  const ZROHMClassInfo& type = object.classInfo();
  if (type.conformsToMappable()) {
    setByRow(object, ZROHMPlan::of(type).find(key), ReadyValue(value), sets);
    return;
  }
  const NestedSet nested(sets);
  if (!nested.isTooDeep()) zrohm_setValueForKey(object, value, key);
}

/// The entries of a dictionary that a plan knows, each key once.
class KnownEntries {
 public:
  struct Entry {
    const ZROHMPlan::Row* row;
    Place place;
  };

  KnownEntries(const ZROHMPlan& plan, const ZROHMDocument& document, Place dictionary) : plan_(plan) {
    if (plan.rowCount() > kMostOnStack) {
      manyEntries_.resize(plan.rowCount());
      manyPositions_.resize(plan.rowCount());
      entries_ = manyEntries_.data();
      positions_ = manyPositions_.data();
    }
    for (ZROHMDocument::Content content = document.contentOf(dictionary); !content.isAtEnd();) {
      std::string_view key;
      const Place place = document.nextEntry(content, key);
      if (const ZROHMPlan::Row* const row = plan.find(key)) add(*row, place);
    }
  }
  KnownEntries(const KnownEntries&) = delete;
  KnownEntries& operator=(const KnownEntries&) = delete;

  const Entry* begin() const { return entries_; }
  const Entry* end() const { return entries_ + size_; }

 private:
  static constexpr std::size_t kMostOnStack = 64;

  void add(const ZROHMPlan::Row& row, Place place) {
    std::uint32_t& position = positions_[plan_.numberOf(row)];
    if (position == 0) {
      entries_[size_] = {&row, place};
      position = static_cast<std::uint32_t>(++size_);
    } else {
      entries_[position - 1].place = place;
    }
  }

  const ZROHMPlan& plan_;
  std::array<Entry, kMostOnStack> fewEntries_;  // NOLINT: each is written before it is read
  std::array<std::uint32_t, kMostOnStack> fewPositions_{};
  std::vector<Entry> manyEntries_;
  std::vector<std::uint32_t> manyPositions_;
  Entry* entries_ = fewEntries_.data();
  std::uint32_t* positions_ = fewPositions_.data();  // by the row's number; from 1; 0: not there
  std::size_t size_ = 0;
};

/// The entries of `dictionary` behind that key, under tables that were changed by a set before them.
void setRest(NSObject& object, const ZROHMDictionary& dictionary, std::string_view lastKey) {
  const std::size_t first = dictionary.indexOf(lastKey) + 1;
  for (auto entry = dictionary.begin() + static_cast<std::ptrdiff_t>(first); entry != dictionary.end(); ++entry) {
    object.setValueForKey(entry->second, entry->first);
  }
}

}  // namespace

void NSObject::setValueForKey(const ZROHMValue& value, std::string_view key) {
  setReadyValue(*this, value, key, nestedSets());
}

void NSObject::setValueForUndefinedKey(const ZROHMValue& value, std::string_view key) {
  if (classInfo().conformsToMappable()) {
    zrohm_setValueForUndefinedKey_f(*this, value, key);
  } else {
    zrohm_setValueForUndefinedKey(*this, value, key);
  }
}

void NSObject::setValuesForKeysWithDictionary(const ZROHMDictionary& dictionary) {
  std::size_t& sets = nestedSets();
  for (const auto& [key, value] : dictionary) setReadyValue(*this, value, key, sets);
}

void ZROHMSetValuesFromDocument(NSObject& object, const ZROHMDocument& document, Place dictionary) {
  const ZROHMClassInfo& type = object.classInfo();
  if (!type.conformsToMappable()) {
    const ZROHMValue content = document.valueAt(dictionary);
    if (content.dictionary() != nullptr) object.setValuesForKeysWithDictionary(*content.dictionary());
    return;
  }
  if (document.partAt(dictionary).kind != Kind::dictionary) return;
  const ZROHMPlan& plan = ZROHMPlan::of(type);
  std::size_t& sets = nestedSets();
  for (const auto& [row, place] : KnownEntries(plan, document, dictionary)) {
    setByRow(object, row, DocumentPart(document, place), sets);
    if (!plan.isCurrent()) return setRest(object, *document.valueAt(dictionary).dictionary(), row->key);
  }
}

ZROHMValue ZROHMPartAdapter::operator()(const ZROHMValue& value) const {
  return valueOf(ReadyValue(value).adapted(adapt));
}

bool zrohm_setValueForKey_f(NSObject& object, const ZROHMValue& value, std::string_view key) {
  const ZROHMPlan::Row* const row = ZROHMPlan::of(object.classInfo()).find(key);
  return row == nullptr || !storeConverted(object, *row, ReadyValue(value));
}

void zrohm_setValueForUndefinedKey_f(NSObject& object, const ZROHMValue& value, std::string_view key) {
  const ZROHMPlan::Row* const row = ZROHMPlan::of(object.classInfo()).find(key);
  if (row == nullptr || row->mapped == nullptr) return;
  // The hooked set applies the adapter once more: the header says so to those who write adapters.
  object.setValueForKey(row->adapter != nullptr ? (*row->adapter)(value) : value, *row->mapped);
}

void zrohm_setValueForKey(NSObject& object, const ZROHMValue& value, std::string_view key) {
  const ZROHMProperty* const property = object.classInfo().propertyNamed(key);
  if (property == nullptr || !property->set) {
    object.setValueForUndefinedKey(value, key);
    return;
  }
  if (value.isNull() && property->kind == ZROHMPropertyKind::scalar) {
    throw NSInvalidArgumentException(
        reason(object, "setNilValueForKey:]: nothing cannot be stored into the scalar property", key), key);
  }
  property->set(object, value);
}

void zrohm_setValueForUndefinedKey(NSObject& object, const ZROHMValue&, std::string_view key) {
  throw NSUndefinedKeyException(
      reason(object, "setValue:forUndefinedKey:]: this class is not key value coding-compliant for the key", key), key);
}
