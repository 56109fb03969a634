// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSObject.h>
#include <ZRCore/ZROHMClassInfo.h>

#include <functional>
#include <sstream>

NSUndefinedKeyException::NSUndefinedKeyException(const std::string& reason, std::string_view key)
    : std::runtime_error(reason), key_(key) {}
NSUndefinedKeyException::~NSUndefinedKeyException() = default;

NSInvalidArgumentException::NSInvalidArgumentException(const std::string& reason, std::string_view key)
    : std::invalid_argument(reason), key_(key) {}
NSInvalidArgumentException::~NSInvalidArgumentException() = default;

NSObject::~NSObject() = default;

bool NSObject::isEqual(const NSObject* other) const { return this == other; }

std::size_t NSObject::hash() const { return std::hash<const void*>{}(this); }

std::string NSObject::description() const {
  std::ostringstream text;
  text << '<' << classInfo().name() << ' ' << static_cast<const void*>(this) << '>';
  return text.str();
}

ZROHMClassInfo& NSObject::classInfo() const { return staticClassInfo(); }

ZROHMClassInfo& NSObject::staticClassInfo() {
  static auto* const root =
      new ZROHMClassInfo({.name = "NSObject", .factory = [] { return std::make_shared<NSObject>(); }});
  return *root;
}
