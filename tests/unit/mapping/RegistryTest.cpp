// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZROHMRegistry.h>
#include <gmock/gmock.h>

#include <atomic>
#include <random>
#include <thread>

#include "MappingModel.h"
#include "RegistryCalls.h"
#include "TestSeed.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Slot = ZROHMRegistry::Slot;

/// The entries of a slot as "key>text"; "other" for entries that are not texts.
std::vector<std::string> textsIn(const ZROHMClassInfo& type, Slot slot) {
  std::vector<std::string> texts;
  const ZROHMTable* const table = ZROHMRegistry::table(type, slot);
  if (table == nullptr) return texts;
  for (const auto& [key, entry] : *table) {
    const auto* const text = std::get_if<std::string>(&entry);
    texts.push_back(key + ">" + (text != nullptr ? *text : "other"));
  }
  return texts;
}

class Registry : public testing::Test {
 protected:
  ZROHMClassInfo type{{.name = "Type", .superclass = &NSObject::staticClassInfo()}};
};

TEST_F(Registry, ARemovalFromAnyOtherTableStoresTheMappingTableThere) {
  ZROHMSetMapping(type, ZROHMTable{{"PostalCode", "zip"}, {"Street", "street"}});
  ZROHMSetArrayClasses(type, ZROHMTable{{"other", &type}});
  ZROHMRemoveArray(type, {"zip"});  // a property's name, no source key: nothing to remove
  EXPECT_THAT(textsIn(type, Slot::arrayClasses), ElementsAre("PostalCode>zip", "Street>street"));
  ZROHMRemoveAdapter(type, {"Street"});
  EXPECT_THAT(textsIn(type, Slot::adapter), ElementsAre("PostalCode>zip"));
  EXPECT_THAT(textsIn(type, Slot::mapping), ElementsAre("PostalCode>zip", "Street>street"));
  ZROHMRemoveMapping(type, {"Street", "no such key"});
  EXPECT_THAT(textsIn(type, Slot::mapping), ElementsAre("PostalCode>zip"));
}

TEST_F(Registry, AnySequenceOfCallsLeavesTheTablesThatTheRulesTell) {
  std::mt19937 random(testSeed(20161121));
  for (int sequence = 0; sequence < 300; ++sequence) {
    std::vector<std::uint8_t> bytes(200);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
    ASSERT_EQ(RegistryCalls::run(bytes), "") << "sequence " << sequence;
  }
}

TEST_F(Registry, TablesBelongToTheExactTypeConformanceIsInherited) {
  ZROHMClassInfo subtype({.name = "Subtype", .superclass = &type});
  ZROHMSetMapping(type, ZROHMTable{{"a", "b"}});
  EXPECT_FALSE(subtype.conformsToMappable());
  EXPECT_TRUE(ZROHMMappable(type));
  EXPECT_TRUE(subtype.conformsToMappable());
  EXPECT_FALSE(NSObject::staticClassInfo().conformsToMappable());
  EXPECT_EQ(ZROHMRegistry::table(subtype, Slot::mapping), nullptr);
  EXPECT_FALSE(ZROHMMappable(type)) << "its operations were added before";
  EXPECT_TRUE(ZROHMMappable(subtype)) << "its own operations were not";
}

TEST_F(Registry, TypeLevelOperationsSetTheTableOfTheirName) {
  const ZROHMTable table{{"a", "b"}};
  const std::pair<decltype(&ZROHMSetMapping), const char*> operations[] = {
      {zrohm_setMappingDictionary_Class_IMP, "_kZROMClassMappingDictionaryKey"},
      {zrohm_setAdapterDictionary_Class_IMP, "_kZROMClassAdapterDictionaryKey"},
      {zrohm_setReverseAdapterDictionary_Class_IMP, "_kZROMClassReverseAdapterDictionaryKey"},
      {zrohm_setArrayClasses_Class_IMP, "_kZROMClassArrayDictionaryKey"},
      {zrohm_setDictionaryClasses_Class_IMP, "_kZROMClassDictionaryDictionaryKey"}};
  for (const auto& [operation, slotKey] : operations) {
    EXPECT_EQ(ZROHMRegistry::table(type, slotKey), nullptr) << slotKey;
    operation(type, table);
    ASSERT_NE(ZROHMRegistry::table(type, slotKey), nullptr) << slotKey;
    EXPECT_TRUE(ZROHMRegistry::table(type, slotKey)->contains("a")) << slotKey;
    operation(type, std::nullopt);
    EXPECT_EQ(ZROHMRegistry::table(type, slotKey), nullptr) << slotKey;
  }
  EXPECT_EQ(ZROHMRegistry::table(type, "mapping"), nullptr);
}

