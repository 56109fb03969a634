// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZROHMRegistry.h>
#include <gmock/gmock.h>

#include <cstdlib>

#include "MappingModel.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> keysOf(const ZROHMDictionary& dictionary) {
  std::vector<std::string> keys;
  for (const auto& entry : dictionary) keys.push_back(entry.first);
  return keys;
}

/// A host's own static, which outlives whatever a thread keeps: an address sanitizer sees what it still reads.
const struct LastExport {
  ~LastExport() {
    forgetTables();
    Item item;
    item.setNext(std::make_shared<Item>());
    if (item.dictionaryWithValuesForKeys({"next"}).find("next")->dictionary() == nullptr) std::abort();
  }
} kLastExport;

class Export : public testing::Test {
 protected:
  Export() { forgetTables(); }

  ZROHMClassInfo& type = Item::staticClassInfo();
  std::shared_ptr<Item> item = std::make_shared<Item>();
};

TEST_F(Export, HoldsTheKeysAskedForInTheirOrderAndNullForNothing) {
  item->setCount(3);
  item->setIsOpen(true);
  item->setPlace({52.5, 13.4});
  const ZROHMDictionary exported = item->dictionaryWithValuesForKeys({"isOpen", "name", "place", "count", "name"});
  EXPECT_THAT(keysOf(exported), ElementsAre("isOpen", "name", "place", "count"));
  EXPECT_TRUE(exported.find("isOpen")->isBoolean());
  EXPECT_TRUE(exported.find("name")->isNull());
  EXPECT_EQ(*exported.find("place"), ZROHMValue(CLLocationCoordinate2D{52.5, 13.4}));
  EXPECT_TRUE(item->dictionaryWithValuesForKeys({}).empty());
}

TEST_F(Export, AKeyThatIsNoPropertyRaisesOnAMappableObjectToo) {
  ZROHMSetMapping(type, ZROHMTable{{"Name", "name"}});
  try {
    static_cast<void>(item->dictionaryWithValuesForKeys({"name", "Name"}));
    ADD_FAILURE() << "must raise";
  } catch (const NSUndefinedKeyException& exception) {
    EXPECT_EQ(exception.key(), "Name");
    EXPECT_THAT(exception.what(), HasSubstr("valueForUndefinedKey:"));
  }
}

TEST_F(Export, AMappedPropertyLeavesUnderItsFirstSourceKeyAlone) {
  ZROHMSetMapping(type, ZROHMTable{{"Absent", "level"}, {"Title", "name"}, {"title", "name"}, {"name", "count"}});
  item->setName("a");
  item->setCount(3);
  EXPECT_EQ(ZROHMValue(item->dictionaryWithValuesForKeys({"count", "weight", "name"})),
            ZROHMValue(ZROHMDictionary{{"Title", "a"}, {"name", 3}, {"weight", 0.0}}));
}

TEST_F(Export, AnUnmappedPropertyOverwritesASourceKeyOfTheSameText) {
  ZROHMSetMapping(type, ZROHMTable{{"count", "name"}, {"Other", "isOpen"}});
  item->setName("a");
  item->setCount(3);
  const ZROHMDictionary exported = item->dictionaryWithValuesForKeys({"name", "count"});
  EXPECT_EQ(ZROHMValue(exported), ZROHMValue(ZROHMDictionary{{"count", 3}}));
}

TEST_F(Export, ReverseAdaptersSeePropertiesNullsAndExportedObjectsBeforeTheRenaming) {
  std::vector<std::string> given;
  const ZROHMAdapter adapter = [&](const ZROHMValue& value) {
    given.push_back(value.dictionary() ? "dictionary" : value.text());
    return ZROHMValue("adapted");
  };
  ZROHMSetMapping(type, ZROHMTable{{"Name", "name"}, {"Next", "next"}});
  ZROHMSetReverseAdapter(type, ZROHMTable{{"name", adapter}, {"next", adapter}, {"Name", adapter}, {"count", "wrong"}});
  item->setNext(std::make_shared<Item>());
  const ZROHMDictionary exported = item->dictionaryWithValuesForKeys({"name", "next", "count"});
  EXPECT_EQ(ZROHMValue(exported), ZROHMValue(ZROHMDictionary{{"Name", "adapted"}, {"Next", "adapted"}, {"count", 0}}));
  // The nested item is exported in full, and its name and absent next are adapted on the way.
  EXPECT_THAT(given, ElementsAre("<null>", "<null>", "<null>", "dictionary"));
}

