#include <ZRCore/NSObject.h>

#include <functional>
#include <sstream>
#include <typeinfo>

NSObject::~NSObject() = default;

bool NSObject::isEqual(const NSObject* other) const { return this == other; }

std::size_t NSObject::hash() const { return std::hash<const void*>{}(this); }

std::string NSObject::description() const {
  std::ostringstream text;
  text << '<' << typeid(*this).name() << ' ' << static_cast<const void*>(this) << '>';
  return text.str();
}
