// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MAPPING_TABLEENTRIES_H
#define ZRCORE_MAPPING_TABLEENTRIES_H

#include <ZRCore/ZROHMRegistry.h>

#include <utility>
#include <vector>

/// The entry of that kind under `key` in one of the type's own tables; null when there is none. An entry of another
/// kind counts as none.
template <class Entry>
const Entry* entryIn(const ZROHMClassInfo& type, ZROHMRegistry::Slot slot, std::string_view key) {
  const ZROHMTable* const table = ZROHMRegistry::table(type, slot);
  const ZROHMTableEntry* const entry = table != nullptr ? table->find(key) : nullptr;
  return entry != nullptr ? std::get_if<Entry>(entry) : nullptr;
}

/// The adapter for a property; null when there is none. An adapter without a callable counts as none.
inline const ZROHMAdapter* adapterIn(const ZROHMClassInfo& type, ZROHMRegistry::Slot slot, std::string_view property) {
  const auto* const adapter = entryIn<ZROHMAdapter>(type, slot, property);
  return adapter != nullptr && *adapter ? adapter : nullptr;
}

/// Each mapped property under the first source key that maps to it, in the order of the table; then the others under
/// their own names, which replace what a source key of the same text brought.
template <class Value>
ZROHMOrderedMap<Value> underSourceKeys(const ZROHMTable& mapping, ZROHMOrderedMap<Value> properties) {
  ZROHMOrderedMap<Value> result;
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

/// How deep sets and exports may nest in one another: far deeper than documents nest objects, and a stop for mappings
/// that go round in circles.
inline constexpr std::size_t kDeepestNesting = 100;

#endif
