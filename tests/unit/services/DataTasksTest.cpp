// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSURLSession_ZR.h>
#include <gmock/gmock.h>

#include <new>

#include "WithFakePlatform.h"

using testing::ElementsAre;
using testing::EndsWith;

namespace {

using namespace NSURLSession_ZR;

/// Makes tasks of each kind and writes down what becomes of them.
class DataTasksTest : public WithFakePlatform {
 protected:
  DataTasksTest() { fake.images->images["picture"] = std::make_shared<UIImage>(UIImage{1, 1, {1, 2, 3, 4}}); }

  using Make = std::function<Task(DataTasksTest&, bool withSuccess)>;
  struct Kind {
    const char* name;
    Make make;
    const char* goodBody;
    const char* badBody;
    const char* goodOutcome;
    const char* badOutcome;
  };
  static std::vector<Kind> parsingKinds();

  Failure failure() {
    return [this](const Response& response, const std::optional<NSError>& error) {
      note(response, "failure " + (error ? error->domain + ' ' + std::to_string(error->code) : "without error"));
    };
  }
  template <class Success, class Describe>
  Success success(bool wanted, Describe describe) {
    if (!wanted) return nullptr;
    return [this, describe](const Response& response, auto payload) { note(response, describe(payload)); };
  }

  Task plain(bool withSuccess = true, bool withFailure = true) {
    return dataTaskWithRequestSuccessFailure(
        request, success<DataSuccess>(withSuccess, [](const auto& body) { return body.value_or("no body"); }),
        withFailure ? failure() : nullptr);
  }
  static Task json(DataTasksTest& test, bool withSuccess) {
    return jsonDataTaskWithRequestSuccessFailure(
        test.request,
        test.success<JSONSuccess>(
            withSuccess, [](const auto& value) { return "object of " + std::to_string(value.dictionary()->size()); }),
        test.failure());
  }
  static Task image(DataTasksTest& test, bool withSuccess) {
    return imageDataTaskWithRequestSuccessFailure(
        test.request,
        test.success<ImageSuccess>(withSuccess, [](const auto& picture) { return std::to_string(picture->rgba[1]); }),
        test.failure());
  }
  static Task xml(DataTasksTest& test, bool withSuccess) {
    return xmlParserDataTaskWithRequestSuccessFailure(
        test.request,
        test.success<XMLParserSuccess>(
            withSuccess,
            [](const auto& parser) { return std::string(parser->parserError() ? "started" : "unstarted"); }),
        test.failure());
  }

  /// Lets the task answer. @return how many closures the main queue was given.
  std::size_t answer(const Task& task, std::optional<NSData> body, int status = 200) {
    task->resume();
    fake.httpSession->running.at(0)->answer(status, std::move(body));
    EXPECT_THAT(outcomes, ElementsAre()) << "called outside the main queue";
    return fake.mainQueue->run();
  }
  void note(const Response& response, const std::string& what) {
    outcomes.push_back(response ? std::to_string(response->statusCode) + ' ' + what : what);
  }

