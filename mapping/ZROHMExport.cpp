// SPDX-License-Identifier: Apache-2.0
// The way out: from objects to dictionaries.
#include <ZRCore/ZROHMRegistry.h>

#include <algorithm>
#include <sstream>
#include <utility>

#include "TableEntries.h"

namespace {

using Slot = ZROHMRegistry::Slot;

/// An export that this thread is inside of. They are chained, and not kept in a list, because a list of the thread's is
/// gone before a host's last static object, which may export something too.
class NestedExport {
 public:
  explicit NestedExport(const NSObject& object)
      : object_(object), outer_(innermost_), depth_(outer_ != nullptr ? outer_->depth_ + 1 : 1) {
    innermost_ = this;
  }
  ~NestedExport() { innermost_ = outer_; }
  NestedExport(const NestedExport&) = delete;
  NestedExport& operator=(const NestedExport&) = delete;

  /// Whether an export of `object` may begin inside those of this thread.
  static bool mayHold(const NSObject& object) {
    const NestedExport* nested = innermost_;
    if (nested != nullptr && nested->depth_ >= kDeepestNesting) return false;
    while (nested != nullptr && &nested->object_ != &object) nested = nested->outer_;
    return nested == nullptr;
  }

 private:
  static inline thread_local const NestedExport* innermost_ = nullptr;

  const NSObject& object_;
  const NestedExport* const outer_;
  const std::size_t depth_;
};

/// Whether the value refers to an object that leaves as a dictionary.
bool isExportable(const ZROHMValue& value) {
  const NSObject* const object = value.object().get();
  return object != nullptr && object->classInfo().conformsToMappable() && NestedExport::mayHold(*object);
}

void exportObject(ZROHMValue& value) {
  const std::shared_ptr<NSObject> object = value.object();
  value = object->dictionaryWithValuesForKeys(*ZROHMMappableKeys(object->classInfo()));
}

/// Turns an object, or the objects directly in an array or a dictionary, into dictionaries. What holds none is not
/// touched, so that it stays shared.
void exportObjectsIn(ZROHMValue& value) {
  if (isExportable(value)) {
    exportObject(value);
  } else if (const ZROHMArray* const elements = value.array()) {
    if (std::none_of(elements->begin(), elements->end(), isExportable)) return;
    for (ZROHMValue& element : value.modifiableArray()) {
      if (isExportable(element)) exportObject(element);
    }
  } else if (const ZROHMDictionary* const entries = value.dictionary()) {
    if (std::none_of(entries->begin(), entries->end(), [](const auto& entry) { return isExportable(entry.second); })) {
      return;
    }
    ZROHMDictionary& exported = value.modifiableDictionary();
    for (std::size_t i = 0; i < exported.size(); ++i) {
      if (isExportable(exported.valueAt(i))) exportObject(exported.valueAt(i));
    }
  }
}

/// Each mapped property under the first source key that maps to it, in the order of the table; then the others under
/// their own names, which replace what a source key of the same text brought.
ZROHMDictionary underSourceKeys(const ZROHMTable& mapping, ZROHMDictionary properties) {
  ZROHMDictionary result;
  result.reserve(properties.size());
  std::vector<bool> isTaken(properties.size());
  for (const auto& [sourceKey, entry] : mapping) {
    const auto* const property = std::get_if<std::string>(&entry);
    const std::size_t position = property != nullptr ? properties.indexOf(*property) : properties.size();
    if (position >= properties.size() || isTaken[position]) continue;
    isTaken[position] = true;
    result.set(sourceKey, std::move(properties.valueAt(position)));
  }
  std::size_t position = 0;
  for (const auto& [name, value] : properties) {
    if (!isTaken[position++]) result.set(name, value);
  }
  return result;
}

}  // namespace

ZROHMDictionary NSObject::dictionaryWithValuesForKeys(const std::vector<std::string>& keys) const {
  const NestedExport nested(*this);
  const ZROHMClassInfo& type = classInfo();
  ZROHMDictionary result = zrohm_dictionaryWithValuesForKeys(*this, keys);
  std::size_t position = 0;
  for (const std::string& key : keys) {
    if (result.indexOf(key) != position) continue;  // listed twice
    ZROHMValue& value = result.valueAt(position++);
    exportObjectsIn(value);
    if (const ZROHMAdapter* const adapter = adapterIn(type, Slot::reverseAdapter, key)) value = (*adapter)(value);
  }
  const ZROHMTable* const mapping = ZROHMRegistry::table(type, Slot::mapping);
  return mapping != nullptr ? underSourceKeys(*mapping, std::move(result)) : result;
}

ZROHMDictionary zrohm_dictionaryWithValuesForKeys(const NSObject& object, const std::vector<std::string>& keys) {
  const ZROHMClassInfo& type = object.classInfo();
  ZROHMDictionary values;
  values.reserve(keys.size());
  for (const std::string& key : keys) {
    const ZROHMProperty* const property = type.propertyNamed(key);
    if (property == nullptr || !property->get) {
      std::ostringstream reason;
      reason << "[<" << type.name() << ' ' << static_cast<const void*>(&object)
             << "> valueForUndefinedKey:]: this class is not key value coding-compliant for the key " << key << '.';
      throw NSUndefinedKeyException(reason.str(), key);
    }
    values.set(key, property->get(object));
  }
  return values;
}
