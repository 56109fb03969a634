// SPDX-License-Identifier: Apache-2.0
/// @file
/// How values enter and leave typed properties. Included by ZROHMClassInfo.h.
#ifndef ZRCORE_ZROHMPROPERTIES_H
#define ZRCORE_ZROHMPROPERTIES_H

#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZROHMDocument.h>

#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace ZROHMDetail {

template <class Getter>
struct GetterOf;
template <class Result, class Class>
struct GetterOf<Result (Class::*)() const> {
  using Object = Class;
  using Type = std::remove_cvref_t<Result>;
};
template <class Result, class Class>
struct GetterOf<Result (Class::*)() const noexcept> : GetterOf<Result (Class::*)() const> {};

/// How one type of property converts. `from` never sees null when `kind` is scalar.
template <class Type>
struct Conversion;

template <>
struct Conversion<std::optional<std::string>> {
  static constexpr auto kind = ZROHMPropertyKind::object;
  static constexpr const char* foundationClassName = "NSString";
  static std::optional<std::string> from(const ZROHMValue& value) {
    if (const std::string* const text = value.string()) return *text;
    if (value.isNumber()) return value.text();
    return std::nullopt;
  }
  static std::optional<std::string> from(const ZROHMPart& part) {
    if (part.kind == ZROHMValue::Kind::string) return std::optional<std::string>(part.text);
    return std::nullopt;  // a coordinate
  }
  static ZROHMValue to(const std::optional<std::string>& text) { return text ? ZROHMValue(*text) : ZROHMValue(); }
};

template <class Number>
requires std::is_arithmetic_v<Number>
struct Conversion<Number> {
  static constexpr auto kind = ZROHMPropertyKind::scalar;
  static constexpr const char* foundationClassName = "";
  static Number from(const ZROHMValue& value) {
    if constexpr (std::same_as<Number, bool>) {
      return (value.integerBits() & 0xFF) != 0;
    } else if constexpr (std::integral<Number>) {
      return static_cast<Number>(value.integerBits());
    } else {
      return static_cast<Number>(value.doubleValue());
    }
  }
  static ZROHMValue to(Number number) { return number; }
};

template <>
struct Conversion<CLLocationCoordinate2D> {
  static constexpr auto kind = ZROHMPropertyKind::scalar;
  static constexpr const char* foundationClassName = "";
  static CLLocationCoordinate2D from(const ZROHMValue& value) {
    const CLLocationCoordinate2D* const coordinate = value.coordinate();
    return coordinate ? *coordinate : CLLocationCoordinate2D{};
  }
  static CLLocationCoordinate2D from(const ZROHMPart& part) { return part.coordinate; }  // (0, 0) of a text
  static ZROHMValue to(CLLocationCoordinate2D coordinate) { return coordinate; }
};

template <std::derived_from<NSObject> Object>
struct Conversion<std::shared_ptr<Object>> {
  static constexpr auto kind = ZROHMPropertyKind::object;
  static constexpr const char* foundationClassName = "";
  static std::shared_ptr<Object> from(const ZROHMValue& value) {
    return std::dynamic_pointer_cast<Object>(value.object());
  }
  static ZROHMValue to(const std::shared_ptr<Object>& object) { return object; }
  static ZROHMClassInfo& declaredClass() { return Object::staticClassInfo(); }
};

template <>
struct Conversion<ZROHMValue> {
  static constexpr auto kind = ZROHMPropertyKind::object;
  static constexpr const char* foundationClassName = "";
  static const ZROHMValue& from(const ZROHMValue& value) { return value; }
  static ZROHMValue to(const ZROHMValue& value) { return value; }
};

}  // namespace ZROHMDetail

template <class Getter, class Setter>
ZROHMProperty ZROHMMakeProperty(Getter get, Setter set, std::string foundationClassName) {
  using Object = typename ZROHMDetail::GetterOf<Getter>::Object;
  using Conversion = ZROHMDetail::Conversion<typename ZROHMDetail::GetterOf<Getter>::Type>;
  ZROHMProperty property;
  property.kind = Conversion::kind;
  property.foundationClassName =
      foundationClassName.empty() ? Conversion::foundationClassName : std::move(foundationClassName);
  if constexpr (requires { Conversion::declaredClass(); }) property.declaredClass = &Conversion::declaredClass;
  property.set = [set](NSObject& object, const ZROHMValue& value) {
    (static_cast<Object&>(object).*set)(Conversion::from(value));
  };
  if constexpr (requires(const ZROHMPart& part) { Conversion::from(part); }) {
    property.setPart = [set](NSObject& object, const ZROHMPart& part) {
      (static_cast<Object&>(object).*set)(Conversion::from(part));
    };
  }
  property.get = [get](const NSObject& object) { return Conversion::to((static_cast<const Object&>(object).*get)()); };
  return property;
}

template <class Object>
ZROHMClassBuilder<Object>::ZROHMClassBuilder(std::string name, ZROHMClassInfo& superclass) {
  parts_.name = std::move(name);
  parts_.superclass = &superclass;
  if constexpr (requires {
                  { Object::init() } -> std::convertible_to<std::shared_ptr<Object>>;  // not an inherited one
                }) {
    parts_.factory = [] { return std::shared_ptr<NSObject>(Object::init()); };
  } else if constexpr (std::default_initializable<Object>) {
    parts_.factory = [] { return std::shared_ptr<NSObject>(std::make_shared<Object>()); };
  }
  if constexpr (requires(const NSCoder& coder) {
                  { Object::initWithCoder(coder) } -> std::convertible_to<std::shared_ptr<NSObject>>;
                }) {
    parts_.coderFactory = [](const NSCoder& coder) { return std::shared_ptr<NSObject>(Object::initWithCoder(coder)); };
  }
}

#endif
