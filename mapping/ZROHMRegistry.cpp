// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZROHMRegistry.h>

#include <utility>

namespace {

using Slot = ZROHMRegistry::Slot;

void add(ZROHMClassInfo& type, Slot slot, const ZROHMTable& entries) {
  ZROHMTable table = ohm_mutableDictionary(ZROHMRegistry::table(type, slot));
  for (const auto& [key, entry] : entries) table.set(key, entry);
  ZROHMRegistry::store(type, slot, std::move(table));
}

/// Stores the mapping table less `keys` in `slot`, whichever slot that is: the header says why.
void storeMappingWithout(ZROHMClassInfo& type, Slot slot, const std::vector<std::string>& keys) {
  ZROHMTable table = ohm_mutableDictionary(ZROHMRegistry::table(type, Slot::mapping));
  for (const std::string& key : keys) table.erase(key);
  ZROHMRegistry::store(type, slot, std::move(table));
}

}  // namespace

/// What a slot holds: a table, or the fact that it was emptied.
struct ZROHMRegistry::Stored : ZROHMClassInfo::Snapshot {
  explicit Stored(std::optional<ZROHMTable> content) : table(std::move(content)) {}
  const std::optional<ZROHMTable> table;
};

std::optional<ZROHMRegistry::Slot> ZROHMRegistry::slotForKey(std::string_view slotKey) {
  if (slotKey == _kZROMClassMappingDictionaryKey) return Slot::mapping;
  if (slotKey == _kZROMClassAdapterDictionaryKey) return Slot::adapter;
  if (slotKey == _kZROMClassReverseAdapterDictionaryKey) return Slot::reverseAdapter;
  if (slotKey == _kZROMClassArrayDictionaryKey) return Slot::arrayClasses;
  if (slotKey == _kZROMClassDictionaryDictionaryKey) return Slot::dictionaryClasses;
  return std::nullopt;
}

const ZROHMTable* ZROHMRegistry::table(const ZROHMClassInfo& type, Slot slot) {
  const auto* const stored =
      static_cast<const Stored*>(type.slots_[static_cast<std::size_t>(slot)].load(std::memory_order_acquire));
  return stored != nullptr && stored->table ? &*stored->table : nullptr;
}

const ZROHMTable* ZROHMRegistry::table(const ZROHMClassInfo& type, std::string_view slotKey) {
  const std::optional<Slot> slot = slotForKey(slotKey);
  return slot ? table(type, *slot) : nullptr;
}

void ZROHMRegistry::store(ZROHMClassInfo& type, Slot slot, std::optional<ZROHMTable> table) {
  auto* const stored = new Stored(std::move(table));
  std::atomic<const ZROHMClassInfo::Snapshot*>& current = type.slots_[static_cast<std::size_t>(slot)];
  stored->older = current.load(std::memory_order_relaxed);
  while (!current.compare_exchange_weak(stored->older, stored, std::memory_order_release, std::memory_order_relaxed)) {
  }
  type.generation_.fetch_add(1, std::memory_order_release);
}

ZROHMTable ohm_mutableDictionary(const ZROHMTable* table) { return table != nullptr ? *table : ZROHMTable(); }

ZROHMTable& ohm_mutableDictionary(ZROHMTable& table) { return table; }

void ZROHMSetMapping(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table) {
  ZROHMRegistry::store(type, Slot::mapping, table);
}
void ZROHMAddMapping(ZROHMClassInfo& type, const ZROHMTable& table) { add(type, Slot::mapping, table); }
void ZROHMRemoveMapping(ZROHMClassInfo& type, const std::vector<std::string>& keys) {
  storeMappingWithout(type, Slot::mapping, keys);
}

void ZROHMSetAdapter(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table) {
  ZROHMRegistry::store(type, Slot::adapter, table);
}
void ZROHMAddAdapter(ZROHMClassInfo& type, const ZROHMTable& table) { add(type, Slot::adapter, table); }
void ZROHMRemoveAdapter(ZROHMClassInfo& type, const std::vector<std::string>& keys) {
  storeMappingWithout(type, Slot::adapter, keys);
}

void ZROHMSetReverseAdapter(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table) {
  ZROHMRegistry::store(type, Slot::reverseAdapter, table);
}
void ZROHMAddReverseAdapter(ZROHMClassInfo& type, const ZROHMTable& table) { add(type, Slot::reverseAdapter, table); }
void ZROHMRemoveReverseAdapter(ZROHMClassInfo& type, const std::vector<std::string>& keys) {
  storeMappingWithout(type, Slot::reverseAdapter, keys);
}

void ZROHMSetArrayClasses(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table) {
  ZROHMRegistry::store(type, Slot::arrayClasses, table);
}
void ZROHMAddArrayClasses(ZROHMClassInfo& type, const ZROHMTable& table) { add(type, Slot::arrayClasses, table); }
void ZROHMRemoveArray(ZROHMClassInfo& type, const std::vector<std::string>& keys) {
  storeMappingWithout(type, Slot::arrayClasses, keys);
}

void ZROHMSetDictionaryClasses(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table) {
  ZROHMRegistry::store(type, Slot::dictionaryClasses, table);
}
void ZROHMAddDictionaryClasses(ZROHMClassInfo& type, const ZROHMTable& table) {
  add(type, Slot::dictionaryClasses, table);
}
void ZROHMRemoveDictionary(ZROHMClassInfo& type, const std::vector<std::string>& keys) {
  storeMappingWithout(type, Slot::dictionaryClasses, keys);
}

bool ZROHMMappable(ZROHMClassInfo& type) {
  // The five operations come and stay together, so the last was added exactly when the type was not mappable before.
  return type.adoptMappable();
}

const std::vector<std::string>* ZROHMMappableKeys(const ZROHMClassInfo& type) { return &type.propertyNames(); }

void zrohm_setMappingDictionary_Class_IMP(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table) {
  ZROHMSetMapping(type, table);
}
void zrohm_setAdapterDictionary_Class_IMP(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table) {
  ZROHMSetAdapter(type, table);
}
void zrohm_setReverseAdapterDictionary_Class_IMP(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table) {
  ZROHMSetReverseAdapter(type, table);
}
void zrohm_setArrayClasses_Class_IMP(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table) {
  ZROHMSetArrayClasses(type, table);
}
void zrohm_setDictionaryClasses_Class_IMP(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table) {
  ZROHMSetDictionaryClasses(type, table);
}
