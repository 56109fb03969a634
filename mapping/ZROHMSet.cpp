// SPDX-License-Identifier: Apache-2.0
// The way in: from dictionaries to objects.
#include <ZRCore/ZROHMRegistry.h>

#include <sstream>
#include <utility>

#include "TableEntries.h"

namespace {

using Slot = ZROHMRegistry::Slot;

/// How many hooked sets this thread is inside of.
thread_local std::size_t nestedSets = 0;

class NestedSet {
 public:
  NestedSet() { ++nestedSets; }
  ~NestedSet() { --nestedSets; }
  NestedSet(const NestedSet&) = delete;
  NestedSet& operator=(const NestedSet&) = delete;
  static bool isTooDeep() { return nestedSets > kDeepestNesting; }
};

std::string reason(const NSObject& object, const char* what, std::string_view key) {
  std::ostringstream text;
  text << "[<" << object.classInfo().name() << ' ' << static_cast<const void*>(&object) << "> " << what << ' ' << key
       << '.';
  return text.str();
}

/// A new instance of `type`, filled; null when the type makes no instances.
std::shared_ptr<NSObject> filledInstance(const ZROHMClassInfo& type, const ZROHMDictionary& content) {
  auto instance = type.makeInstance();
  if (instance) instance->setValuesForKeysWithDictionary(content);
  return instance;
}

const ZROHMClassInfo* classIn(const ZROHMClassInfo& type, Slot slot, std::string_view property) {
  ZROHMClassInfo* const* const entry = entryIn<ZROHMClassInfo*>(type, slot, property);
  return entry != nullptr ? *entry : nullptr;
}

/// Objects for the dictionaries in `elements`, in order. Whatever else stands between them is skipped.
ZROHMArray filledInstances(const ZROHMClassInfo& elementType, const ZROHMArray& elements) {
  ZROHMArray filled;
  filled.reserve(elements.size());
  for (const ZROHMValue& element : elements) {
    if (const ZROHMDictionary* const content = element.dictionary()) {
      filled.emplace_back(filledInstance(elementType, *content));
    }
  }
  return filled;
}

ZROHMDictionary filledInstances(const ZROHMClassInfo& valueType, const ZROHMDictionary& entries) {
  ZROHMDictionary filled;
  filled.reserve(entries.size());
  for (const auto& [key, element] : entries) {
    if (const ZROHMDictionary* const content = element.dictionary()) {
      filled.set(key, filledInstance(valueType, *content));
    }
  }
  return filled;
}

/// The mappable type that the property is declared with; null when it is declared with anything else.
const ZROHMClassInfo* nestedType(const ZROHMClassInfo& type, std::string_view property) {
  const ZROHMProperty* const declared = type.propertyNamed(property);
  if (declared == nullptr || declared->declaredClass == nullptr) return nullptr;
  const ZROHMClassInfo& nested = declared->declaredClass();
  return nested.conformsToMappable() ? &nested : nullptr;
}

}  // namespace

void NSObject::setValueForKey(const ZROHMValue& value, std::string_view key) {
  const NestedSet nested;
  if (NestedSet::isTooDeep()) return;
  if (classInfo().conformsToMappable() && !zrohm_setValueForKey_f(*this, value, key)) return;
  zrohm_setValueForKey(*this, value, key);
}

void NSObject::setValueForUndefinedKey(const ZROHMValue& value, std::string_view key) {
  if (classInfo().conformsToMappable()) {
    zrohm_setValueForUndefinedKey_f(*this, value, key);
  } else {
    zrohm_setValueForUndefinedKey(*this, value, key);
  }
}

void NSObject::setValuesForKeysWithDictionary(const ZROHMDictionary& dictionary) {
  for (const auto& [key, value] : dictionary) setValueForKey(value, key);
}

bool zrohm_setValueForKey_f(NSObject& object, const ZROHMValue& value, std::string_view key) {
  const ZROHMClassInfo& type = object.classInfo();
  const auto* const property = entryIn<std::string>(type, Slot::mapping, key);
  const std::string_view target = property != nullptr ? std::string_view(*property) : key;

  if (const ZROHMAdapter* const adapter = adapterIn(type, Slot::adapter, target)) {
    zrohm_setValueForKey(object, (*adapter)(value), target);
    return false;
  }
  if (const ZROHMArray* const elements = value.array()) {
    // Only the first element decides whether these are objects: a list is all of one kind.
    if (elements->empty() || elements->front().dictionary() == nullptr) return true;
    const ZROHMClassInfo* const elementType = classIn(type, Slot::arrayClasses, target);
    if (elementType == nullptr) return true;
    zrohm_setValueForKey(object, filledInstances(*elementType, *elements), target);
    return false;
  }
  if (const ZROHMDictionary* const content = value.dictionary()) {
    if (const ZROHMClassInfo* const valueType = classIn(type, Slot::dictionaryClasses, target)) {
      zrohm_setValueForKey(object, filledInstances(*valueType, *content), target);
      return false;
    }
    if (const ZROHMClassInfo* const nested = nestedType(type, target)) {
      zrohm_setValueForKey(object, filledInstance(*nested, *content), target);
      return false;
    }
  }
  // The caller stores the value under the key as given, even where the table maps that key elsewhere:
  // a set that names a property sets that property.
  return true;
}

void zrohm_setValueForUndefinedKey_f(NSObject& object, const ZROHMValue& value, std::string_view key) {
  const ZROHMClassInfo& type = object.classInfo();
  const auto* const target = entryIn<std::string>(type, Slot::mapping, key);
  if (target == nullptr) return;
  // The hooked set applies the adapter once more: the header says so to those who write adapters.
  if (const ZROHMAdapter* const adapter = adapterIn(type, Slot::adapter, *target)) {
    object.setValueForKey((*adapter)(value), *target);
  } else {
    object.setValueForKey(value, *target);
  }
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
