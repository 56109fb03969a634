// SPDX-License-Identifier: Apache-2.0
// Random types, tables and documents, for the library's engine to be held against the plain one.
#ifndef ZRCORE_TESTS_SUPPORT_MAPPINGWORLD_H
#define ZRCORE_TESTS_SUPPORT_MAPPINGWORLD_H

#include <ZRCore/ZROHMRegistry.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

#include "ExactText.h"
#include "PlainEngine.h"

/// Three types of random properties and tables, made of bytes: the same bytes make the same world. It writes down each
/// thing that a set does, in order.
class MappingWorld {
 public:
  explicit MappingWorld(std::span<const std::uint8_t> bytes) : bytes_(bytes) {
    current = this;
    for (std::size_t number = 0; number < types_.size(); ++number) makeType(number);
    for (const auto& type : types_) {
      if (choose(4) != 0) ZROHMMappable(*type);
      fillTables(*type);
    }
    document_ = randomDictionary(3);
  }
  ~MappingWorld() { current = nullptr; }
  MappingWorld(const MappingWorld&) = delete;
  MappingWorld& operator=(const MappingWorld&) = delete;

  const ZROHMDictionary& document() const { return document_; }

  using Fill = std::function<void(NSObject&, const ZROHMDictionary&)>;
  using Export = std::function<ZROHMDictionary(const NSObject&, const std::vector<std::string>&)>;

  /// What happens when `fill` fills an object of the first type and `write` exports it.
  std::string account(const Fill& fill, const Export& write) {
    const std::shared_ptr<NSObject> object = types_[0]->makeInstance();
    telling([&] { fill(*object, document_); });
    telling([&] { account_ += exactText(write(*object, types_[0]->propertyNames())); });
    telling([&] { account_ += exactText(write(*object, {nameOf(choose(kNames.size())), "b"})); });
    return account_;
  }

 private:
  static constexpr std::array<const char*, 12> kNames{
      "a", "b", "c", "name", "count", "place", "adminArea1", "adminArea3", "theOther", "next", "undeclared", ""};
  static inline MappingWorld* current = nullptr;

  /// An object whose properties are entries.
  class Thing : public NSObject {
   public:
    explicit Thing(ZROHMClassInfo& type) : type_(type) {}
    ZROHMClassInfo& classInfo() const override { return type_; }
    ZROHMDictionary values;

   private:
    ZROHMClassInfo& type_;
  };

  template <std::size_t Number>
  static ZROHMClassInfo& typeOfNumber() {
    return *current->types_[Number];
  }

  std::size_t choose(std::size_t count) {
    const std::size_t byte = next_ < bytes_.size() ? bytes_[next_] : 0;
    ++next_;
    return byte % count;
  }
  static std::string nameOf(std::size_t number) { return kNames[number]; }
  std::string name() { return nameOf(choose(kNames.size())); }

  template <class Action>
  void telling(Action action) {
    try {
      action();
    } catch (const NSUndefinedKeyException& exception) {
      account_ += "\nundefined " + exception.key();
    } catch (const NSInvalidArgumentException& exception) {
      account_ += "\nnothing into " + exception.key();
    }
  }

  template <class Type>
  ZROHMProperty property(const std::string& name) {
    using Conversion = ZROHMDetail::Conversion<Type>;
    const auto store = [name](NSObject& object, ZROHMValue value) {
      current->account_ += "\nset " + object.classInfo().name() + '.' + name + ' ' + exactText(value);
      static_cast<Thing&>(object).values.set(name, std::move(value));
    };
    ZROHMProperty made;
    made.kind = Conversion::kind;
    made.set = [store](NSObject& object, const ZROHMValue& value) {
      store(object, Conversion::to(Conversion::from(value)));
    };
    if constexpr (requires(const ZROHMPart& part) { Conversion::from(part); }) {
      made.setPart = [store](NSObject& object, const ZROHMPart& part) {
        store(object, Conversion::to(Conversion::from(part)));
      };
    }
    made.get = [name](const NSObject& object) {
      const ZROHMValue* const value = static_cast<const Thing&>(object).values.find(name);
      return value != nullptr ? *value : ZROHMValue();
    };
    return made;
  }

  void makeType(std::size_t number) {
    ZROHMClassParts parts{.name = "T" + std::to_string(number)};
    parts.superclass = number > 0 && choose(2) == 0 ? types_[number - 1].get() : &NSObject::staticClassInfo();
    parts.factory = [number]() -> std::shared_ptr<NSObject> {
      current->account_ += "\nmake T" + std::to_string(number);
      return number == 2 ? nullptr : std::make_shared<Thing>(*current->types_[number]);
    };
    for (std::size_t count = choose(7); count > 0; --count) {
      const std::string name = this->name();
      switch (choose(6)) {
        case 0:
          parts.properties.set(name, property<std::optional<std::string>>(name));
          break;
        case 1:
          parts.properties.set(name, property<double>(name));
          break;
        case 2:
          parts.properties.set(name, property<CLLocationCoordinate2D>(name));
          break;
        case 3: {
          ZROHMProperty nested = property<ZROHMValue>(name);
          constexpr std::array kTypes{&typeOfNumber<0>, &typeOfNumber<1>, &typeOfNumber<2>};
          nested.declaredClass = kTypes[choose(3)];
          parts.properties.set(name, std::move(nested));
          break;
        }
        case 4:
          parts.properties.set(name, ZROHMProperty{});  // neither read nor set
          break;
        default:
          parts.properties.set(name, property<ZROHMValue>(name));
      }
    }
    types_[number] = std::make_unique<ZROHMClassInfo>(std::move(parts));
  }

