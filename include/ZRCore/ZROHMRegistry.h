// SPDX-License-Identifier: Apache-2.0
/// @file
/// The mapping tables of each type, and the operations of the mapping engine.
#ifndef ZRCORE_ZROHMREGISTRY_H
#define ZRCORE_ZROHMREGISTRY_H

#include <ZRCore/ZRExport.h>
#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZROHMDocument.h>
#include <ZRCore/ZROHMOrderedMap.h>
#include <ZRCore/ZROHMValue.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// Turns one value into another, on the way into a property or out of it. It may be given null.
using ZROHMAdapter = std::function<ZROHMValue(const ZROHMValue&)>;

/// An adapter that looks at parts, so that a document from which an object is filled need not make a value for it. In
/// tables it stands as any other adapter.
struct ZR_EXPORT ZROHMPartAdapter {
  /// @return what is to be stored; its texts live as long as the document. An array or a dictionary as a value,
  ///         `ZROHMPart::of(document.valueAt(place))`: a part that stands in a document holds none, and would store
  ///         null.
  using Adapt = ZROHMPart (*)(const ZROHMDocument& document, ZROHMDocument::Place place);

  ZROHMValue operator()(const ZROHMValue& value) const;

  Adapt adapt = nullptr;  ///< never null in a table
};

/// What stands in a table: a property name in mapping tables, an adapter in adapter tables, a descriptor in tables of
/// array and dictionary classes. Any table takes any entry, because removals move texts into other tables; an entry of
/// a kind that its table does not use counts as none.
using ZROHMTableEntry = std::variant<std::string, ZROHMAdapter, ZROHMClassInfo*>;
using ZROHMTable = ZROHMOrderedMap<ZROHMTableEntry>;

/// @name The keys of the five slots
/// @{
inline constexpr const char* _kZROMClassMappingDictionaryKey = "_kZROMClassMappingDictionaryKey";
inline constexpr const char* _kZROMClassAdapterDictionaryKey = "_kZROMClassAdapterDictionaryKey";
inline constexpr const char* _kZROMClassReverseAdapterDictionaryKey = "_kZROMClassReverseAdapterDictionaryKey";
inline constexpr const char* _kZROMClassArrayDictionaryKey = "_kZROMClassArrayDictionaryKey";
inline constexpr const char* _kZROMClassDictionaryDictionaryKey = "_kZROMClassDictionaryDictionaryKey";
/// @}

/// Stores and hands out tables. A table belongs to the exact type it was stored on: subtypes do not see it.
///
/// Reading takes no lock and copies nothing: a reader sees the whole old table or the whole new one. The tables that a
/// type ever had live as long as its descriptor, so types register once, at start-up, and not in a loop.
class ZR_EXPORT ZROHMRegistry {
 public:
  enum class Slot { mapping, adapter, reverseAdapter, arrayClasses, dictionaryClasses };

  /// The slot of that key (`_kZROM…`); nothing for any other text.
  static std::optional<Slot> slotForKey(std::string_view slotKey);

  /// The slot's table; null when it was never filled, or emptied by storing nothing. Valid as long as the descriptor.
  static const ZROHMTable* table(const ZROHMClassInfo& type, Slot slot);
  static const ZROHMTable* table(const ZROHMClassInfo& type, std::string_view slotKey);

  /// Stores a copy of `table`; nothing empties the slot.
  static void store(ZROHMClassInfo& type, Slot slot, std::optional<ZROHMTable> table);

 private:
  struct Stored;
};

/// A table to change: an empty one for nothing (null), a copy of a stored one, and a modifiable one as it is.
ZR_EXPORT ZROHMTable ohm_mutableDictionary(const ZROHMTable* table);
ZR_EXPORT ZROHMTable& ohm_mutableDictionary(ZROHMTable& table);

ZR_EXTERN_C_BEGIN

