// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRConfigurationBase.h>
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <thread>

#include "ConfigurationStore.h"
#include "WithFakePlatform.h"

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Optional;
using testing::StartsWith;

namespace {

constexpr const char* kLogLine =
    "VELMARIS ERROR:There is an issue with the configuration returned. Please make sure that your product key is "
    "correct.";

std::string answerFor(const std::string& type, const std::string& geofence) {
  return R"({"mapconfig":{")" + type + R"(":{"geofence":{"sslurl":")" + geofence + R"("}}}})";
}

class ConfigurationTest : public testing::Test {
 protected:
  ConfigurationTest() { store.setProductKey("k"); }

  ConfigurationStore::Completion noting(const std::string& who) {
    return [this, who](const auto& addresses) {
      calls.push_back(who + ": " + (addresses ? addresses->geofence.value_or("no URL") : "absent"));
    };
  }
  void fetch(const std::string& who) { store.fetchWithId(platform, noting(who)); }
  void answer(const std::string& body) {
    fake.httpSession->running.at(0)->answer(200, body);
    fake.mainQueue->run();
  }
  void fail() {
    fake.httpSession->running.at(0)->fail(NSURLErrorCannotFindHost);
    fake.mainQueue->run();
  }
  void packaged(const std::string& bytes) { fake.bundle->resources["tile_config.json"] = bytes; }

  ZRFakePlatform fake;
  ZRPlatform platform = fake.platform();
  ConfigurationStore store;
  std::vector<std::string> calls;
};

TEST_F(ConfigurationTest, EachServiceIsReadFromItsOwnEntry) {
  const auto document = std::get<ZROHMValue>(fake.json->valueFromJSON(
      R"({"mapconfig":{"1":{"geofence":{"sslurl":"1s","url":"1"},"traffic":{"sslurl":"2s","url":"2"},
          "geocode":{"sslurl":"3s","url":"3"},"directions":{"sslurl":"4s","url":"4"},
          "guidance":{"sslurl":"5s","url":"5"}}}})",
      ZRJSONFragments::refused));
  const auto addresses = addressesFromDocument(document, 1);
  ASSERT_NE(addresses, nullptr);
  EXPECT_THAT(addresses->geofence, Optional(std::string("1s")));
  EXPECT_THAT(addresses->traffic, Optional(std::string("2s")));
  EXPECT_THAT(addresses->geocode, Optional(std::string("3s")));
  EXPECT_THAT(addresses->directions, Optional(std::string("4")));
  EXPECT_THAT(addresses->guidance, Optional(std::string("5")));
}

TEST_F(ConfigurationTest, DocumentsOfAnotherShapeAreAbsentOrLackTheirAddresses) {
  const auto geofence = [&](const char* json) -> std::string {
    const auto document = fake.json->valueFromJSON(json, ZRJSONFragments::allowed);
    const auto addresses = addressesFromDocument(std::get<ZROHMValue>(document), 1);
    return addresses ? addresses->geofence.value_or("no URL") : "absent";
  };
  for (const char* json :
       {"null", "[]", "{}", "\"mapconfig\"", R"({"mapconfig":null})", R"({"mapconfig":[{}]})", R"({"mapconfig":{}})",
        R"({"mapconfig":{"2":{}}})", R"({"mapconfig":{"1":null}})", R"({"mapconfig":{"1":"x"}})", R"({"1":{}})"}) {
    EXPECT_EQ(geofence(json), "absent") << json;
  }
  for (const char* json : {R"({"mapconfig":{"1":{}}})", R"({"mapconfig":{"1":{"geofence":null}}})",
                           R"({"mapconfig":{"1":{"geofence":"x"}}})", R"({"mapconfig":{"1":{"geofence":{"url":"x"}}}})",
                           R"({"mapconfig":{"1":{"geofence":{"sslurl":5}}}})"}) {
    EXPECT_EQ(geofence(json), "no URL") << json;
  }
}

TEST_F(ConfigurationTest, TheRequestNamesHostTypeAndEscapedKeyOnce) {
  EXPECT_THAT(store.mapConfigUrl(), StartsWith("http://"));
  EXPECT_THAT(store.mapConfigUrl(), EndsWith("/mapconfig?version=4&config=1&key=k"));
  const std::string production = store.mapConfigUrl();
  store.setConfigurationService(0);
  EXPECT_NE(store.mapConfigUrl(), production);
  store.initialize();
  EXPECT_EQ(store.mapConfigUrl(), production);
  EXPECT_EQ(store.configurationService(), 1);

  store.setProductKey("%i%@%d&");
  store.setConfigType(-1);
  EXPECT_THAT(store.mapConfigUrl(), EndsWith("&config=-1&key=%i%%40%d%26"));
  store.setConfigType((std::int64_t{1} << 32) + 7);
  EXPECT_THAT(store.mapConfigUrl(), testing::HasSubstr("&config=7&"));
  store.setProductKey(std::nullopt);
  EXPECT_THAT(store.mapConfigUrl(), EndsWith("&key=(null)"));
}