TEST_F(Export, ObjectsInArraysAndDictionariesBecomeDictionariesPlainOnesStay) {
  const auto inner = std::make_shared<Item>();
  inner->setCount(5);
  const auto plain = std::make_shared<PlainItem>();
  item->setTags(ZROHMArray{inner, plain, 7, ZROHMArray{inner}});
  item->setExtras(ZROHMDictionary{{"a", inner}, {"b", plain}});
  item->setPlain(plain);
  const ZROHMDictionary exported = item->dictionaryWithValuesForKeys({"tags", "extras", "plain"});
  const ZROHMArray& tags = *exported.find("tags")->array();
  EXPECT_EQ(*tags[0].dictionary()->find("count"), ZROHMValue(5));
  EXPECT_EQ(tags[1].object(), plain);
  EXPECT_EQ(tags[2], ZROHMValue(7));
  EXPECT_EQ(tags[3], ZROHMValue(ZROHMArray{inner})) << "only the objects directly in it";
  EXPECT_EQ(*exported.find("extras")->dictionary()->find("a")->dictionary()->find("count"), ZROHMValue(5));
  EXPECT_EQ(exported.find("extras")->dictionary()->find("b")->object(), plain);
  EXPECT_EQ(exported.find("plain")->object(), plain);
  EXPECT_EQ((*item->tags().array())[0].object(), inner) << "the item keeps its objects";
}

TEST_F(Export, AnObjectThatIsNotMappableExportsItsMappableValuesAndItsTables) {
  ZROHMSetMapping(PlainItem::staticClassInfo(), ZROHMTable{{"Label", "label"}});
  PlainItem plain;
  plain.setLabel("x");
  EXPECT_EQ(ZROHMValue(plain.dictionaryWithValuesForKeys({"label", "count"})),
            ZROHMValue(ZROHMDictionary{{"Label", "x"}, {"count", 0}}));
}

TEST_F(Export, WhatWasExportedFillsAnEqualObject) {
  ZROHMSetMapping(type, ZROHMTable{{"Title", "name"}, {"Next", "next"}, {"Tags", "tags"}});
  ZROHMSetArrayClasses(type, ZROHMTable{{"tags", &type}});
  item->setName("a");
  item->setCount(-3);
  item->setLevel(std::numeric_limits<std::uint64_t>::max());
  item->setWeight(0.1);
  item->setPlace({52.5, 13.4});
  item->setNext(std::make_shared<Item>());
  item->setTags(ZROHMArray{std::make_shared<Item>()});
  const ZROHMDictionary exported = item->dictionaryWithValuesForKeys(*ZROHMMappableKeys(type));
  Item copy;
  copy.setValuesForKeysWithDictionary(exported);
  EXPECT_EQ(ZROHMValue(copy.dictionaryWithValuesForKeys(*ZROHMMappableKeys(type))), ZROHMValue(exported));
  EXPECT_EQ(copy.level(), item->level());
}

TEST_F(Export, AnObjectThatContainsItselfStaysAReferenceThere) {
  const auto other = std::make_shared<Item>();
  item->setNext(other);
  other->setNext(item);
  other->setTags(ZROHMArray{item, other});
  const ZROHMDictionary exported = item->dictionaryWithValuesForKeys({"next"});
  const ZROHMDictionary& nested = *exported.find("next")->dictionary();
  EXPECT_EQ(nested.find("next")->object(), item);
  EXPECT_EQ(*nested.find("tags"), ZROHMValue(ZROHMArray{item, other}));
  other->setNext(nullptr);
  other->setTags(nullptr);
}

TEST_F(Export, ObjectsDeeperThanAHundredStayReferencesAndDeepValuesAreWhole) {
  for (int i = 0; i < 10000; ++i) {
    auto outer = std::make_shared<Item>();
    outer->setNext(std::move(item));
    item = std::move(outer);
  }
  ZROHMValue deep = 1;
  for (int i = 0; i < 10000; ++i) deep = ZROHMArray{std::move(deep)};
  item->setTags(deep);
  const ZROHMValue exported = item->dictionaryWithValuesForKeys({"next", "tags"});
  EXPECT_EQ(*exported.dictionary()->find("tags"), deep);
  int depth = 0;
  const ZROHMValue* level = &exported;
  for (; level->dictionary() != nullptr; ++depth) level = level->dictionary()->find("next");
  EXPECT_EQ(depth, 100);
  EXPECT_NE(level->object(), nullptr);
  while (item) item = item->next();  // one by one: a chain's own destruction recurses
}

}  // namespace
