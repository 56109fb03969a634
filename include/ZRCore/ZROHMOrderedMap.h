// SPDX-License-Identifier: Apache-2.0
/// @file
/// Texts to values, in the order in which the texts came: the shape of JSON objects and of mapping tables alike.
#ifndef ZRCORE_ZROHMORDEREDMAP_H
#define ZRCORE_ZROHMORDEREDMAP_H

#include <ZRCore/ZRExport.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A hash that nobody outside this process can foresee (SipHash-1-3, its key drawn when it is first needed), so that
/// nobody can choose texts which take each other's places. Of use within the process only. Any thread.
ZR_EXPORT std::uint64_t ZROHMHashOfText(std::string_view text) noexcept;

/// A map that iterates in insertion order. Setting a text again replaces its value and keeps its first place. Finding
/// takes constant time whoever chose the texts, erasing takes time in proportion to the size. Pointers to values live
/// until the next change.
template <class Value>
class ZROHMOrderedMap {
 public:
  using value_type = std::pair<std::string, Value>;
  using const_iterator = typename std::vector<value_type>::const_iterator;

  ZROHMOrderedMap() = default;
  ZROHMOrderedMap(std::initializer_list<value_type> entries) {
    reserve(entries.size());
    for (const value_type& entry : entries) set(entry.first, entry.second);
  }

  std::size_t size() const { return entries_.size(); }
  bool empty() const { return entries_.empty(); }
  const_iterator begin() const { return entries_.begin(); }
  const_iterator end() const { return entries_.end(); }
  void reserve(std::size_t count) { entries_.reserve(count); }

  /// The position of `key`; `size()` when there is none.
  std::size_t indexOf(std::string_view key) const {
    if (entries_.size() <= kLinear) {
      std::size_t position = 0;
      while (position < entries_.size() && !isSame(entries_[position].first, key)) ++position;
      return position;
    }
    for (std::size_t slot = slotOf(key); index_[slot] != 0; slot = (slot + 1) & (index_.size() - 1)) {
      if (entries_[index_[slot] - 1].first == key) return index_[slot] - 1;
    }
    return entries_.size();
  }

  /// The value under `key`; null when there is none.
  const Value* find(std::string_view key) const {
    const std::size_t position = indexOf(key);
    return position < entries_.size() ? &entries_[position].second : nullptr;
  }
  Value* find(std::string_view key) {
    const std::size_t position = indexOf(key);
    return position < entries_.size() ? &entries_[position].second : nullptr;
  }
  bool contains(std::string_view key) const { return find(key) != nullptr; }

  /// The value of the entry at `position`, below `size()`, to change in place.
  Value& valueAt(std::size_t position) { return entries_[position].second; }

  /// Puts `value` under `key`, at the end, or in place of the value that stands there.
  Value& set(std::string key, Value value) {
    if (Value* const standing = find(key)) {
      *standing = std::move(value);
      return *standing;
    }
    entries_.emplace_back(std::move(key), std::move(value));
    if (entries_.size() > kLinear) enterLast();
    return entries_.back().second;
  }

  /// Removes `key`. @return whether it was there.
  bool erase(std::string_view key) {
    const std::size_t position = indexOf(key);
    if (position >= entries_.size()) return false;
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(position));
    index_.clear();
    if (entries_.size() > kLinear) rebuildIndex();
    return true;
  }

 private:
  /// Up to this many entries comparing them one by one is as fast as hashing, and no index has to be made.
  static constexpr std::size_t kLinear = 32;

  /// Texts of one length differ at their ends more often than at their beginnings: "line1", "line2".
  static bool isSame(const std::string& text, std::string_view key) {
    return text.size() == key.size() && (key.empty() || text.back() == key.back()) && text == key;
  }

  std::size_t slotOf(std::string_view key) const { return ZROHMHashOfText(key) & (index_.size() - 1); }

  void enter(std::size_t position) {
    std::size_t slot = slotOf(entries_[position].first);
    while (index_[slot] != 0) slot = (slot + 1) & (index_.size() - 1);
    index_[slot] = static_cast<std::uint32_t>(position + 1);
  }

  void enterLast() {
    if (index_.size() < 2 * entries_.size()) {
      rebuildIndex();
    } else {
      enter(entries_.size() - 1);
    }
  }

  void rebuildIndex() {
    std::size_t slots = 4 * kLinear;
    while (slots < 2 * entries_.size()) slots *= 2;
    index_.assign(slots, 0);
    for (std::size_t position = 0; position < entries_.size(); ++position) enter(position);
  }

  std::vector<value_type> entries_;
  std::vector<std::uint32_t> index_;  // open addressing; 0: free, else a position plus one; empty while linear
};

#endif
