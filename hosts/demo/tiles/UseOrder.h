// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_USEORDER_H
#define ZRCORE_HOSTS_DEMO_TILES_USEORDER_H

#include <cstdint>
#include <list>
#include <map>
#include <vector>

namespace demo {

/// What a bounded store holds, in the order of its use, and how much room it takes.
template <class Key>
class UseOrder {
 public:
  /// It is used now, and takes so many bytes.
  void use(const Key& key, std::uint64_t bytes) {
    forget(key);
    places_[key] = entries_.insert(entries_.end(), {key, bytes});
    bytes_ += bytes;
  }
  /// It is used now, if it is there. @return whether it is
  bool use(const Key& key) {
    const auto place = places_.find(key);
    if (place == places_.end()) return false;
    entries_.splice(entries_.end(), entries_, place->second);
    return true;
  }
  void forget(const Key& key) {
    const auto place = places_.find(key);
    if (place == places_.end()) return;
    bytes_ -= place->second->bytes;
    entries_.erase(place->second);
    places_.erase(place);
  }
  bool contains(const Key& key) const { return places_.contains(key); }
  std::uint64_t bytes() const { return bytes_; }

  /// Forgets what has not been used for longest until the rest takes `mostBytes` at most, or is needed.
  /// @param isNeeded  of a key: whether it stays in any case
  /// @return what was forgotten
  template <class IsNeeded>
  std::vector<Key> shrink(std::uint64_t mostBytes, const IsNeeded& isNeeded) {
    std::vector<Key> gone;
    for (auto entry = entries_.begin(); entry != entries_.end() && bytes_ > mostBytes;) {
      const Key key = (entry++)->key;
      if (isNeeded(key)) continue;
      forget(key);
      gone.push_back(key);
    }
    return gone;
  }

 private:
  struct Entry {
    Key key;
    std::uint64_t bytes;
  };
  std::list<Entry> entries_;  ///< used longest ago first
  std::map<Key, typename std::list<Entry>::iterator> places_;
  std::uint64_t bytes_ = 0;
};

}  // namespace demo

#endif