  static ZROHMPart placeIn(const ZROHMDocument& document, ZROHMDocument::Place place) {
    current->account_ += "\nplace in " + exactText(document.valueAt(place));
    CLLocationCoordinate2D found{};
    for (auto content = document.contentOf(place);
         document.partAt(place).kind == ZROHMValue::Kind::dictionary && !content.isAtEnd();) {
      std::string_view key;
      const auto entry = document.nextEntry(content, key);
      if (key == "a") found.latitude = document.partAt(entry).value.doubleValue();
    }
    return ZROHMPart::of(found);
  }
  static ZROHMPart textOf(const ZROHMDocument& document, ZROHMDocument::Place place) {
    const ZROHMPart part = document.partAt(place);
    return part.kind == ZROHMValue::Kind::string ? part : ZROHMPart::of(ZROHMValue(document.valueAt(place).text()));
  }

  ZROHMTableEntry entry() {
    switch (choose(9)) {
      case 0:
        return types_[choose(types_.size())].get();
      case 1:
        return ZROHMAdapter(ZROHMPartAdapter{placeIn});
      case 2:
        return ZROHMAdapter(ZROHMPartAdapter{textOf});
      case 3:
        return ZROHMAdapter([result = randomValue(1)](const ZROHMValue& value) {
          current->account_ += "\nadapt " + exactText(value);
          return result;
        });
      case 4:
        return ZROHMAdapter(
            [type = types_[choose(types_.size())].get(), from = name(), to = name()](const ZROHMValue& value) {
              ZROHMAddMapping(*type, ZROHMTable{{from, to}});  // tables may change at any time
              return value;
            });
      case 5:
        return ZROHMAdapter();
      default:
        return name();
    }
  }

  void fillTables(ZROHMClassInfo& type) {
    const auto table = [this] {
      ZROHMTable made;
      for (std::size_t count = choose(8); count > 0; --count) made.set(name(), entry());
      return made;
    };
    if (choose(8) != 0) ZROHMSetMapping(type, table());
    ZROHMSetAdapter(type, table());
    ZROHMSetReverseAdapter(type, table());
    ZROHMSetArrayClasses(type, table());
    ZROHMSetDictionaryClasses(type, table());
  }

  ZROHMValue randomValue(int depth) {
    switch (choose(depth > 0 ? 9 : 6)) {
      case 0:
        return nullptr;
      case 1:
        return true;
      case 2:
        return static_cast<int>(choose(256));
      case 3:
        return -2.5;
      case 4:
        return "a text of some length";
      case 5:
        return "7";
      case 6: {
        ZROHMArray elements;
        for (std::size_t count = choose(4); count > 0; --count) elements.push_back(randomValue(depth - 1));
        return elements;
      }
      default:
        return randomDictionary(depth - 1);
    }
  }

  ZROHMDictionary randomDictionary(int depth) {
    ZROHMDictionary entries;
    for (std::size_t count = choose(8); count > 0; --count) {
      std::string key = name();
      entries.set(std::move(key), randomValue(depth));
    }
    return entries;
  }

  const std::span<const std::uint8_t> bytes_;
  std::size_t next_ = 0;
  std::array<std::unique_ptr<ZROHMClassInfo>, 3> types_;
  ZROHMDictionary document_;
  std::string account_;
};

/// Fills and exports by the plain engine and by the library's, from values, from a document, and by whatever else is
/// given. @return what differs; empty: nothing.
inline std::string differenceInMapping(std::span<const std::uint8_t> bytes,
                                       const std::vector<MappingWorld::Fill>& others = {}) {
  const MappingWorld::Export write = [](const NSObject& object, const std::vector<std::string>& keys) {
    return object.dictionaryWithValuesForKeys(keys);
  };
  const std::string expected = MappingWorld(bytes).account(PlainEngine::setAll, PlainEngine::exported);
  std::vector<MappingWorld::Fill> fills{
      [](NSObject& object, const ZROHMDictionary& content) { object.setValuesForKeysWithDictionary(content); },
      [](NSObject& object, const ZROHMDictionary& content) {
        const auto document = ZROHMDocumentOfValue(content);
        ZROHMSetValuesFromDocument(object, *document, document->root());
      }};
  fills.insert(fills.end(), others.begin(), others.end());
  for (std::size_t i = 0; i < fills.size(); ++i) {
    const std::string account = MappingWorld(bytes).account(fills[i], write);
    if (account != expected) return "way " + std::to_string(i) + account + "\n\nand not" + expected;
  }
  return {};
}

#endif
