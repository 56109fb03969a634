// SPDX-License-Identifier: Apache-2.0
#include "ZROHMPlan.h"

#include <bit>
#include <cstring>
#include <utility>

#include "TableEntries.h"

namespace {

using Slot = ZROHMRegistry::Slot;

template <class Word>
std::uint64_t wordAt(const char* bytes) {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

/// A number of a key's length, its first bytes and its last: enough to tell the keys of one type apart.
std::uint64_t digest(std::string_view key) {
  const std::size_t size = key.size();
  const char* const bytes = key.data();
  std::uint64_t first = 0, last = 0;
  if (size >= 8) {
    first = wordAt<std::uint64_t>(bytes);
    last = wordAt<std::uint64_t>(bytes + size - 8);
  } else if (size >= 4) {
    first = wordAt<std::uint32_t>(bytes);
    last = wordAt<std::uint32_t>(bytes + size - 4);
  } else {
    for (const char byte : key) first = first << 8U | static_cast<unsigned char>(byte);
  }
  return (first ^ std::rotl(last, 23)) * 0x9E3779B97F4A7C15U + size;
}

/// A property of that name that can be set.
const ZROHMProperty* settable(const ZROHMClassInfo& type, std::string_view name) {
  const ZROHMProperty* const property = type.propertyNamed(name);
  return property != nullptr && property->set ? property : nullptr;
}

const ZROHMClassInfo* classIn(const ZROHMClassInfo& type, Slot slot, std::string_view property) {
  ZROHMClassInfo* const* const entry = entryIn<ZROHMClassInfo*>(type, slot, property);
  return entry != nullptr ? *entry : nullptr;
}

}  // namespace

ZROHMPlan::ZROHMPlan(const ZROHMClassInfo& type, std::uint64_t generation) : type_(type), generation_(generation) {
  ZROHMOrderedMap<bool> keys;
  for (const Slot slot : {Slot::mapping, Slot::adapter, Slot::arrayClasses, Slot::dictionaryClasses}) {
    const ZROHMTable* const table = ZROHMRegistry::table(type, slot);
    if (table == nullptr) continue;
    for (const auto& entry : *table) keys.set(entry.first, true);
  }
  for (const ZROHMClassInfo* owner = &type; owner != nullptr; owner = owner->superclass()) {
    for (const auto& property : owner->properties()) keys.set(property.first, true);
  }
  rows_.reserve(keys.size());  // so that rows stay where they are
  for (const auto& key : keys) rows_.emplace_back().key = key.first;
  makeIndex();
  for (Row& row : rows_) fill(row);
  planExport();
}

void ZROHMPlan::planExport() {
  ZROHMOrderedMap<std::size_t> outletOf;
  for (const std::string& name : type_.propertyNames()) {
    if (outletOf.contains(name)) continue;
    const ZROHMProperty* const property = type_.propertyNamed(name);
    if (!property->get) {
      outlets_.clear();
      return;
    }
    outletOf.set(name, outlets_.size());
    outlets_.push_back({property, adapterIn(type_, Slot::reverseAdapter, name)});
  }
  const ZROHMTable* const mapping = ZROHMRegistry::table(type_, Slot::mapping);
  const ZROHMOrderedMap<std::size_t> exported = mapping != nullptr ? underSourceKeys(*mapping, outletOf) : outletOf;
  for (const auto& [key, outlet] : exported) {
    exportedKeys_.set(key, nullptr);
    exportedOutlets_.push_back(outlet);
  }
}

void ZROHMPlan::fill(Row& row) const {
  row.mapped = entryIn<std::string>(type_, Slot::mapping, row.key);
  row.next = row.mapped != nullptr ? find(*row.mapped) : nullptr;
  row.target = row.mapped != nullptr ? *row.mapped : row.key;
  row.adapter = adapterIn(type_, Slot::adapter, row.target);
  if (row.adapter != nullptr) {
    const auto* const partAdapter = row.adapter->target<ZROHMPartAdapter>();
    row.adaptPart = partAdapter != nullptr ? partAdapter->adapt : nullptr;
  }
  row.elementType = classIn(type_, Slot::arrayClasses, row.target);
  row.valueType = classIn(type_, Slot::dictionaryClasses, row.target);
  const ZROHMProperty* const declared = type_.propertyNamed(row.target);
  row.declaredClass = declared != nullptr ? declared->declaredClass : nullptr;
  row.targetProperty = settable(type_, row.target);
  row.keyProperty = settable(type_, row.key);
}

void ZROHMPlan::makeIndex() {
  constexpr int kAttempts = 200;
  const std::size_t places = std::bit_ceil(4 * rows_.size() + 2);  // two at least: no shift goes by all 64 bits
  shift_ = 64U - static_cast<unsigned>(std::countr_zero(places));
  bool isPerfect = false;
  for (int attempt = 1; attempt <= kAttempts && !isPerfect; ++attempt) {
    factor_ = factor_ * 6364136223846793005U + 1442695040888963407U;  // Knuth's sequence, of which all are odd
    factor_ |= 1U;
    index_.assign(places, nullptr);
    isPerfect = true;
    for (const Row& row : rows_) {
      std::size_t place = placeOf(row.key);
      isPerfect = isPerfect && index_[place] == nullptr;
      if (!isPerfect && attempt < kAttempts) break;  // the last attempt is taken as it comes
      while (index_[place] != nullptr) place = (place + 1) & (places - 1);
      index_[place] = &row;
    }
  }
}

std::size_t ZROHMPlan::placeOf(std::string_view key) const { return (digest(key) * factor_) >> shift_; }

const ZROHMPlan& ZROHMPlan::made(const ZROHMClassInfo& type) {
  // A table that is stored from here on makes the plan an old one, also if it is in the plan already.
  const std::uint64_t generation = type.generation_.load(std::memory_order_acquire);
  auto* const plan = new ZROHMPlan(type, generation);
  plan->older = type.plan_.load(std::memory_order_relaxed);
  while (!type.plan_.compare_exchange_weak(plan->older, plan, std::memory_order_release, std::memory_order_relaxed)) {
  }
  return *plan;
}
