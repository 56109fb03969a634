// SPDX-License-Identifier: Apache-2.0
// Any bytes as a sequence of registry calls, made on the registry and on a plain retelling of its rules.
#ifndef ZRCORE_TESTS_SUPPORT_REGISTRYCALLS_H
#define ZRCORE_TESTS_SUPPORT_REGISTRYCALLS_H

#include <ZRCore/ZROHMRegistry.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

class RegistryCalls {
 public:
  /// Makes the calls that `bytes` tell of. @return the first difference between the two; empty when there is none.
  static std::string run(std::span<const std::uint8_t> bytes) {
    RegistryCalls calls(bytes);
    while (!calls.bytes_.empty()) {
      calls.makeOne();
      if (std::string difference = calls.difference(); !difference.empty()) return difference;
    }
    return {};
  }

 private:
  static constexpr std::size_t kSlots = 5;
  /// A table, with each entry as a text that tells entries apart.
  using Plain = std::vector<std::pair<std::string, std::string>>;

  explicit RegistryCalls(std::span<const std::uint8_t> bytes) : bytes_(bytes), type_({.name = "Type"}) {}

  std::uint8_t next() {
    if (bytes_.empty()) return 0;
    const std::uint8_t byte = bytes_.front();
    bytes_ = bytes_.subspan(1);
    return byte;
  }

  static std::string keyOf(std::uint8_t byte) { return std::string("k").append(std::to_string(byte % 12)); }
  std::string nextKey() { return keyOf(next()); }

  ZROHMTableEntry nextEntry() {
    const std::uint8_t byte = next();
    if (byte % 3 == 0) return keyOf(byte);
    if (byte % 3 == 1) return ZROHMAdapter([byte](const ZROHMValue&) { return ZROHMValue(byte); });
    return &type_;
  }

  static std::string labelOf(const ZROHMTableEntry& entry) {
    if (const auto* const text = std::get_if<std::string>(&entry)) return "text " + *text;
    if (const auto* const adapter = std::get_if<ZROHMAdapter>(&entry)) return "adapter " + (*adapter)(nullptr).text();
    return "class";
  }

  static void put(Plain& table, const std::string& key, const std::string& label) {
    const auto standing =
        std::find_if(table.begin(), table.end(), [&](const auto& entry) { return entry.first == key; });
    if (standing != table.end()) {
      standing->second = label;
    } else {
      table.emplace_back(key, label);
    }
  }

  void makeOne() {
    constexpr decltype(&ZROHMSetMapping) kSet[kSlots] = {ZROHMSetMapping, ZROHMSetAdapter, ZROHMSetReverseAdapter,
                                                         ZROHMSetArrayClasses, ZROHMSetDictionaryClasses};
    constexpr decltype(&ZROHMAddMapping) kAdd[kSlots] = {ZROHMAddMapping, ZROHMAddAdapter, ZROHMAddReverseAdapter,
                                                         ZROHMAddArrayClasses, ZROHMAddDictionaryClasses};
    constexpr decltype(&ZROHMRemoveMapping) kRemove[kSlots] = {
        ZROHMRemoveMapping, ZROHMRemoveAdapter, ZROHMRemoveReverseAdapter, ZROHMRemoveArray, ZROHMRemoveDictionary};
    const std::uint8_t call = next();
    const std::size_t slot = call % kSlots;
    ZROHMTable table;
    Plain plain;
    std::vector<std::string> keys;
    for (int count = next() % 8; count > 0; --count) {
      keys.push_back(nextKey());
      const ZROHMTableEntry entry = nextEntry();
      table.set(keys.back(), entry);
      put(plain, keys.back(), labelOf(entry));
    }
    switch (call / kSlots % 4) {
      case 0:
        kSet[slot](type_, std::nullopt);
        plain_[slot] = {};
        break;
      case 1:
        kSet[slot](type_, table);
        plain_[slot] = plain;
        break;
      case 2:
        kAdd[slot](type_, table);
        for (const auto& [key, label] : plain) put(plain_[slot], key, label);
        break;
      default:
        kRemove[slot](type_, keys);
        plain_[slot] = plain_[0];  // every removal begins with the mapping table
        std::erase_if(plain_[slot],
                      [&](const auto& entry) { return std::count(keys.begin(), keys.end(), entry.first); });
    }
    table.set("k0", "a change that must not reach the registry");
  }

  std::string difference() const {
    static constexpr const char* kKeys[kSlots] = {_kZROMClassMappingDictionaryKey, _kZROMClassAdapterDictionaryKey,
                                                  _kZROMClassReverseAdapterDictionaryKey, _kZROMClassArrayDictionaryKey,
                                                  _kZROMClassDictionaryDictionaryKey};
    for (std::size_t slot = 0; slot < kSlots; ++slot) {
      const ZROHMTable* const table = ZROHMRegistry::table(type_, kKeys[slot]);
      std::string found;
      std::string expected;
      if (table != nullptr) {
        for (const auto& [key, entry] : *table) found += key + ": " + labelOf(entry) + "\n";
      }
      for (const auto& [key, label] : plain_[slot]) expected += key + ": " + label + "\n";
      if (found != expected) return std::string(kKeys[slot]) + " holds\n" + found + "instead of\n" + expected;
    }
    return {};
  }

  std::span<const std::uint8_t> bytes_;
  ZROHMClassInfo type_;
  std::array<Plain, kSlots> plain_;
};

#endif
