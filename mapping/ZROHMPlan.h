// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MAPPING_ZROHMPLAN_H
#define ZRCORE_MAPPING_ZROHMPLAN_H

#include <ZRCore/ZROHMRegistry.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the five tables of a type say about each key of which they or the type's properties say anything, worked out
/// once. A plan is never changed: when a table is stored, the next reader makes another one, and the old one is kept
/// for those who still read it. No lock.
class ZROHMPlan : public ZROHMClassInfo::Snapshot {
 public:
  /// A key that may be set.
  struct Row {
    std::string key;
    /// What the mapping table has under the key; null: nothing.
    const std::string* mapped = nullptr;
    /// The row of that; null without, and where a set of that would do nothing.
    const Row* next = nullptr;
    /// Under this the adapter, the classes and the nested type are looked for: `mapped`, or else the key.
    std::string_view target{};
    const ZROHMAdapter* adapter = nullptr;
    ZROHMPartAdapter::Adapt adaptPart = nullptr;  ///< of an adapter that is a ZROHMPartAdapter
    const ZROHMClassInfo* elementType = nullptr;  ///< of the array-classes table
    const ZROHMClassInfo* valueType = nullptr;    ///< of the dictionary-classes table
    ZROHMClassInfo& (*declaredClass)() = nullptr;
    const ZROHMProperty* targetProperty = nullptr;  ///< null: none that can be set
    const ZROHMProperty* keyProperty = nullptr;
  };

  /// A property of the type, as it leaves.
  struct Outlet {
    const ZROHMProperty* property = nullptr;
    const ZROHMAdapter* reverseAdapter = nullptr;  ///< null: none
  };
  /// The plan of the tables as they are now. It lives as long as the descriptor.
  static const ZROHMPlan& of(const ZROHMClassInfo& type) {
    const auto* const plan = static_cast<const ZROHMPlan*>(type.plan_.load(std::memory_order_acquire));
    return plan != nullptr && plan->isCurrent() ? *plan : made(type);
  }

  /// Whether no table was stored since.
  bool isCurrent() const { return generation_ == type_.generation_.load(std::memory_order_acquire); }

  /// The key's row; null: a set of the key does nothing on an object of a mappable type.
  const Row* find(std::string_view key) const {
    std::size_t place = placeOf(key);
    while (index_[place] != nullptr && index_[place]->key != key) place = (place + 1) & (index_.size() - 1);
    return index_[place];
  }

  /// The export of all properties, `propertyNames()`: what is read, in order, and what becomes of it. No outlets where
  /// a property cannot be read.
  const std::vector<Outlet>& outlets() const { return outlets_; }
  /// The export's keys in their order, without values, and the number of the outlet that each has its value from.
  const ZROHMDictionary& exportedKeys() const { return exportedKeys_; }
  const std::vector<std::size_t>& exportedOutlets() const { return exportedOutlets_; }

  std::size_t rowCount() const { return rows_.size(); }
  std::size_t numberOf(const Row& row) const { return static_cast<std::size_t>(&row - rows_.data()); }

 private:
  ZROHMPlan(const ZROHMClassInfo& type, std::uint64_t generation);
  static const ZROHMPlan& made(const ZROHMClassInfo& type);

  void fill(Row& row) const;
  void planExport();
  void makeIndex();
  std::size_t placeOf(std::string_view key) const;

  const ZROHMClassInfo& type_;
  std::vector<Outlet> outlets_;
  ZROHMDictionary exportedKeys_;
  std::vector<std::size_t> exportedOutlets_;
  const std::uint64_t generation_;
  std::vector<Row> rows_;
  std::vector<const Row*> index_;  // by hash; a power of two, never full
  std::uint64_t factor_ = 0;       // makes the hash one of its own for each key, as far as one can be found
  unsigned shift_ = 0;
};

#endif