/// @name Changing the tables of a type
/// The Set functions replace a slot's table by a copy of the one given (nothing empties the slot); the Add functions
/// merge the given entries into it, replacing those of the same text; the Remove functions take texts out. Adding and
/// removing read, copy and replace without a lock: of two at once on one slot, one may be lost.
///
/// ZROHMRemoveAdapter, ZROHMRemoveReverseAdapter, ZROHMRemoveArray and ZROHMRemoveDictionary start from the type's
/// *mapping* table, take the texts out of a copy of it, and store the result in their own slot in place of what was
/// there; the mapping table stays as it is. Programs register by such sequences and must go on
/// finding the same tables.
/// @{
ZR_EXPORT void ZROHMSetMapping(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table);
ZR_EXPORT void ZROHMAddMapping(ZROHMClassInfo& type, const ZROHMTable& table);
ZR_EXPORT void ZROHMRemoveMapping(ZROHMClassInfo& type, const std::vector<std::string>& keys);
ZR_EXPORT void ZROHMSetAdapter(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table);
ZR_EXPORT void ZROHMAddAdapter(ZROHMClassInfo& type, const ZROHMTable& table);
ZR_EXPORT void ZROHMRemoveAdapter(ZROHMClassInfo& type, const std::vector<std::string>& keys);
ZR_EXPORT void ZROHMSetReverseAdapter(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table);
ZR_EXPORT void ZROHMAddReverseAdapter(ZROHMClassInfo& type, const ZROHMTable& table);
ZR_EXPORT void ZROHMRemoveReverseAdapter(ZROHMClassInfo& type, const std::vector<std::string>& keys);
ZR_EXPORT void ZROHMSetArrayClasses(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table);
ZR_EXPORT void ZROHMAddArrayClasses(ZROHMClassInfo& type, const ZROHMTable& table);
ZR_EXPORT void ZROHMRemoveArray(ZROHMClassInfo& type, const std::vector<std::string>& keys);
ZR_EXPORT void ZROHMSetDictionaryClasses(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table);
ZR_EXPORT void ZROHMAddDictionaryClasses(ZROHMClassInfo& type, const ZROHMTable& table);
ZR_EXPORT void ZROHMRemoveDictionary(ZROHMClassInfo& type, const std::vector<std::string>& keys);
/// @}

/// Makes the type mappable, which its subtypes then are too (its tables stay its own), and gives it the five type-level
/// operations below. Harmless when called again.
/// @return whether the last of them was added: true the first time, false from then on.
ZR_EXPORT bool ZROHMMappable(ZROHMClassInfo& type);

/// The property names of the type, in declaration order, then those of its supertype, and so on; without the root's. A
/// property that a subtype declares again is listed once for each. Never null; valid as long as the descriptor.
ZR_EXPORT const std::vector<std::string>* ZROHMMappableKeys(const ZROHMClassInfo& type);

/// @name Type-level operations of mappable types
/// Each does what the Set function of the same table does.
/// @{
ZR_EXPORT void zrohm_setMappingDictionary_Class_IMP(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table);
ZR_EXPORT void zrohm_setAdapterDictionary_Class_IMP(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table);
ZR_EXPORT void zrohm_setReverseAdapterDictionary_Class_IMP(ZROHMClassInfo& type,
                                                           const std::optional<ZROHMTable>& table);
ZR_EXPORT void zrohm_setArrayClasses_Class_IMP(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table);
ZR_EXPORT void zrohm_setDictionaryClasses_Class_IMP(ZROHMClassInfo& type, const std::optional<ZROHMTable>& table);
/// @}

ZR_EXTERN_C_END

/// What `setValuesForKeysWithDictionary` does with the dictionary at that place of a document, without making values of
/// what the object's properties and part adapters take as it stands. Where the place has no dictionary, nothing.
/// @throw as NSObject::setValueForKey
ZR_EXPORT void ZROHMSetValuesFromDocument(NSObject& object, const ZROHMDocument& document,
                                          ZROHMDocument::Place dictionary);

// The steps under the entry points of NSObject.

/// Stores a value by the tables of a mappable object's exact type.
/// @return false when it stored the value; true when the caller must store it as it is, under the given key.
ZR_EXPORT bool zrohm_setValueForKey_f(NSObject& object, const ZROHMValue& value, std::string_view key);

/// Stores a value under the property that the mapping table names for `key`, through `NSObject::setValueForKey`; drops
/// it when there is none. The property's adapter is applied here, and by that call once more: an adapter must take its
/// own result.
ZR_EXPORT void zrohm_setValueForUndefinedKey_f(NSObject& object, const ZROHMValue& value, std::string_view key);

/// The basic set, without tables: stores into the property `key`; a key that is not a property goes to
/// `NSObject::setValueForUndefinedKey`.
/// @throw NSInvalidArgumentException  `value` is null and the property is a scalar.
ZR_EXPORT void zrohm_setValueForKey(NSObject& object, const ZROHMValue& value, std::string_view key);

/// The basic set of an undefined key.
/// @throw NSUndefinedKeyException  always.
[[noreturn]] ZR_EXPORT void zrohm_setValueForUndefinedKey(NSObject& object, const ZROHMValue& value,
                                                          std::string_view key);

/// The basic export, without tables: the values of the properties `keys`, null where there is none.
/// @throw NSUndefinedKeyException  a key is not a property.
ZR_EXPORT ZROHMDictionary zrohm_dictionaryWithValuesForKeys(const NSObject& object,
                                                            const std::vector<std::string>& keys);

#endif
