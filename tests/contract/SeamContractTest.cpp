// What every implementation of a service promises, checked on each of them, so that the fakes cannot drift from the
// truth.
#include <ZRCore/NSCoder.h>
#include <ZRCore/ZRPlatformFake.h>
#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>

#include "headless/HeadlessPlatform.h"

namespace {

struct Implementation {
  const char* name;
  std::function<ZRPlatform()> make;
};

void PrintTo(const Implementation& implementation, std::ostream* out) { *out << implementation.name; }

class SeamContract : public testing::TestWithParam<Implementation> {
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
  EXPECT_NE(platform.positioning, nullptr);
  EXPECT_NE(platform.bundle, nullptr);
  EXPECT_NE(platform.notificationCenter, nullptr);
  EXPECT_NE(platform.log, nullptr);
  EXPECT_NE(platform.clock, nullptr);
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

INSTANTIATE_TEST_SUITE_P(, SeamContract,
                         testing::Values(Implementation{"fake", [] { return ZRFakePlatform().platform(); }},
                                         Implementation{"headless", [] { return headlessPlatform(); }}),
                         [](const auto& row) { return row.param.name; });

struct CoderImplementation {
  const char* name;
  std::function<std::unique_ptr<NSCoder>()> make;
};

void PrintTo(const CoderImplementation& implementation, std::ostream* out) { *out << implementation.name; }

class CoderContract : public testing::TestWithParam<CoderImplementation> {
 protected:
  std::unique_ptr<NSCoder> coder = GetParam().make();
};

TEST_P(CoderContract, DoublesComeBackToTheBit) {
  const double values[] = {0.1, -0.0, 1e-320, std::numeric_limits<double>::infinity(), 1.7976931348623157e308};
  for (const double value : values) {
    coder->encodeDoubleForKey(value, "k");
    EXPECT_EQ(coder->decodeDoubleForKey("k"), value);
    EXPECT_EQ(std::signbit(coder->decodeDoubleForKey("k")), std::signbit(value));
  }
  coder->encodeDoubleForKey(std::nan(""), "k");
  EXPECT_TRUE(std::isnan(coder->decodeDoubleForKey("k")));
}

TEST_P(CoderContract, AMissingKeyReadsAsZeroAndIsNotContained) {
  EXPECT_FALSE(coder->containsValueForKey("k"));
  EXPECT_EQ(coder->decodeDoubleForKey("k"), 0.0);
  coder->encodeDoubleForKey(0.0, "k");
  EXPECT_TRUE(coder->containsValueForKey("k"));
  EXPECT_FALSE(coder->containsValueForKey("K"));
}

INSTANTIATE_TEST_SUITE_P(, CoderContract,
                         testing::Values(CoderImplementation{"memory",
                                                             [] { return std::make_unique<ZRMemoryCoder>(); }}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
