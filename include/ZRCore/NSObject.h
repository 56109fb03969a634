/// @file
/// The root of the objects that the framework hands out and that archives, collections and mappings treat alike.
#ifndef ZRCORE_NSOBJECT_H
#define ZRCORE_NSOBJECT_H

#include <ZRCore/ZRExport.h>

#include <cstddef>
#include <string>

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
};

#endif
