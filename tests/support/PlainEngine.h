// SPDX-License-Identifier: Apache-2.0
// The mapping engine as its rules are told, table by table and key by key: slow, and right. What the library does by
// its plan is held against it.
#ifndef ZRCORE_TESTS_SUPPORT_PLAINENGINE_H
#define ZRCORE_TESTS_SUPPORT_PLAINENGINE_H

#include <ZRCore/ZROHMRegistry.h>

#include <string>
#include <string_view>
#include <utility>

class PlainEngine {
 public:
  static void setAll(NSObject& object, const ZROHMDictionary& dictionary) {
    for (const auto& [key, value] : dictionary) set(object, value, key);
  }

  /// The hooked set.
  static void set(NSObject& object, const ZROHMValue& value, std::string_view key) {
    struct Level {
      Level() { ++depth; }
      ~Level() { --depth; }
    } const level;
    if (depth > 100) return;
    if (object.classInfo().conformsToMappable() && mappedSet(object, value, key)) return;
    basicSet(object, value, key);
  }

  /// The hooked export.
  static ZROHMDictionary exported(const NSObject& object, const std::vector<std::string>& keys) {
    const ZROHMClassInfo& type = object.classInfo();
    ZROHMDictionary result;
    for (const std::string& key : keys) {
      const ZROHMProperty* const property = type.propertyNamed(key);
      if (property == nullptr || !property->get) throw NSUndefinedKeyException("export", key);
      result.set(key, property->get(object));
    }
    for (std::size_t i = 0; i < result.size(); ++i) {
      ZROHMValue& value = result.valueAt(i);
      if (value.array() != nullptr && !value.array()->empty()) {
        for (ZROHMValue& element : value.modifiableArray()) exportIn(element);
      } else if (value.dictionary() != nullptr && !value.dictionary()->empty()) {
        for (std::size_t j = 0; j < value.dictionary()->size(); ++j) exportIn(value.modifiableDictionary().valueAt(j));
      } else {
        exportIn(value);
      }
      const auto* const adapter = entry<ZROHMAdapter>(type, Slot::reverseAdapter, (result.begin() + long(i))->first);
      if (adapter != nullptr && *adapter) value = (*adapter)(value);
    }
    const ZROHMTable* const mapping = ZROHMRegistry::table(type, Slot::mapping);
    if (mapping == nullptr) return result;
    ZROHMDictionary renamed;
    for (const auto& [source, name] : *mapping) {
      const auto* const property = std::get_if<std::string>(&name);
      const ZROHMValue* const value = property != nullptr ? result.find(*property) : nullptr;
      if (value == nullptr) continue;
      renamed.set(source, *value);
      result.erase(*property);
    }
    for (const auto& [name, value] : result) renamed.set(name, value);
    return renamed;
  }

 private:
  using Slot = ZROHMRegistry::Slot;
  static inline int depth = 0;

  template <class Entry>
  static const Entry* entry(const ZROHMClassInfo& type, Slot slot, std::string_view key) {
    const ZROHMTable* const table = ZROHMRegistry::table(type, slot);
    const ZROHMTableEntry* const found = table != nullptr ? table->find(key) : nullptr;
    return found != nullptr ? std::get_if<Entry>(found) : nullptr;
  }

  static ZROHMValue filled(const ZROHMClassInfo& type, const ZROHMDictionary& content) {
    const std::shared_ptr<NSObject> instance = type.makeInstance();
    if (instance) setAll(*instance, content);
    return instance;
  }

  /// @return whether the value was stored.
  static bool mappedSet(NSObject& object, const ZROHMValue& value, std::string_view key) {
    const ZROHMClassInfo& type = object.classInfo();
    const auto* const mapped = entry<std::string>(type, Slot::mapping, key);
    const std::string target(mapped != nullptr ? std::string_view(*mapped) : key);
    const auto* const adapter = entry<ZROHMAdapter>(type, Slot::adapter, target);
    const auto* const elementType = entry<ZROHMClassInfo*>(type, Slot::arrayClasses, target);
    const auto* const valueType = entry<ZROHMClassInfo*>(type, Slot::dictionaryClasses, target);
    const ZROHMProperty* const property = type.propertyNamed(target);
    const ZROHMArray* const array = value.array();
    const ZROHMDictionary* const dictionary = value.dictionary();
    ZROHMValue stored;
    if (adapter != nullptr && *adapter) {
      stored = (*adapter)(value);
    } else if (array != nullptr && elementType != nullptr && *elementType != nullptr && !array->empty() &&
               array->front().dictionary() != nullptr) {
      ZROHMArray objects;
      for (const ZROHMValue& element : *array) {
        if (element.dictionary() != nullptr) objects.push_back(filled(**elementType, *element.dictionary()));
      }
      stored = std::move(objects);
    } else if (dictionary != nullptr && valueType != nullptr && *valueType != nullptr) {
      ZROHMDictionary objects;
      for (const auto& [name, element] : *dictionary) {
        if (element.dictionary() != nullptr) objects.set(name, filled(**valueType, *element.dictionary()));
      }
      stored = std::move(objects);
    } else if (dictionary != nullptr && property != nullptr && property->declaredClass != nullptr &&
               property->declaredClass().conformsToMappable()) {
      stored = filled(property->declaredClass(), *dictionary);
    } else {
      return false;
    }
    basicSet(object, stored, target);
    return true;
  }

  static void basicSet(NSObject& object, const ZROHMValue& value, std::string_view key) {
    const ZROHMClassInfo& type = object.classInfo();
    const ZROHMProperty* const property = type.propertyNamed(key);
    if (property != nullptr && property->set) {
      if (value.isNull() && property->kind == ZROHMPropertyKind::scalar) throw NSInvalidArgumentException("nil", key);
      return property->set(object, value);
    }
    if (!type.conformsToMappable()) throw NSUndefinedKeyException("set", key);
    const auto* const mapped = entry<std::string>(type, Slot::mapping, key);
    if (mapped == nullptr) return;
    const std::string target = *mapped;  // an adapter may store another table
    const auto* const adapter = entry<ZROHMAdapter>(type, Slot::adapter, target);
    set(object, adapter != nullptr && *adapter ? (*adapter)(value) : value, target);
  }

  static void exportIn(ZROHMValue& value) {
    const std::shared_ptr<NSObject> object = value.object();
    if (object && object->classInfo().conformsToMappable()) {
      value = exported(*object, *ZROHMMappableKeys(object->classInfo()));
    }
  }
};

#endif
