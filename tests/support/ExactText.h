// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_EXACTTEXT_H
#define ZRCORE_TESTS_SUPPORT_EXACTTEXT_H

#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZROHMWalk.h>

#include <bit>
#include <string>

/// Everything of a value as a text, for values that must be the same to the last bit: the order of dictionaries, what
/// numbers were made of, the sign of zero. Objects stand there by their type's name alone.
inline std::string exactText(const ZROHMValue& value) {
  struct Writer {
    bool leaf(const ZROHMValue& leaf) {
      text += static_cast<char>('a' + static_cast<int>(leaf.kind()));
      if (const auto type = leaf.numberType()) {
        text += static_cast<char>('A' + static_cast<int>(*type));
        text += std::to_string(*type == ZROHMValue::NumberType::real ? std::bit_cast<std::uint64_t>(leaf.doubleValue())
                                                                     : leaf.integerBits());
      } else if (const std::string* const string = leaf.string()) {
        text += std::to_string(string->size()) + ':' + *string;
      } else if (const CLLocationCoordinate2D* const place = leaf.coordinate()) {
        text += std::to_string(std::bit_cast<std::uint64_t>(place->latitude)) + ',' +
                std::to_string(std::bit_cast<std::uint64_t>(place->longitude));
      } else if (leaf.object()) {
        text += leaf.object()->classInfo().name();
      }
      return true;
    }
    bool begin(const ZROHMValue& container) {
      text += container.array() != nullptr ? '[' : '{';
      return true;
    }
    void end(const ZROHMValue&) { text += ']'; }
    void element(std::size_t) { text += ' '; }
    void entry(std::size_t, const std::string& key) { text += ' ' + std::to_string(key.size()) + ':' + key + '='; }
    std::string text;
  } writer;
  ZROHMWalk(value, writer);
  return writer.text;
}

#endif