TEST_F(ConfigurationTest, TheRequestIsSentAtOnceWithThirtySecondsAndNothingElse) {
  fetch("a");
  const NSMutableURLRequest& request = fake.httpSession->running.at(0)->request();
  ASSERT_TRUE(request.URL);
  EXPECT_EQ(request.URL->absoluteString(), store.mapConfigUrl());
  EXPECT_EQ(request.timeoutSeconds, 30.0);
  EXPECT_EQ(request.HTTPMethod, "GET");
  EXPECT_THAT(request.HTTPHeaders, IsEmpty());
  EXPECT_EQ(request.HTTPBody, std::nullopt);
}

TEST_F(ConfigurationTest, TheTypeIsLookedUpAsUnsignedAndReadWhenTheAnswerArrives) {
  fetch("a");
  store.setConfigType(-1);
  answer(answerFor("18446744073709551615", "far"));
  EXPECT_THAT(calls, ElementsAre("a: far"));
  store.setConfigType(5);
  fetch("b");
  EXPECT_THAT(calls, ElementsAre("a: far", "b: far")) << "a change of type keeps the cache";
}

TEST_F(ConfigurationTest, WithoutAKeyNothingHappensAndTheOneFetchIsNotSpent) {
  store.setProductKey(std::nullopt);
  fetch("early");
  EXPECT_EQ(fake.httpSession->resumed, 0U);
  store.setProductKey("k");
  fetch("a");
  answer(answerFor("1", "x"));
  EXPECT_THAT(calls, ElementsAre("a: x"));
  store.setProductKey(std::nullopt);
  fetch("late");
  EXPECT_THAT(calls, ElementsAre("a: x")) << "the cache is not handed out without a key";
}

TEST_F(ConfigurationTest, OneFetchServesAllButThoseWhoAskWhileItIsUnderWay) {
  fetch("first");
  fetch("in flight");
  EXPECT_THAT(calls, IsEmpty());
  answer(answerFor("1", "x"));
  EXPECT_THAT(calls, ElementsAre("first: x"));
  fetch("later");
  EXPECT_THAT(calls, ElementsAre("first: x", "later: x")) << "before the call returns";
  store.fetchWithId(platform, nullptr);
  EXPECT_EQ(fake.httpSession->resumed, 1U);
}

TEST_F(ConfigurationTest, AnAnswerWithoutTheTypeIsLoggedAndEndsTheMatter) {
  fetch("a");
  answer(R"({"other":1})");
  EXPECT_THAT(calls, ElementsAre("a: absent"));
  EXPECT_THAT(fake.log->lines, ElementsAre(kLogLine));
  fetch("b");
  EXPECT_THAT(calls, ElementsAre("a: absent"));
  EXPECT_EQ(fake.httpSession->resumed, 1U) << "no second attempt";
}

TEST_F(ConfigurationTest, AFailureFallsBackToThePackagedFile) {
  packaged(answerFor("1", "packaged"));
  fetch("offline");
  fail();
  fetch("cached");
  store.setConfigurationService(0);
  fetch("no JSON");
  answer("<html>");
  EXPECT_THAT(calls, ElementsAre("offline: packaged", "cached: packaged", "no JSON: packaged"));
  EXPECT_THAT(fake.log->lines, IsEmpty());
}

TEST_F(ConfigurationTest, AMissingPackagedFileGivesAbsentAndADamagedOneNoCall) {
  fetch("missing");
  fail();
  EXPECT_THAT(calls, ElementsAre("missing: absent"));
  for (const char* damaged : {"{", "", "5"}) {
    SCOPED_TRACE(damaged);
    store.setConfigurationService(1 - store.configurationService());
    packaged(damaged);
    fetch("damaged");
    fail();
    EXPECT_THAT(calls, ElementsAre("missing: absent"));
  }
  EXPECT_THAT(fake.log->lines, IsEmpty());
}

TEST_F(ConfigurationTest, ADamagedPackagedFileLeavesTheCacheAsItWas) {
  fetch("old");
  store.setConfigurationService(0);
  fetch("new");
  answer(answerFor("1", "old host"));
  EXPECT_THAT(calls, ElementsAre("old: old host"));
  packaged("{");
  fail();
  fetch("cached");
  EXPECT_THAT(calls, ElementsAre("old: old host", "cached: old host"));
}

