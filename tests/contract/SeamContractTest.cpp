// SPDX-License-Identifier: Apache-2.0
// What every implementation of a service promises, checked on each of them, so that the fakes cannot drift from the
// truth.
#include <ZRCore/NSCoder.h>
#include <ZRCore/ZRPlatformFake.h>
#include <ZRCore/ZRPlatformFill.h>
#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>

#include "MappingModel.h"
#include "headless/HeadlessPlatform.h"
#ifdef ZRCORE_TESTS_LINUX
#include "LinuxContract.h"
#endif

namespace {

struct SeamImplementation {
  const char* name;
  std::function<ZRPlatform()> make;
};

void PrintTo(const SeamImplementation& implementation, std::ostream* out) { *out << implementation.name; }

class SeamContract : public testing::TestWithParam<SeamImplementation> {
 protected:
  ZRPlatform platform = GetParam().make();
};

class Listener : public CLDidUpdateLocations, public CLDidUpdateHeading, public CLDidFailWithError {
 public:
  void locationManagerDidUpdateLocations(CLLocationManager&, const CLLocations& locations) override {
    ++calls;
    EXPECT_THAT(locations, testing::Each(testing::NotNull()));
  }
  void locationManagerDidUpdateHeading(CLLocationManager&, const CLHeading&) override { ++calls; }
  void locationManagerDidFailWithError(CLLocationManager&, const NSError&) override { ++calls; }
  int calls = 0;
};

TEST_P(SeamContract, NoServiceIsMissing) {
  ZRForEachService([&](const auto& service) { EXPECT_NE(platform.*service.member, nullptr) << service.name; });
}

TEST_P(SeamContract, WhatIsNoJSONIsAnErrorOfTheSameKindEverywhere) {
  const auto read = platform.json->valueFromJSON("", ZRJSONFragments::allowed);
  const auto written = platform.json->JSONFromValue(std::nan(""), ZRJSONLayout::compact);
  for (const NSError* const error : {std::get_if<NSError>(&read), std::get_if<NSError>(&written)}) {
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->domain, NSCocoaErrorDomain);
    EXPECT_EQ(error->code, NSJSONFailureCode);
    EXPECT_FALSE(error->localizedDescription().empty());
  }
}

TEST_P(SeamContract, AReceiverReportsNothingFromInsideTheCallsThatStartIt) {
  const auto receiver = platform.positioning->makeLocationManager();
  ASSERT_NE(receiver, nullptr);
  const auto listener = std::make_shared<Listener>();
  receiver->setDelegate(listener);
  receiver->startUpdatingLocation();
  receiver->startUpdatingLocation();
  receiver->startUpdatingHeading();
  EXPECT_EQ(listener->calls, 0);
  receiver->stopUpdatingHeading();
  receiver->stopUpdatingLocation();
  receiver->stopUpdatingLocation();
  EXPECT_EQ(listener->calls, 0);
}

TEST_P(SeamContract, AReceiverHoldsItsDelegateWeakly) {
  const auto receiver = platform.positioning->makeLocationManager();
  auto listener = std::make_shared<Listener>();
  const std::weak_ptr<Listener> watched = listener;
  receiver->setDelegate(listener);
  EXPECT_EQ(receiver->delegate().lock(), listener);
  listener.reset();
  EXPECT_TRUE(watched.expired());
  EXPECT_TRUE(receiver->delegate().expired());
}

TEST_P(SeamContract, ReceiversAreSeparateStoppedAndOfOtherUseAtFirst) {
  const auto receiver = platform.positioning->makeLocationManager();
  EXPECT_NE(receiver, platform.positioning->makeLocationManager());
  EXPECT_EQ(receiver->activityType(), CLActivityType::other);
  receiver->setActivityType(CLActivityType::fitness);
  EXPECT_EQ(receiver->activityType(), CLActivityType::fitness);
}

TEST_P(SeamContract, TheClockDoesNotRunBackwards) {
  NSDate before = platform.clock->now();
  for (int i = 0; i < 100; ++i) {
    const NSDate now = platform.clock->now();
    ASSERT_GE(now, before);
    before = now;
  }
  EXPECT_GT(before.secondsSince1970, 1e9);
}

TEST_P(SeamContract, AnUnknownKeyHasNoValueAndALogTakesAnyBytes) {
  EXPECT_FALSE(platform.bundle->hasInfoValueForKey("no such key"));
  EXPECT_FALSE(platform.bundle->hasInfoValueForKey(""));
  platform.log->writeLine("");
  platform.log->writeLine(std::string_view("\xff\0%s%n", 6));
}

const SeamImplementation seamImplementations[] = {
    {"fake", [] { return ZRFakePlatform().platform(); }},
    {"headless", [] { return headlessPlatform(); }},
#ifdef ZRCORE_TESTS_LINUX
    {"linux", [] { return linuxPlatform(nullptr); }},
#endif
};
INSTANTIATE_TEST_SUITE_P(, SeamContract, testing::ValuesIn(seamImplementations),
                         [](const auto& row) { return row.param.name; });

