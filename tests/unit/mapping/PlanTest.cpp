// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZROHMRegistry.h>
#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <thread>
#include <vector>

#include "MappingModel.h"
#include "MappingWorld.h"
#include "TestSeed.h"

namespace {

TEST(Plan, DoesWhatThePlainEngineDoes) {
  std::mt19937 random(testSeed(20261122));
  for (int round = 0; round < 2500; ++round) {
    std::vector<std::uint8_t> bytes(random() % 400);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    ASSERT_EQ(differenceInMapping(bytes), "");
  }
}

TEST(Plan, FollowsEachTableThatIsStored) {
  forgetTables();
  ZROHMClassInfo& type = Item::staticClassInfo();
  Item item;
  item.setValueForKey("a", "Name");
  EXPECT_EQ(item.name(), std::nullopt);
  ZROHMSetMapping(type, ZROHMTable{{"Name", "name"}});
  item.setValueForKey("b", "Name");
  EXPECT_EQ(item.name(), "b");
  ZROHMSetAdapter(type, ZROHMTable{{"name", ZROHMAdapter([](const ZROHMValue&) { return ZROHMValue("c"); })}});
  item.setValueForKey("b", "Name");
  EXPECT_EQ(item.name(), "c");
  ZROHMSetMapping(type, std::nullopt);
  item.setName("d");
  item.setValueForKey("e", "Name");
  EXPECT_EQ(item.name(), "d");
}

TEST(Plan, KnowsThousandsOfKeysApart) {
  forgetTables();
  ZROHMTable mapping;
  for (int i = 0; i < 3000; ++i) {
    mapping.set("the same beginning " + std::to_string(10'000 + i) + " and end", i % 2 == 0 ? "name" : "tags");
  }
  ZROHMSetMapping(Item::staticClassInfo(), mapping);
  for (int i = 0; i < 3000; ++i) {
    Item item;
    item.setValueForKey("x", "the same beginning " + std::to_string(10'000 + i) + " and end");
    ASSERT_EQ(item.name().has_value(), i % 2 == 0) << i;
    ASSERT_EQ(item.tags().isNull(), i % 2 == 0) << i;
  }

  ZROHMDictionary content;
  for (const auto& entry : mapping) content.set(entry.first, entry.first);
  const auto document = ZROHMDocumentOfValue(content);
  Item item;
  ZROHMSetValuesFromDocument(item, *document, document->root());
  EXPECT_EQ(item.name(), "the same beginning 12998 and end");
  EXPECT_EQ(item.tags(), ZROHMValue("the same beginning 12999 and end"));
}

TEST(Plan, OfATypeWithoutPropertiesAndTablesDropsEveryKey) {
  ZROHMClassInfo type({.name = "Bare", .superclass = &NSObject::staticClassInfo()});
  ZROHMMappable(type);
  struct Bare final : NSObject {
    explicit Bare(ZROHMClassInfo& info) : info_(info) {}
    ZROHMClassInfo& classInfo() const override { return info_; }
    ZROHMClassInfo& info_;
  } bare(type);
  for (const char* const key : {"", "a", "something longer"}) bare.setValueForKey("x", key);
  EXPECT_TRUE(bare.dictionaryWithValuesForKeys({}).empty());
}

TEST(Plan, IsWholeForReadersWhileTablesAreStored) {
  forgetTables();
  ZROHMClassInfo& type = Item::staticClassInfo();
  std::atomic<bool> isDone{false};
  std::vector<std::thread> readers;
  std::atomic<int> misses{0};
  for (int i = 0; i < 3; ++i) {
    readers.emplace_back([&] {
      while (!isDone) {
        Item item;
        item.setValuesForKeysWithDictionary({{"Name", "x"}, {"count", 1}});
        if (item.count() != 1 || (item.name() && item.name() != "x")) ++misses;
      }
    });
  }
  for (int i = 0; i < 300; ++i) {
    ZROHMSetMapping(type, i % 2 == 0 ? std::optional(ZROHMTable{{"Name", "name"}}) : std::nullopt);
    Item item;
    item.setValueForKey("x", "Name");
    EXPECT_EQ(item.name().has_value(), i % 2 == 0) << "the thread that stores sees what it stored";
  }
  isDone = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(misses, 0);
}

}  // namespace
