// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZROHMRegistry.h>
#include <gmock/gmock.h>

#include "MappingModel.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// An adapter that writes down what it is given and answers its text in brackets.
ZROHMAdapter bracketing(std::vector<std::string>& calls) {
  return [&calls](const ZROHMValue& value) {
    calls.push_back(value.text());
    return ZROHMValue(std::string("[").append(value.text()).append("]"));
  };
}

class Set : public testing::Test {
 protected:
  Set() { forgetTables(); }

  std::shared_ptr<Item> filled(const ZROHMDictionary& content) {
    auto item = std::make_shared<Item>();
    item->setValuesForKeysWithDictionary(content);
    return item;
  }

  ZROHMClassInfo& type = Item::staticClassInfo();
  std::vector<std::string> calls;
};

TEST_F(Set, NumbersTextsAndOtherKindsConvertToTheTypeOfTheProperty) {
  const auto item = filled({{"name", 42}, {"count", 3.9}, {"level", -1}, {"weight", "40.5kg"}, {"isOpen", 2}});
  EXPECT_EQ(item->name(), "42");
  EXPECT_EQ(item->count(), 3);
  EXPECT_EQ(item->level(), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(item->weight(), 40.5);
  EXPECT_TRUE(item->isOpen());
  item->setValuesForKeysWithDictionary({{"name", ZROHMArray{1}},
                                        {"count", 4294967297},
                                        {"level", 1e30},
                                        {"weight", ZROHMArray{}},
                                        {"isOpen", 256},
                                        {"place", "52.5"},
                                        {"next", "no object"},
                                        {"plain", std::make_shared<NSObject>()}});
  EXPECT_EQ(item->name(), std::nullopt);
  EXPECT_EQ(item->count(), 1);  // the low 32 bits
  EXPECT_EQ(item->level(), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(item->weight(), 0.0);
  EXPECT_FALSE(item->isOpen());  // a boolean of eight bits
  EXPECT_EQ(ZROHMValue(item->place()), ZROHMValue(CLLocationCoordinate2D{0, 0}));
  EXPECT_EQ(item->next(), nullptr);
  EXPECT_EQ(item->plain(), nullptr);
}

TEST_F(Set, NothingEmptiesAnObjectPropertyAndRaisesForAScalar) {
  const auto item = filled({{"name", "x"}, {"tags", ZROHMArray{1}}, {"name", nullptr}, {"tags", nullptr}});
  EXPECT_EQ(item->name(), std::nullopt);
  EXPECT_TRUE(item->tags().isNull());
  for (const char* const scalar : {"count", "isOpen", "weight", "place"}) {
    EXPECT_THROW(item->setValueForKey(nullptr, scalar), NSInvalidArgumentException) << scalar;
  }
  try {
    item->setValuesForKeysWithDictionary({{"weight", 7}, {"count", nullptr}});
    ADD_FAILURE() << "must raise";
  } catch (const NSInvalidArgumentException& exception) {
    EXPECT_EQ(exception.key(), "count");
    EXPECT_THAT(exception.what(), HasSubstr("Item"));
  }
  EXPECT_EQ(item->weight(), 7);  // what came before stays
}

TEST_F(Set, AnUnknownKeyIsDroppedOnAMappableObjectAndRaisesOnAnother) {
  EXPECT_NO_THROW(filled({{"unheard of", 1}, {"", nullptr}}));
  PlainItem plain;
  ZROHMSetMapping(PlainItem::staticClassInfo(), ZROHMTable{{"Label", "label"}});  // tables alone are not enough
  ZROHMSetAdapter(PlainItem::staticClassInfo(), ZROHMTable{{"label", bracketing(calls)}});
  try {
    plain.setValueForKey(1, "Label");
    ADD_FAILURE() << "must raise";
  } catch (const NSUndefinedKeyException& exception) {
    EXPECT_EQ(exception.key(), "Label");
    EXPECT_THAT(exception.what(), HasSubstr("setValue:forUndefinedKey:]: this class is not key value coding-compliant "
                                            "for the key Label."));
  }
  EXPECT_THROW(NSObject().setValueForKey(1, "x"), NSUndefinedKeyException);
}

TEST_F(Set, AMappedKeyFillsItsProperty) {
  ZROHMSetMapping(type, ZROHMTable{{"Name", "name"}, {"title", "name"}, {"Next", "next"}});
  EXPECT_EQ(filled({{"Name", "a"}})->name(), "a");
  EXPECT_EQ(filled({{"Name", "a"}, {"title", "b"}})->name(), "b");
  EXPECT_EQ(filled({{"Next", ZROHMDictionary{{"title", "inner"}}}})->next()->name(), "inner");
}

TEST_F(Set, AnUnconvertedValueStaysUnderTheGivenKeyWhenThatIsAProperty) {
  ZROHMSetMapping(type, ZROHMTable{{"name", "extras"}, {"tags", "next"}});
  const auto item = filled({{"name", "a"}, {"tags", ZROHMDictionary{{"count", 5}}}});
  EXPECT_EQ(item->name(), "a");
  EXPECT_TRUE(item->extras().isNull());
  EXPECT_EQ(item->next()->count(), 5);  // converted, so it goes where the table says
  EXPECT_TRUE(item->tags().isNull());
}

TEST_F(Set, AnAdapterIsKeyedByPropertyAndGivenNullsToo) {
  ZROHMSetMapping(type, ZROHMTable{{"extras", "name"}, {"Loop", "count"}});
  ZROHMSetAdapter(type, ZROHMTable{{"name", bracketing(calls)},
                                   {"extras", "an entry of another kind"},
                                   {"count", ZROHMAdapter([](const ZROHMValue&) { return ZROHMValue(7); })}});
  const auto item = filled({{"extras", ZROHMArray{}}, {"name", nullptr}, {"count", nullptr}});
  EXPECT_EQ(item->name(), "[<null>]");
  EXPECT_TRUE(item->extras().isNull());  // the adapted value went under the property the table names
  EXPECT_EQ(item->count(), 7);           // an adapter can turn nothing into something
}

TEST_F(Set, AnAdapterIsAppliedTwiceToAKeyThatIsNoProperty) {
  ZROHMSetMapping(type, ZROHMTable{{"Name", "Alias"}, {"Alias", "name"}});
  ZROHMSetAdapter(type, ZROHMTable{{"name", bracketing(calls)}});
  EXPECT_EQ(filled({{"Alias", "a"}})->name(), "[a]");  // the table leads from the key to the property at once
  calls.clear();
  const auto item = filled({{"Name", "a"}});
  EXPECT_EQ(item->name(), "[a]");
  EXPECT_THAT(calls, ElementsAre("a"));
  calls.clear();
  item->setValueForUndefinedKey("a", "Alias");
  EXPECT_EQ(item->name(), "[[a]]");
  EXPECT_THAT(calls, ElementsAre("a", "[a]"));
}

TEST_F(Set, OnlyTheFirstElementDecidesWhetherAnArrayHoldsObjects) {
  ZROHMSetArrayClasses(type, ZROHMTable{{"tags", &type}});
  ZROHMSetMapping(type, ZROHMTable{{"extras", "tags"}});  // a property's own name, too, leads elsewhere
  const ZROHMDictionary one{{"count", 1}};
  const ZROHMDictionary two{{"count", 2}};
  const auto item = filled({{"extras", ZROHMArray{one, "no dictionary", nullptr, two}}});
  const ZROHMArray& items = *item->tags().array();
  ASSERT_EQ(items.size(), 2u);
  EXPECT_EQ(std::dynamic_pointer_cast<Item>(items[0].object())->count(), 1);
  EXPECT_EQ(std::dynamic_pointer_cast<Item>(items[1].object())->count(), 2);

  for (const ZROHMArray& unconverted : {ZROHMArray{}, ZROHMArray{"first", one}, ZROHMArray{ZROHMArray{one}}}) {
    EXPECT_EQ(filled({{"tags", unconverted}})->tags(), ZROHMValue(unconverted));
  }
}

TEST_F(Set, ADictionaryOfObjectsKeepsItsKeys) {
  ZROHMSetDictionaryClasses(type, ZROHMTable{{"extras", &type}, {"next", &type}});
  ZROHMSetMapping(type, ZROHMTable{{"tags", "extras"}});
  const ZROHMDictionary one{{"count", 1}};
  const auto item = filled({{"tags", ZROHMDictionary{{"z", one}, {"a", one}, {"skipped", 1}}}, {"next", one}});
  const ZROHMDictionary& extras = *item->extras().dictionary();
  ASSERT_EQ(extras.size(), 2u);
  EXPECT_EQ(extras.begin()->first, "z");
  EXPECT_EQ(std::dynamic_pointer_cast<Item>(extras.find("a")->object())->count(), 1);
  EXPECT_EQ(item->next(), nullptr);  // the class table comes before the declared type; a dictionary is not an Item
}

TEST_F(Set, OnlyAPropertyOfAMappableTypeTurnsADictionaryIntoAnObject) {
  const ZROHMDictionary content{{"name", "inner"}, {"label", "inner"}};
  const auto item = filled({{"next", content}, {"plain", content}, {"extras", content}, {"name", content}});
  EXPECT_EQ(item->next()->name(), "inner");
  EXPECT_EQ(item->plain(), nullptr);
  EXPECT_EQ(item->extras(), ZROHMValue(content));
  EXPECT_EQ(item->name(), std::nullopt);
}

TEST_F(Set, ASubtypeIsMappableButSeesOnlyItsOwnTables) {
  ZROHMSetMapping(type, ZROHMTable{{"Name", "name"}});
  NamedItem item;
  item.setValuesForKeysWithDictionary({{"Name", "dropped"}, {"count", 3}});
  EXPECT_EQ(item.title(), std::nullopt);
  EXPECT_EQ(item.count(), 3);
  item.setValueForKey("own", "name");  // the nearest declaration of a property counts
  EXPECT_EQ(item.title(), "own");
  EXPECT_EQ(item.Item::name(), std::nullopt);
}

TEST_F(Set, MappingsThatGoRoundInCirclesEndAndLaterSetsWork) {
  ZROHMSetMapping(type, ZROHMTable{{"a", "b"}, {"b", "a"}, {"self", "self"}});
  const auto item = filled({{"a", 1}, {"self", 2}, {"count", 3}});
  EXPECT_EQ(item->count(), 3);
}

TEST_F(Set, ObjectsNestedDeeperThanAHundredAreDroppedTheOthersKept) {
  ZROHMValue chain = ZROHMDictionary{{"count", 1}};
  for (int i = 0; i < 10000; ++i) chain = ZROHMDictionary{{"next", std::move(chain)}, {"count", 1}};
  const auto item = filled(*chain.dictionary());
  int depth = 0;
  for (auto next = item; next; next = next->next()) depth += next->count();
  EXPECT_EQ(depth, 100);
}

}  // namespace
