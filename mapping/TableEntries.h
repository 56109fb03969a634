// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MAPPING_TABLEENTRIES_H
#define ZRCORE_MAPPING_TABLEENTRIES_H

#include <ZRCore/ZROHMRegistry.h>

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

/// How deep sets and exports may nest in one another: far deeper than documents nest objects, and a stop for mappings
/// that go round in circles.
inline constexpr std::size_t kDeepestNesting = 100;

#endif