TEST_F(ConfigurationTest, AKeyThatMakesNoAddressFallsBackToo) {
  packaged(answerFor("1", "packaged"));
  store.setProductKey("50%");
  fetch("a");
  EXPECT_THAT(calls, IsEmpty());
  fake.mainQueue->run();
  EXPECT_THAT(calls, ElementsAre("a: packaged"));
}

TEST_F(ConfigurationTest, OnlyAChangeOfHostStartsOver) {
  fetch("a");
  answer(answerFor("1", "x"));
  store.setConfigurationService(7);
  EXPECT_EQ(store.configurationService(), 7);
  fetch("b");
  store.setConfigurationService(1);  // the host that is chosen already
  fetch("c");
  EXPECT_THAT(calls, ElementsAre("a: x", "b: x", "c: x"));
  store.setConfigurationService(0);
  fetch("d");
  EXPECT_EQ(fake.httpSession->resumed, 2U);
  EXPECT_EQ(calls.size(), 3U) << "the cache is gone";
}

TEST_F(ConfigurationTest, AnAnswerFromTheFormerHostIsCachedWhenItArrivesAndTheNextFetchStillAsks) {
  fetch("old");
  store.setConfigurationService(0);
  answer(answerFor("1", "old host"));
  fetch("new");
  EXPECT_THAT(calls, ElementsAre("old: old host", "new: old host")) << "what is cached is told at once";
  answer(answerFor("1", "new host"));
  EXPECT_THAT(calls, ElementsAre("old: old host", "new: old host", "new: new host"));
}

TEST_F(ConfigurationTest, ACompletionMaySwitchTheHostAndFetchAgain) {
  store.fetchWithId(platform, [&](const auto&) {
    store.setConfigurationService(0);
    store.setProductKey("other");
    fetch("inner");
  });
  answer(answerFor("1", "x"));
  EXPECT_EQ(fake.httpSession->resumed, 2U);
  answer(answerFor("1", "y"));
  EXPECT_THAT(calls, ElementsAre("inner: y"));
}

TEST_F(ConfigurationTest, ThreadsThatFetchTogetherSendOneRequest) {
  std::atomic<int> called = 0;
  std::vector<std::jthread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&] { store.fetchWithId(platform, [&](const auto&) { ++called; }); });
  }
  threads.clear();
  EXPECT_EQ(fake.httpSession->resumed, 1U);
  answer(answerFor("1", "x"));
  EXPECT_EQ(called, 1);
}

TEST_F(ConfigurationTest, ThePackagedFileThatIsShippedHasAllServices) {
  std::ifstream file(ZRCORE_TILE_CONFIG);
  packaged(std::string(std::istreambuf_iterator<char>(file), {}));
  std::shared_ptr<const ConfigurationAddresses> addresses;
  store.fetchWithId(platform, [&](const auto& told) { addresses = told; });
  fail();
  ASSERT_NE(addresses, nullptr);
  for (const auto& url :
       {addresses->geofence, addresses->traffic, addresses->geocode, addresses->directions, addresses->guidance}) {
    EXPECT_TRUE(url && NSURL::URLWithString(*url));
  }
}

class ProcessConfigurationTest : public WithFakePlatform {};

TEST_F(ProcessConfigurationTest, TheClassFetchesOnceForTheProcess) {
  EXPECT_EQ(ZRConfigurationBase::configurationService(), 1);
  EXPECT_EQ(ZRConfigurationBase::configType(), 1);
  EXPECT_EQ(ZRConfigurationBase::productKey(), std::nullopt);
  EXPECT_EQ(ZRConfigurationBase::productKeyUrlEscaped(), std::nullopt);

  ZRConfigurationBase::setProductKey("a&b");
  EXPECT_THAT(ZRConfigurationBase::productKeyUrlEscaped(), Optional(std::string("a%26b")));
  std::vector<std::shared_ptr<ZRConfigurationBase>> told;
  ZRConfigurationBase::fetch([&](const auto& configuration) { told.push_back(configuration); });
  fake.httpSession->running.at(0)->answer(200, answerFor("1", "x"));
  fake.mainQueue->run();
  ZRConfigurationBase::fetchWithId([&](const auto& configuration) { told.push_back(configuration); });
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told[0], told[1]);
  EXPECT_EQ(fake.httpSession->resumed, 1U);

  ZRConfigurationBase::setConfigType(2);
  const auto document = fake.json->valueFromJSON(answerFor("2", "y"), ZRJSONFragments::refused);
  const auto configuration = ZRConfigurationBase::configurationWithDictionary(std::get<ZROHMValue>(document));
  ASSERT_NE(configuration, nullptr) << "the class's own type is looked up";
  EXPECT_THAT(configuration->geofenceBaseURL(), Optional(std::string("y")));
  EXPECT_STREQ(ZRConfigurationGeoTrackingOnChangedNotification, "ZRConfigurationGeoTrackingOnChangedNotification");
}

}  // namespace
