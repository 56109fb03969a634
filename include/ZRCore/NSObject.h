// SPDX-License-Identifier: Apache-2.0
/// @file
/// The root of the objects that the framework hands out and that archives, collections and mappings treat alike.
#ifndef ZRCORE_NSOBJECT_H
#define ZRCORE_NSOBJECT_H

#include <ZRCore/ZRExport.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

class ZROHMClassInfo;
class ZROHMValue;
template <class Value>
class ZROHMOrderedMap;

/// A key was set on, or read from, an object that has no property of that name.
class ZR_EXPORT NSUndefinedKeyException : public std::runtime_error {
 public:
  /// @param reason  the sentence that `what()` returns; @param key  the key in question.
  NSUndefinedKeyException(const std::string& reason, std::string_view key);
  ~NSUndefinedKeyException() override;
  const std::string& key() const noexcept { return key_; }

 private:
  std::string key_;
};

/// Nothing (null) was stored into a scalar property.
class ZR_EXPORT NSInvalidArgumentException : public std::invalid_argument {
 public:
  NSInvalidArgumentException(const std::string& reason, std::string_view key);
  ~NSInvalidArgumentException() override;
  const std::string& key() const noexcept { return key_; }

 private:
  std::string key_;
};

/// The root type: equality, hash, description, the type's descriptor, and the entry points of the mapping engine. One
/// thread at a time, unless a subclass says otherwise.
class ZR_EXPORT NSObject {
 public:
  NSObject() = default;
  NSObject(const NSObject&) = default;
  NSObject& operator=(const NSObject&) = default;
  virtual ~NSObject();

  /// Whether the two stand for the same thing. Here: whether they are the same object.
  /// @param other  any object; null equals nothing.
  virtual bool isEqual(const NSObject* other) const;

  /// A number that is equal for equal objects. Here: made from the object's address.
  virtual std::size_t hash() const;

  /// One line for logs and debuggers. Its wording is not promised.
  virtual std::string description() const;

  /// The descriptor of the object's exact type. A type that does not override this has the descriptor of its base.
  virtual ZROHMClassInfo& classInfo() const;

  /// The descriptor of the root type, named "NSObject": no superclass, no properties.
  static ZROHMClassInfo& staticClassInfo();

  /// Stores `value` under `key`. On an object of a mappable type (`ZROHMMappable`) the type's tables are applied, and a
  /// key that they do not know is dropped silently. Sets that nest deeper than 100 (in one another, through nested
  /// dictionaries or mappings that go round in circles) are dropped silently too.
  /// @throw NSUndefinedKeyException     the type is not mappable and has no such property.
  /// @throw NSInvalidArgumentException  `value` is null and the property is a scalar.
  void setValueForKey(const ZROHMValue& value, std::string_view key);

  /// What `setValueForKey` does with a key that is not a property: maps it on an object of a mappable type, raises on
  /// any other.
  void setValueForUndefinedKey(const ZROHMValue& value, std::string_view key);

  /// `setValueForKey` for each entry, in the dictionary's order. What was set before an entry that raises stays set.
  /// @param dictionary  not one that the object itself holds: its sets may replace what they are read from.
  void setValuesForKeysWithDictionary(const ZROHMOrderedMap<ZROHMValue>& dictionary);

  /// The values of the properties `keys` as a dictionary, in that order. Null where a property has no value. Objects of
  /// mappable types (as values, or directly in array or dictionary values) become dictionaries themselves; the type's
  /// reverse adapters and then its key mapping are applied. Mapped properties come first, in the order of the mapping
  /// table, each under the first source key that maps to it; the others follow under their own names. An object that
  /// contains itself, or that nests deeper than 100 objects, stays an object reference at that place.
  /// @throw NSUndefinedKeyException  the type has no such property.
  ZROHMOrderedMap<ZROHMValue> dictionaryWithValuesForKeys(const std::vector<std::string>& keys) const;
};

#endif
