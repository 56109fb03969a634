// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZROHMValue.h>
#include <ZRCore/ZROHMWalk.h>
#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "TestSeed.h"

namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::uint64_t kMostUnsigned = std::numeric_limits<std::uint64_t>::max();
constexpr auto kLeast = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::min());

/// Arrays and dictionaries in turn, `depth` of them.
ZROHMValue nested(int depth) {
  ZROHMValue value = 1;
  for (int i = 0; i < depth; ++i) {
    value =
        i % 2 == 0 ? ZROHMValue(ZROHMArray{std::move(value)}) : ZROHMValue(ZROHMDictionary{{"k", std::move(value)}});
  }
  return value;
}

TEST(Value, TextsOfValuesAreThePlatforms) {
  const std::pair<ZROHMValue, const char*> rows[] = {
      {-5, "-5"},
      {kMostUnsigned, "18446744073709551615"},
      {5.0, "5"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3.0, "0.3333333333333333"},
      {123456789.125, "123456789.125"},
      {1e15, "1000000000000000"},
      {1e16, "1e+16"},
      {1e-5, "1e-05"},
      {-0.0, "-0"},
      {true, "1"},
      {false, "0"},
      {nullptr, "<null>"},
      {"text", "text"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(value.text(), text);
}

TEST(Value, ATextReadsAsItsNumericPrefix) {
  const struct {
    const char* text;
    double real;
    std::uint64_t bits;
  } rows[] = {
      {"40.5abc", 40.5, 40},
      {" \t40.5", 40.5, 40},
      {"abc", 0.0, 0},
      {"", 0.0, 0},
      {"-", 0.0, 0},
      {"+7", 7.0, 7},
      {"+-7", 0.0, 0},
      {"1e2", 100.0, 1},
      {"1e", 1.0, 1},
      {".5", 0.5, 0},
      {".", 0.0, 0},
      {"-75,5", -75.0, static_cast<std::uint64_t>(-75)},
      {"0x10", 0.0, 0},
      {"inf", 0.0, 0},
      {"-nan", 0.0, 0},
      {"1e400", kInfinity, 1},
      {"-1e400", -kInfinity, static_cast<std::uint64_t>(-1)},
      {"1e-400", 0.0, 1},
      {"0.00001e400x", kInfinity, 0},
      {"99999999999e-999999999999999999999", 0.0, 99999999999},
      {"1e9223372036854775807", kInfinity, 1},
      {"0.01e-9223372036854775807", 0.0, 0},
      {"18446744073709551615", 18446744073709551615.0, kMostUnsigned},
      {"18446744073709551616", 18446744073709551616.0, kMostUnsigned},
      {"-9223372036854775809", -9223372036854775809.0, kLeast},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(ZROHMValue(row.text).doubleValue(), row.real);
    EXPECT_EQ(ZROHMValue(row.text).integerBits(), row.bits);
  }
}

TEST(Value, ADoubleAsAnIntegerLosesItsFractionAndStopsAtTheLimits) {
  const std::pair<double, std::uint64_t> rows[] = {{3.9, 3},
                                                   {-3.9, static_cast<std::uint64_t>(-3)},
                                                   {std::nan(""), 0},
                                                   {1e300, kMostUnsigned},
                                                   {-1e300, kLeast},
                                                   {-0x1p63, kLeast},
                                                   {0x1p63, std::uint64_t{1} << 63},
                                                   {0x1p64, kMostUnsigned}};
  for (const auto& [value, bits] : rows) EXPECT_EQ(ZROHMValue(value).integerBits(), bits) << value;
}

TEST(Value, NumbersAreEqualExactlyWhenTheyStandForTheSameNumber) {
  // 2^53 + 1 is not a double: a comparison that rounds calls these equal.
  const ZROHMValue distinct[] = {
      0.5,    1,       2u,       std::int64_t{9007199254740993}, 9007199254740992.0, -1, kMostUnsigned, 0x1p64,
      0x1p63, -0x1p63, kInfinity};
  for (const ZROHMValue& a : distinct) {
    for (const ZROHMValue& b : distinct) EXPECT_EQ(a == b, &a == &b) << a.text() << ' ' << b.text();
  }
  EXPECT_EQ(ZROHMValue(1), ZROHMValue(1.0));
  EXPECT_EQ(ZROHMValue(true), ZROHMValue(1u));
  EXPECT_EQ(ZROHMValue(std::uint64_t{1} << 63), ZROHMValue(0x1p63));
  EXPECT_EQ(ZROHMValue(std::numeric_limits<std::int64_t>::min()), ZROHMValue(-0x1p63));
  EXPECT_NE(ZROHMValue(std::nan("")), ZROHMValue(std::nan("")));
  EXPECT_NE(ZROHMValue(0), ZROHMValue(nullptr));
  EXPECT_NE(ZROHMValue(1), ZROHMValue("1"));
}

TEST(Value, ContainersAreEqualByContentDictionariesInAnyOrder) {
  const ZROHMDictionary entries{{"a", 1}, {"b", ZROHMArray{2, "x"}}};
  EXPECT_EQ(ZROHMValue(entries), ZROHMValue(ZROHMDictionary{{"b", ZROHMArray{2, "x"}}, {"a", 1}}));
  EXPECT_NE(ZROHMValue(entries), ZROHMValue(ZROHMDictionary{{"b", ZROHMArray{2, "y"}}, {"a", 1}}));
  EXPECT_NE(ZROHMValue(entries), ZROHMValue(ZROHMDictionary{{"a", 1}, {"c", ZROHMArray{2, "x"}}}));
  EXPECT_NE(ZROHMValue(ZROHMArray{1, 2}), ZROHMValue(ZROHMArray{2, 1}));
  EXPECT_NE(ZROHMValue(ZROHMArray{1}), ZROHMValue(ZROHMArray{1, 1}));
  EXPECT_EQ(ZROHMValue(CLLocationCoordinate2D{1, 2}), ZROHMValue(CLLocationCoordinate2D{1, 2}));
  EXPECT_NE(ZROHMValue(CLLocationCoordinate2D{1, 2}), ZROHMValue(CLLocationCoordinate2D{2, 1}));
  const auto object = std::make_shared<NSObject>();
  EXPECT_EQ(ZROHMValue(object), ZROHMValue(object));
  EXPECT_NE(ZROHMValue(object), ZROHMValue(std::make_shared<NSObject>()));
}

TEST(Value, ChangingACopyLeavesTheOriginalAlone) {
  const ZROHMValue original = ZROHMDictionary{{"list", ZROHMArray{1, 2}}};
  ZROHMValue copy = original;
  copy.modifiableDictionary().find("list")->modifiableArray().push_back(3);
  EXPECT_EQ(original, ZROHMValue(ZROHMDictionary{{"list", ZROHMArray{1, 2}}}));
  EXPECT_EQ(copy, ZROHMValue(ZROHMDictionary{{"list", ZROHMArray{1, 2, 3}}}));
  copy = *copy.dictionary()->find("list");  // the new value lies in the old one
  EXPECT_EQ(copy, ZROHMValue(ZROHMArray{1, 2, 3}));
  copy.modifiableDictionary().set("k", 1);
  EXPECT_EQ(copy, ZROHMValue(ZROHMDictionary{{"k", 1}}));
}

TEST(Value, ObjectsLiveAsLongAsAValueRefersToThem) {
  auto object = std::make_shared<NSObject>();
  const std::weak_ptr<NSObject> watched = object;
  ZROHMValue value = ZROHMArray{std::move(object)};
  EXPECT_FALSE(watched.expired());
  value = nullptr;
  EXPECT_TRUE(watched.expired());
}

TEST(Value, NestingAHundredThousandDeepExhaustsNoStack) {
  ZROHMValue deep = nested(100000);
  const ZROHMValue same = nested(100000);
  EXPECT_TRUE(deep == same);
  EXPECT_FALSE(deep == nested(99998));
  EXPECT_GT(deep.text().size(), 200000u);
  ZROHMValue copy = deep;
  deep = nullptr;
  EXPECT_TRUE(copy == same);
}

TEST(OrderedMap, KeepsTheOrderOfFirstInsertionAndTheLastValue) {
  ZROHMDictionary map{{"b", 1}, {"a", 2}, {"b", 3}};
  map.set("c", 4);
  EXPECT_THAT(map, ElementsAre(Pair("b", ZROHMValue(3)), Pair("a", ZROHMValue(2)), Pair("c", ZROHMValue(4))));
  EXPECT_TRUE(map.erase("a"));
  EXPECT_FALSE(map.erase("a"));
  map.set("a", 5);
  EXPECT_THAT(map, ElementsAre(Pair("b", ZROHMValue(3)), Pair("c", ZROHMValue(4)), Pair("a", ZROHMValue(5))));
}

TEST(OrderedMap, FindsWhatAPlainListFindsUnderRandomChanges) {
  std::mt19937 random(testSeed(7));
  ZROHMOrderedMap<int> map;
  std::vector<std::pair<std::string, int>> plain;
  for (int step = 0; step < 20000; ++step) {
    const std::string key = std::to_string(random() % 60);
    const auto standing = std::find_if(plain.begin(), plain.end(), [&](const auto& e) { return e.first == key; });
    if (random() % 3 == 0) {
      ASSERT_EQ(map.erase(key), standing != plain.end());
      if (standing != plain.end()) plain.erase(standing);
    } else {
      map.set(key, step);
      if (standing != plain.end()) {
        standing->second = step;
      } else {
        plain.emplace_back(key, step);
      }
    }
    const std::string asked = std::to_string(random() % 60);
    const auto found = std::find_if(plain.begin(), plain.end(), [&](const auto& e) { return e.first == asked; });
    ASSERT_EQ(map.indexOf(asked), static_cast<std::size_t>(found - plain.begin()));
  }
  EXPECT_TRUE(std::equal(map.begin(), map.end(), plain.begin(), plain.end()));
}

}  // namespace