TEST_F(Registry, ASnapshotInAReadersHandOutlivesItsReplacement) {
  ZROHMSetMapping(type, ZROHMTable{{"a", "b"}});
  const ZROHMTable* const read = ZROHMRegistry::table(type, Slot::mapping);
  ZROHMSetMapping(type, std::nullopt);
  EXPECT_TRUE(read->contains("a"));
  EXPECT_THAT(textsIn(type, Slot::mapping), IsEmpty());
}

TEST_F(Registry, AWorkingCopyIsNewUnlessTheTableIsModifiableAlready) {
  ZROHMSetMapping(type, ZROHMTable{{"a", "b"}});
  ZROHMTable copy = ohm_mutableDictionary(ZROHMRegistry::table(type, Slot::mapping));
  EXPECT_EQ(copy.size(), 1u);
  copy.erase("a");
  EXPECT_THAT(textsIn(type, Slot::mapping), ElementsAre("a>b"));
  EXPECT_EQ(&ohm_mutableDictionary(copy), &copy);
  EXPECT_TRUE(ohm_mutableDictionary(nullptr).empty());
}

TEST_F(Registry, ReadersSeeWholeTablesWhileAWriterReplacesThem) {
  // Each table holds the same number everywhere, so a torn one shows. The thread sanitizer watches for the rest.
  const auto tableOf = [](int number) {
    ZROHMTable table;
    for (int i = 0; i < 20; ++i) table.set("key" + std::to_string(i), std::to_string(number));
    return table;
  };
  ZROHMSetMapping(type, tableOf(0));
  std::atomic<int> ready = 0;
  std::atomic<bool> isDone = false;
  std::atomic<int> torn = 0;
  const auto read = [&] {
    ++ready;
    do {
      const ZROHMTable& table = *ZROHMRegistry::table(type, Slot::mapping);
      const std::string& first = std::get<std::string>(table.begin()->second);
      for (const auto& [key, entry] : table) torn += std::get<std::string>(entry) != first;
    } while (!isDone);
  };
  std::thread readers[] = {std::thread(read), std::thread(read)};
  while (ready < 2) std::this_thread::yield();
  for (int number = 1; number < 500; ++number) ZROHMSetMapping(type, tableOf(number));
  isDone = true;
  for (auto& reader : readers) reader.join();
  EXPECT_EQ(torn, 0);
}

TEST(MappableKeys, ListOwnPropertiesThenTheSupertypesAgainWhereRedeclared) {
  EXPECT_THAT(*ZROHMMappableKeys(PlainItem::staticClassInfo()), ElementsAre("label", "count"));
  EXPECT_THAT(*ZROHMMappableKeys(NamedItem::staticClassInfo()),
              ElementsAre("title", "name", "name", "count", "level", "weight", "isOpen", "place", "next", "plain",
                          "tags", "extras"));
  EXPECT_THAT(*ZROHMMappableKeys(NSObject::staticClassInfo()), IsEmpty());
}

TEST(ClassInfo, TellsNamesDeclaredClassesAndMakesInstancesOfTheExactType) {
  ZROHMClassInfo& type = NamedItem::staticClassInfo();
  const std::pair<const char*, const char*> rows[] = {{"title", "NSString"},      {"next", "Item"}, {"tags", "NSArray"},
                                                      {"extras", "NSDictionary"}, {"count", ""},    {"place", ""}};
  for (const auto& [property, name] : rows) EXPECT_EQ(type.propertyNamed(property)->declaredClassName(), name);
  EXPECT_EQ(type.propertyNamed("no such property"), nullptr);
  EXPECT_EQ(&type.makeInstance()->classInfo(), &type);
  EXPECT_TRUE(type.isSubtypeOf(Item::staticClassInfo()));
  EXPECT_FALSE(Item::staticClassInfo().isSubtypeOf(type));
  EXPECT_FALSE(PlainItem::staticClassInfo().isArchivable());
}

}  // namespace
