// SPDX-License-Identifier: Apache-2.0
/// @file
/// Descriptors of object types: names, properties by name, and how to make an instance.
#ifndef ZRCORE_ZROHMCLASSINFO_H
#define ZRCORE_ZROHMCLASSINFO_H

#include <ZRCore/NSObject.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZROHMOrderedMap.h>
#include <ZRCore/ZROHMValue.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class NSCoder;
struct ZROHMPart;

/// What a property is, for those who store into it.
enum class ZROHMPropertyKind {
  scalar,  ///< a number or a coordinate: it cannot be nothing
  object   ///< a text, an array, a dictionary or an object: it can
};

/// One property of a type.
struct ZR_EXPORT ZROHMProperty {
  ZROHMPropertyKind kind = ZROHMPropertyKind::object;

  /// The name of the declared class where it has no descriptor ("NSString", "NSArray", "NSDictionary"); else empty.
  std::string foundationClassName;

  /// The descriptor of the declared class where that is a model type; null otherwise. A function, because a type may
  /// have a property of its own type.
  ZROHMClassInfo& (*declaredClass)() = nullptr;

  /// The declared class of an object-typed property. Empty for scalars and for properties that take anything.
  const std::string& declaredClassName() const;

  std::function<void(NSObject&, const ZROHMValue&)> set;  ///< never given null when `kind` is scalar
  std::function<ZROHMValue(const NSObject&)> get;
  /// What `set` does with a text or a coordinate of which no value was made; empty where that would save nothing.
  std::function<void(NSObject&, const ZROHMPart&)> setPart{};
};

/// What a descriptor is made of; `ZROHMClassBuilder` fills it from member functions.
struct ZROHMClassParts {
  std::string name{};
  ZROHMClassInfo* superclass = nullptr;
  std::function<std::shared_ptr<NSObject>()> factory{};                     ///< empty: no instances by default
  std::function<std::shared_ptr<NSObject>(const NSCoder&)> coderFactory{};  ///< empty: not archivable
  ZROHMOrderedMap<ZROHMProperty> properties{};                              ///< the type's own, as declared
};

/// The descriptor of one type. Descriptors are compared by identity: make one per type and keep it for the process.
/// Immutable but for the conformance flag and the tables that `ZROHMRegistry` attaches; any thread may read it.
class ZR_EXPORT ZROHMClassInfo {
 public:
  explicit ZROHMClassInfo(ZROHMClassParts parts);
  ~ZROHMClassInfo();
  ZROHMClassInfo(const ZROHMClassInfo&) = delete;
  ZROHMClassInfo& operator=(const ZROHMClassInfo&) = delete;

  const std::string& name() const { return parts_.name; }
  /// Null for the root.
  ZROHMClassInfo* superclass() const { return parts_.superclass; }
  /// The type's own properties in declaration order.
  const ZROHMOrderedMap<ZROHMProperty>& properties() const { return parts_.properties; }
  /// The property of that name that the type or the nearest supertype declares; null when none does.
  const ZROHMProperty* propertyNamed(std::string_view name) const;
  /// The names of the own properties, then those of the supertype, and so on; the root's are left out. A name that two
  /// types declare is listed twice.
  const std::vector<std::string>& propertyNames() const { return propertyNames_; }

  /// Whether this is `other` or a subtype of it.
  bool isSubtypeOf(const ZROHMClassInfo& other) const;

  /// A default instance; null for a type without a factory.
  std::shared_ptr<NSObject> makeInstance() const { return parts_.factory ? parts_.factory() : nullptr; }
  /// An instance read from an archive; null for a type that is not archivable.
  std::shared_ptr<NSObject> makeInstance(const NSCoder& coder) const {
    return parts_.coderFactory ? parts_.coderFactory(coder) : nullptr;
  }
  bool isArchivable() const { return static_cast<bool>(parts_.coderFactory); }

  /// Whether the type, or a supertype, has been made mappable.
  bool conformsToMappable() const;
  /// Makes the type mappable. @return whether it had not been made so itself before.
  bool adoptMappable() { return !mappable_.exchange(true); }

 private:
  friend class ZROHMRegistry;
  friend class ZROHMPlan;
  /// A stored table, or what was made of all of them. Older ones are kept behind it, because a reader may still be
  /// using them.
  struct ZR_EXPORT Snapshot {
    virtual ~Snapshot();
    const Snapshot* older = nullptr;
  };
  static constexpr std::size_t kSlots = 5;

  ZROHMClassParts parts_;
  std::vector<std::string> propertyNames_;
  ZROHMOrderedMap<const ZROHMProperty*> allProperties_;  // own and inherited
  std::atomic<bool> mappable_{false};
  std::array<std::atomic<const Snapshot*>, kSlots> slots_{};
  std::atomic<std::uint64_t> generation_{0};  // of the tables: how often one was stored
  mutable std::atomic<const Snapshot*> plan_{nullptr};
};

/// The property `name` set and read as `get` and `set` do, members of a class derived from NSObject. What becomes of a
/// value depends on what the getter returns:
///
/// | the getter returns           | declared class | a number  | a text         | null   | another kind        |
/// |------------------------------|----------------|-----------|----------------|--------|---------------------|
/// | `std::optional<std::string>` | NSString       | its text  | itself         | absent | absent              |
/// | a number or `bool`           | none, scalar   | converted | numeric prefix | raises | 0                   |
/// | `CLLocationCoordinate2D`     | none, scalar   | (0, 0)    | (0, 0)         | raises | a coordinate itself |
/// | `std::shared_ptr<Object>`    | Object's       | absent    | absent         | absent | an Object itself    |
/// | `ZROHMValue`                 | as given       | itself    | itself         | null   | itself              |
///
/// Whatever else is given to a coordinate is (0, 0), to an object absent.
/// Integers keep the low bits of the number without its fraction (`ZROHMValue::integerBits`); a `bool` is true when the
/// lowest eight bits are not all zero, as in a boolean of eight bits.
template <class Getter, class Setter>
ZROHMProperty ZROHMMakeProperty(Getter get, Setter set, std::string foundationClassName = {});

/// Declares a type in a few lines:
/// @code
/// static ZROHMClassInfo* const info = ZROHMClassBuilder<Stop>("Stop", NSObject::staticClassInfo())
///                                         .property("name", &Stop::name, &Stop::setName)
///                                         .property("platform", &Stop::platform, &Stop::setPlatform)
///                                         .build().release();
/// @endcode
/// Instances are made by `Object::init()` where the type has one of its own, else by the default constructor, else not
/// at all; from archives by `Object::initWithCoder(coder)` where there is one. An inherited `initWithCoder` counts, and
/// makes what it makes for the supertype: redeclare it.
template <class Object>
class ZROHMClassBuilder {
 public:
  ZROHMClassBuilder(std::string name, ZROHMClassInfo& superclass);

  /// Adds a property; see `ZROHMMakeProperty`. `foundationClassName` is for properties of type `ZROHMValue`.
  template <class Getter, class Setter>
  ZROHMClassBuilder& property(std::string name, Getter get, Setter set, std::string foundationClassName = {}) {
    parts_.properties.set(std::move(name), ZROHMMakeProperty(get, set, std::move(foundationClassName)));
    return *this;
  }

  std::unique_ptr<ZROHMClassInfo> build() { return std::make_unique<ZROHMClassInfo>(std::move(parts_)); }

 private:
  ZROHMClassParts parts_;
};

#include <ZRCore/ZROHMProperties.h>

#endif