struct CoderImplementation {
  const char* name;
  /// What a later reader finds of what was written.
  std::function<ZROHMValue(const ZROHMDictionary&)> keep;
};

void PrintTo(const CoderImplementation& implementation, std::ostream* out) { *out << implementation.name; }

class CoderContract : public testing::TestWithParam<CoderImplementation> {
 protected:
  /// A reader of what the coder has written so far.
  ZRMemoryCoder read() const { return {*GetParam().keep(coder.values()).dictionary(), classes}; }

  ZRArchivableClasses classes{&Item::staticClassInfo()};
  ZRMemoryCoder coder;
};

TEST_P(CoderContract, DoublesComeBackToTheBit) {
  const double values[] = {0.1, -0.0, 1e-320, std::numeric_limits<double>::infinity(), 1.7976931348623157e308};
  for (const double value : values) {
    coder.encodeDoubleForKey(value, "k");
    EXPECT_EQ(read().decodeDoubleForKey("k"), value);
    EXPECT_EQ(std::signbit(read().decodeDoubleForKey("k")), std::signbit(value));
  }
  coder.encodeDoubleForKey(std::nan(""), "k");
  EXPECT_TRUE(std::isnan(read().decodeDoubleForKey("k")));
}

TEST_P(CoderContract, IntegersBooleansTextsAndObjectsComeBack) {
  const auto inner = std::make_shared<Item>();
  inner->setName("ä\n");
  coder.encodeInt32ForKey(std::numeric_limits<std::int32_t>::min(), "int32");
  coder.encodeInt64ForKey(std::numeric_limits<std::int64_t>::min(), "int64");
  coder.encodeBoolForKey(true, "bool");
  coder.encodeStringForKey("", "empty");
  coder.encodeStringForKey(std::nullopt, "absent");
  coder.encodeObjectForKey(inner, "object");
  coder.encodeObjectForKey(nullptr, "no object");
  const ZRMemoryCoder reader = read();
  EXPECT_EQ(reader.decodeInt32ForKey("int32"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(reader.decodeInt64ForKey("int64"), std::numeric_limits<std::int64_t>::min());
  EXPECT_TRUE(reader.decodeBoolForKey("bool"));
  EXPECT_EQ(reader.decodeStringForKey("empty"), "");
  EXPECT_EQ(reader.decodeStringForKey("absent"), std::nullopt);
  EXPECT_TRUE(reader.containsValueForKey("absent"));
  const auto object = std::dynamic_pointer_cast<Item>(reader.decodeObjectForKey("object"));
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->name(), inner->name());
  EXPECT_EQ(reader.decodeObjectForKey("no object"), nullptr);
}

TEST_P(CoderContract, AValueOfAnotherKindReadsAsNothingAndANumberStopsAtTheLimits) {
  coder.encodeStringForKey("7", "text");
  coder.encodeDoubleForKey(-1e300, "number");
  coder.encodeInt64ForKey(5000000000, "large");
  const ZRMemoryCoder reader = read();
  EXPECT_EQ(reader.decodeDoubleForKey("text"), 0.0);
  EXPECT_EQ(reader.decodeInt64ForKey("text"), 0);
  EXPECT_FALSE(reader.decodeBoolForKey("text"));
  EXPECT_EQ(reader.decodeObjectForKey("text"), nullptr);
  EXPECT_EQ(reader.decodeStringForKey("number"), std::nullopt);
  EXPECT_EQ(reader.decodeInt64ForKey("number"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(reader.decodeInt32ForKey("large"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(reader.decodeDoubleForKey("large"), 5e9);
}

TEST_P(CoderContract, AMissingKeyReadsAsZeroAndIsNotContained) {
  EXPECT_FALSE(read().containsValueForKey("k"));
  EXPECT_EQ(read().decodeDoubleForKey("k"), 0.0);
  EXPECT_EQ(read().decodeInt32ForKey("k"), 0);
  EXPECT_FALSE(read().decodeBoolForKey("k"));
  EXPECT_EQ(read().decodeStringForKey("k"), std::nullopt);
  EXPECT_EQ(read().decodeObjectForKey("k"), nullptr);
  coder.encodeDoubleForKey(0.0, "k");
  EXPECT_TRUE(read().containsValueForKey("k"));
  EXPECT_FALSE(read().containsValueForKey("K"));
}

INSTANTIATE_TEST_SUITE_P(, CoderContract,
                         testing::Values(CoderImplementation{"memory", [](const auto& values) { return values; }},
                                         CoderImplementation{
                                             "document",
                                             [](const ZROHMDictionary& values) {
                                               const auto json = ZRMakeJSONService();
                                               const auto text = json->JSONFromValue(values, ZRJSONLayout::pretty);
                                               return std::get<ZROHMValue>(json->valueFromJSON(
                                                   std::get<std::string>(text), ZRJSONFragments::refused));
                                             }}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
