// SPDX-License-Identifier: Apache-2.0
// The way out: from objects to dictionaries.
#include <ZRCore/ZROHMRegistry.h>

#include <algorithm>
#include <sstream>
#include <utility>

#include "TableEntries.h"
#include "ZROHMPlan.h"

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

/// The export of properties that were read, from the one at that position on.
ZROHMDictionary exportedByTables(const ZROHMClassInfo& type, ZROHMDictionary properties, std::size_t position = 0) {
  for (; position < properties.size(); ++position) {
    ZROHMValue& value = properties.valueAt(position);
    exportObjectsIn(value);
    const std::string& name = (properties.begin() + static_cast<std::ptrdiff_t>(position))->first;
    if (const ZROHMAdapter* const adapter = adapterIn(type, Slot::reverseAdapter, name)) value = (*adapter)(value);
  }
  const ZROHMTable* const mapping = ZROHMRegistry::table(type, Slot::mapping);
  return mapping != nullptr ? underSourceKeys(*mapping, std::move(properties)) : properties;
}

/// The export of all properties.
ZROHMDictionary exportedByPlan(const NSObject& object, const ZROHMPlan& plan) {
  const ZROHMClassInfo& type = object.classInfo();
  const auto named = [&type](std::vector<ZROHMValue>& values) {
    ZROHMDictionary properties;
    std::size_t next = 0;
    for (const std::string& name : type.propertyNames()) {
      if (!properties.contains(name)) properties.set(name, std::move(values[next++]));
    }
    return properties;
  };
  std::vector<ZROHMValue> values;
  values.reserve(plan.outlets().size());
  for (const ZROHMPlan::Outlet& outlet : plan.outlets()) values.push_back(outlet.property->get(object));
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!plan.isCurrent()) return exportedByTables(type, named(values), i);  // a getter or an adapter stored a table
    exportObjectsIn(values[i]);
    if (const ZROHMAdapter* const adapter = plan.outlets()[i].reverseAdapter) values[i] = (*adapter)(values[i]);
  }
  if (!plan.isCurrent()) return exportedByTables(type, named(values), values.size());
  ZROHMDictionary result = plan.exportedKeys();
  const std::vector<std::size_t>& outlets = plan.exportedOutlets();
  for (std::size_t i = 0; i < outlets.size(); ++i) result.valueAt(i) = std::move(values[outlets[i]]);
  return result;
}

}  // namespace

ZROHMDictionary NSObject::dictionaryWithValuesForKeys(const std::vector<std::string>& keys) const {
  const NestedExport nested(*this);
  const ZROHMClassInfo& type = classInfo();
  if (&keys == &type.propertyNames()) {
    const ZROHMPlan& plan = ZROHMPlan::of(type);
    if (!plan.outlets().empty()) return exportedByPlan(*this, plan);
  }
  return exportedByTables(type, zrohm_dictionaryWithValuesForKeys(*this, keys));
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