  NSMutableURLRequest request{.URL = NSURL::URLWithString("http://h/p")};
  std::vector<std::string> outcomes;
};

std::vector<DataTasksTest::Kind> DataTasksTest::parsingKinds() {
  static const std::string imageOutcome = "200 failure " + std::string(ZRURLSessionErrorDomain) + " 1001";
  static const std::string xmlOutcome = "200 failure " + std::string(ZRURLSessionErrorDomain) + " 1000";
  return {{"json", json, R"({"a":1})", "<html>", "200 object of 1", "200 failure NSCocoaErrorDomain 3840"},
          {"image", image, "picture", "cut picture", "200 2", imageOutcome.c_str()},
          {"xml", xml, "<a/>", "", "200 unstarted", xmlOutcome.c_str()}};
}

TEST_F(DataTasksTest, ATaskIsMadeSuspendedAndHeldByItsSessionOnceResumed) {
  auto task = plain();
  EXPECT_EQ(task->state(), NSURLSessionTaskState::suspended);
  EXPECT_EQ(fake.httpSession->resumed, 0U);
  task->resume();
  const std::weak_ptr<NSURLSessionDataTask> watched = task;
  task.reset();
  ASSERT_FALSE(watched.expired());
  fake.httpSession->running.at(0)->answer(200, "body");
  fake.mainQueue->run();
  EXPECT_TRUE(watched.expired());
  EXPECT_THAT(outcomes, ElementsAre("200 body"));
}

TEST_F(DataTasksTest, ThePlainTaskHandsOverAnyBodyOfAnyStatus) {
  EXPECT_EQ(answer(plain(), "<html>", 500), 1U);
  EXPECT_THAT(outcomes, ElementsAre("500 <html>"));
  outcomes.clear();
  answer(plain(), std::nullopt, 204);
  EXPECT_THAT(outcomes, ElementsAre("204 no body"));
}

TEST_F(DataTasksTest, ABodyThatIsParsedMustNotBeLongerThanThePlatformAllows) {
  const std::string blanks(static_cast<std::size_t>(ZRLongestParsedBodyBytes), ' ');
  for (const Kind& kind : parsingKinds()) {
    fake.httpSession->running.clear();
    answer(kind.make(*this, true), kind.goodBody + blanks);
    EXPECT_THAT(outcomes, ElementsAre("200 failure NSURLErrorDomain -1103")) << kind.name;
    outcomes.clear();
  }
  fake.httpSession->running.clear();
  answer(plain(), blanks + " ");
  EXPECT_THAT(outcomes, ElementsAre("200 " + blanks + " "));
  outcomes.clear();
  fake.httpSession->running.clear();
  answer(json(*this, true), blanks.substr(7) + R"({"a":1})");
  EXPECT_THAT(outcomes, ElementsAre("200 object of 1"));
}

TEST_F(DataTasksTest, AFaultOfTheTransportIsAFailureEvenBesideABody) {
  plain()->resume();
  fake.httpSession->running.at(0)->complete("half", std::make_shared<NSURLResponse>(NSURLResponse{.statusCode = 200}),
                                            NSError{NSURLErrorDomain, NSURLErrorNetworkConnectionLost, {}});
  EXPECT_THAT(outcomes, ElementsAre());
  EXPECT_EQ(fake.mainQueue->run(), 1U);
  EXPECT_THAT(outcomes, ElementsAre("200 failure NSURLErrorDomain -1005"));
}

TEST_F(DataTasksTest, WhatNobodyWantsToHearIsNotPosted) {
  plain(false, true)->resume();
  fake.httpSession->running.at(0)->answer(200, "body");
  plain(true, false)->resume();
  fake.httpSession->running.at(0)->fail(NSURLErrorTimedOut);
  EXPECT_EQ(fake.mainQueue->waiting(), 0U);
  EXPECT_THAT(fake.log->lines, ElementsAre());
}

TEST_F(DataTasksTest, AParsedBodyReachesSuccessWithinOneTurnOfTheMainQueue) {
  for (const Kind& kind : parsingKinds()) {
    SCOPED_TRACE(kind.name);
    EXPECT_EQ(answer(kind.make(*this, true), kind.goodBody), 1U);
    EXPECT_THAT(outcomes, ElementsAre(kind.goodOutcome));
    outcomes.clear();
  }
}

TEST_F(DataTasksTest, ABadBodyIsReportedWhetherOrNotSuccessIsAwaited) {
  for (const Kind& kind : parsingKinds()) {
    SCOPED_TRACE(kind.name);
    for (const bool withSuccess : {true, false}) {
      EXPECT_EQ(answer(kind.make(*this, withSuccess), kind.badBody), 1U);
      EXPECT_THAT(outcomes, ElementsAre(kind.badOutcome));
      outcomes.clear();
    }
    answer(kind.make(*this, true), std::nullopt);
    EXPECT_THAT(outcomes, ElementsAre(kind.badOutcome)) << "an absent body";
    outcomes.clear();
    answer(kind.make(*this, false), kind.goodBody);
    EXPECT_THAT(outcomes, ElementsAre());
  }
}

TEST_F(DataTasksTest, AParserThatCannotBeMadeIsAnErrorWithASentence) {
  fake.xml->makesParsers = false;
  std::optional<NSError> told;
  const Failure tell = [&](const auto&, const auto& error) { told = error; };
  xmlParserDataTaskWithRequestSuccessFailure(request, nullptr, tell)->resume();
  fake.httpSession->running.at(0)->answer(200, "<a/>");
  fake.mainQueue->run();
  EXPECT_EQ(told, errorWithErrorCodeDescription(1000, "Error parsing xml data"));
  EXPECT_THAT(told->domain, EndsWith(".nsurlsession"));
  EXPECT_EQ(told->localizedDescription(), "Error parsing xml data");
  imageDataTaskWithRequestSuccessFailure(request, nullptr, tell)->resume();
  fake.httpSession->running.at(0)->answer(200, "cut picture");
  fake.mainQueue->run();
  EXPECT_EQ(told, errorWithErrorCodeDescription(1001, "Error parsing image data"));
}

TEST_F(DataTasksTest, AJSONServiceThatReadsNothingFailsWithoutAnError) {
  class SilentJSON final : public ZRJSONService {
    std::variant<ZROHMValue, NSError> valueFromJSON(std::string_view, ZRJSONFragments) const override {
      return ZROHMValue();
    }
    std::variant<std::string, NSError> JSONFromValue(const ZROHMValue&, ZRJSONLayout) const override { return {}; }
  };
  PlatformTestPeer::forget();
  fake.json = std::make_shared<SilentJSON>();
  ASSERT_TRUE(ZRPlatformInstall(fake.platform()));
  answer(json(*this, true), "{}");
  EXPECT_THAT(outcomes, ElementsAre("200 failure without error"));
}

TEST_F(DataTasksTest, ABodyThatFindsNoMemoryIsItsRequestsFailure) {
  class FullJSON final : public ZRJSONService {
    std::variant<ZROHMValue, NSError> valueFromJSON(std::string_view, ZRJSONFragments) const override {
      throw std::bad_alloc();
    }
    std::variant<std::string, NSError> JSONFromValue(const ZROHMValue&, ZRJSONLayout) const override { return {}; }
  };
  PlatformTestPeer::forget();
  fake.json = std::make_shared<FullJSON>();
  ASSERT_TRUE(ZRPlatformInstall(fake.platform()));
  answer(json(*this, true), "{}");
  EXPECT_THAT(outcomes, ElementsAre("200 failure " + std::string(NSURLErrorDomain) + " -1"));
}

TEST_F(DataTasksTest, TheGivenSessionIsUsedAndNoSessionGivesNoTask) {
  const auto other = std::make_shared<ZRFakeURLSession>(fake.mainQueue);
  for (const auto& task : {dataTaskWithSessionRequestSuccessFailure(other, request, nullptr, nullptr),
                           jsonDataTaskWithSessionRequestSuccessFailure(other, request, nullptr, nullptr),
                           imageDataTaskWithSessionRequestSuccessFailure(other, request, nullptr, nullptr),
                           xmlParserDataTaskWithSessionRequestSuccessFailure(other, request, nullptr, nullptr)}) {
    task->resume();
  }
  EXPECT_EQ(other->resumed, 4U);
  EXPECT_EQ(fake.httpSession->resumed, 0U);
  EXPECT_EQ(jsonDataTaskWithSessionRequestSuccessFailure(nullptr, request, nullptr, nullptr), nullptr);
}

TEST(ResponseTest, HeadersAreFoundWhateverTheirCase) {
  const NSURLResponse response{.statusCode = 200, .headers = {{"ETag", "1"}, {"etag", "2"}}};
  ASSERT_NE(response.valueForHTTPHeaderField("eTAG"), nullptr);
  EXPECT_EQ(*response.valueForHTTPHeaderField("eTAG"), "1");
  EXPECT_EQ(response.valueForHTTPHeaderField("ETa"), nullptr);
}

}  // namespace
