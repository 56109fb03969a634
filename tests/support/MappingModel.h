// SPDX-License-Identifier: Apache-2.0
// Model types for the tests of the mapping engine, one of each kind of property.
#ifndef ZRCORE_TESTS_SUPPORT_MAPPINGMODEL_H
#define ZRCORE_TESTS_SUPPORT_MAPPINGMODEL_H

#include <ZRCore/NSCoder.h>
#include <ZRCore/ZROHMRegistry.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

/// Declares a property `name` with its accessors.
#define ZR_TEST_PROPERTY(Type, name, Name)                   \
 public:                                                     \
  const Type& name() const { return name##_; }               \
  void set##Name(Type value) { name##_ = std::move(value); } \
                                                             \
 private:                                                    \
  Type name##_{};

/// A type that nobody made mappable.
class PlainItem : public NSObject {
  ZR_TEST_PROPERTY(std::optional<std::string>, label, Label)
  ZR_TEST_PROPERTY(std::int32_t, count, Count)

 public:
  static ZROHMClassInfo& staticClassInfo() {
    static auto* const info = ZROHMClassBuilder<PlainItem>("PlainItem", NSObject::staticClassInfo())
                                  .property("label", &PlainItem::label, &PlainItem::setLabel)
                                  .property("count", &PlainItem::count, &PlainItem::setCount)
                                  .build()
                                  .release();
    return *info;
  }
  ZROHMClassInfo& classInfo() const override { return staticClassInfo(); }
};

/// A mappable, archivable type.
class Item : public NSObject, public NSCoding {
  ZR_TEST_PROPERTY(std::optional<std::string>, name, Name)
  ZR_TEST_PROPERTY(std::int32_t, count, Count)
  ZR_TEST_PROPERTY(std::uint64_t, level, Level)
  ZR_TEST_PROPERTY(double, weight, Weight)
  ZR_TEST_PROPERTY(bool, isOpen, IsOpen)
  ZR_TEST_PROPERTY(CLLocationCoordinate2D, place, Place)
  ZR_TEST_PROPERTY(std::shared_ptr<Item>, next, Next)
  ZR_TEST_PROPERTY(std::shared_ptr<PlainItem>, plain, Plain)
  ZR_TEST_PROPERTY(ZROHMValue, tags, Tags)
  ZR_TEST_PROPERTY(ZROHMValue, extras, Extras)

 public:
  static ZROHMClassInfo& staticClassInfo() {
    static auto* const info = [] {
      auto built = ZROHMClassBuilder<Item>("Item", NSObject::staticClassInfo())
                       .property("name", &Item::name, &Item::setName)
                       .property("count", &Item::count, &Item::setCount)
                       .property("level", &Item::level, &Item::setLevel)
                       .property("weight", &Item::weight, &Item::setWeight)
                       .property("isOpen", &Item::isOpen, &Item::setIsOpen)
                       .property("place", &Item::place, &Item::setPlace)
                       .property("next", &Item::next, &Item::setNext)
                       .property("plain", &Item::plain, &Item::setPlain)
                       .property("tags", &Item::tags, &Item::setTags, "NSArray")
                       .property("extras", &Item::extras, &Item::setExtras, "NSDictionary")
                       .build();
      ZROHMMappable(*built);
      return built.release();
    }();
    return *info;
  }
  ZROHMClassInfo& classInfo() const override { return staticClassInfo(); }

  static std::shared_ptr<Item> initWithCoder(const NSCoder& coder) {
    auto item = std::make_shared<Item>();
    item->setName(coder.decodeStringForKey("name"));
    item->setCount(coder.decodeInt32ForKey("count"));
    item->setWeight(coder.decodeDoubleForKey("weight"));
    item->setNext(std::dynamic_pointer_cast<Item>(coder.decodeObjectForKey("next")));
    return item;
  }
  void encodeWithCoder(NSCoder& coder) const override {
    coder.encodeStringForKey(name(), "name");
    coder.encodeInt32ForKey(count(), "count");
    coder.encodeDoubleForKey(weight(), "weight");
    coder.encodeObjectForKey(next(), "next");
  }
};

/// A subtype that declares `name` again.
class NamedItem : public Item {
  ZR_TEST_PROPERTY(std::optional<std::string>, title, Title)

 public:
  static ZROHMClassInfo& staticClassInfo() {
    static auto* const info = ZROHMClassBuilder<NamedItem>("NamedItem", Item::staticClassInfo())
                                  .property("title", &NamedItem::title, &NamedItem::setTitle)
                                  .property("name", &NamedItem::title, &NamedItem::setTitle)
                                  .build()
                                  .release();
    return *info;
  }
  ZROHMClassInfo& classInfo() const override { return staticClassInfo(); }
};

#undef ZR_TEST_PROPERTY

/// Empties the tables of the model's types, so that each test begins with none.
inline void forgetTables() {
  for (ZROHMClassInfo* const type :
       {&PlainItem::staticClassInfo(), &Item::staticClassInfo(), &NamedItem::staticClassInfo()}) {
    ZROHMSetMapping(*type, std::nullopt);
    ZROHMSetAdapter(*type, std::nullopt);
    ZROHMSetReverseAdapter(*type, std::nullopt);
    ZROHMSetArrayClasses(*type, std::nullopt);
    ZROHMSetDictionaryClasses(*type, std::nullopt);
  }
}

#endif
