// SPDX-License-Identifier: Apache-2.0
/// @file
/// A walk through everything in a value.
#ifndef ZRCORE_ZROHMWALK_H
#define ZRCORE_ZROHMWALK_H

#include <ZRCore/ZROHMValue.h>

#include <cstddef>
#include <string>
#include <vector>

/// Calls the visitor for `root` and for everything in it, in order and without recursion, however deep it is nested:
/// - `bool leaf(const ZROHMValue&)` for a value that is neither array nor dictionary;
/// - `bool begin(const ZROHMValue&)` and `end(const ZROHMValue&)` around the content of an array or a dictionary;
/// - `element(std::size_t position)` before each element of an array;
/// - `entry(std::size_t position, const std::string& key)` before each value of a dictionary.
/// @return false as soon as `leaf` or `begin` does, which ends the walk; else true.
template <class Visitor>
bool ZROHMWalk(const ZROHMValue& root, Visitor& visitor) {
  struct Level {
    const ZROHMValue* container;
    std::size_t next;
  };
  std::vector<Level> levels;
  const ZROHMValue* current = &root;
  while (true) {
    if (current->array() == nullptr && current->dictionary() == nullptr) {
      if (!visitor.leaf(*current)) return false;
    } else {
      if (!visitor.begin(*current)) return false;
      levels.push_back({current, 0});
    }
    current = nullptr;
    while (current == nullptr) {
      if (levels.empty()) return true;
      auto& [container, next] = levels.back();
      const ZROHMArray* const array = container->array();
      const ZROHMDictionary* const dictionary = container->dictionary();
      if (array != nullptr && next < array->size()) {
        visitor.element(next);
        current = &(*array)[next++];
      } else if (dictionary != nullptr && next < dictionary->size()) {
        const auto& [key, value] = *(dictionary->begin() + static_cast<std::ptrdiff_t>(next));
        visitor.entry(next++, key);
        current = &value;
      } else {
        visitor.end(*container);
        levels.pop_back();
      }
    }
  }
}

#endif
