// SPDX-License-Identifier: Apache-2.0
// The session against a server that does what it is told, through the data tasks that users of the kit call.
#include <ZRCore/NSURLSession_ZR.h>
#include <ZRCore/ZRLinuxPlatform.h>
#include <ZRCore/ZRPlatformFake.h>
#include <glib.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>
#include <zlib.h>

#include <atomic>
#include <fstream>
#include <set>
#include <thread>

#include "HTTPTestServer.h"
#include "PlatformTestPeer.h"
#include "http/CurlSession.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;

namespace {

constexpr std::uint64_t kLongestBody = 64ULL << 20;
/// "hello", packed by gzip.
constexpr std::string_view kPacked(
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x00\x03\xcb\x48\xcd\xc9\xc9\x07\x00\x86\xa6\x10\x36\x05\x00\x00\x00", 25);

/// What came of a request.
struct Outcome {
  NSURLSession_ZR::Response response;
  std::optional<NSData> body;
  std::optional<NSError> error;

  int status() const { return response ? response->statusCode : 0; }
  long code() const { return error ? error->code : 0; }
};

/// The Linux platform in use, on a main context of this thread, and a server.
class HttpSession : public testing::Test {
 protected:
  HttpSession() {
    PlatformTestPeer::forget();
    ZRLinuxOptions options;
    options.mainContext = context.get();
    installed_ = ZRPlatformInstall(makeLinuxPlatform(options));
  }
  ~HttpSession() override {
    server.stop();
    PlatformTestPeer::forget();
  }
  void SetUp() override { ASSERT_TRUE(installed_); }

  /// Starts a request whose task nobody keeps. What comes of it is added to `outcomes`.
  void get(NSMutableURLRequest request) {
    const auto here = std::this_thread::get_id();
    const auto task = NSURLSession_ZR::dataTaskWithRequestSuccessFailure(
        std::move(request),
        [this, here](const auto& response, auto body) {
          EXPECT_EQ(std::this_thread::get_id(), here);
          outcomes.push_back({response, std::move(body), std::nullopt});
        },
        [this, here](const auto& response, const auto& error) {
          EXPECT_EQ(std::this_thread::get_id(), here);
          outcomes.push_back({response, std::nullopt, error});
        });
    task->resume();
    EXPECT_EQ(task->state(), NSURLSessionTaskState::running);
  }
  void get(const std::string& url) { get(NSMutableURLRequest{.URL = NSURL::URLWithString(url)}); }

  /// Iterates until `holds`, or fails after 20 seconds.
  void runUntil(const std::function<bool()>& holds) { ASSERT_TRUE(ZRRunLinuxLoopFor(20.0, holds, context.get())); }
  void runWhatIsReady() {
    while (g_main_context_iteration(context.get(), FALSE)) {
    }
  }

  /// The one outcome of one request.
  Outcome outcomeOf(NSMutableURLRequest request) {
    outcomes.clear();
    get(std::move(request));
    EXPECT_THAT(outcomes, IsEmpty()) << "from inside `resume`";
    runUntil([&] { return !outcomes.empty(); });
    runWhatIsReady();
    EXPECT_EQ(outcomes.size(), 1U);
    return outcomes.empty() ? Outcome() : outcomes[0];
  }
  Outcome outcomeOf(const std::string& url) { return outcomeOf({.URL = NSURL::URLWithString(url)}); }

  std::shared_ptr<GMainContext> context{g_main_context_new(), g_main_context_unref};
  HTTPTestServer server;
  std::vector<Outcome> outcomes;

 private:
  bool installed_ = false;
};

using Server = HTTPTestServer;

struct Fault {
  const char* what;  ///< the server did
  Server::Handler handler;
  long code;  ///< 0: none
  int status = 200;
  std::string body = {};     ///< expected, when there is no fault
  std::string address = {};  ///< when it is not the server's
};

Server::Handler resettingAfter(std::string bytes) {
  return [bytes = std::move(bytes)](const Server::Request&, Server::Connection& connection) {
    connection.send(bytes);
    connection.reset();
  };
}

Server::Handler packed(std::string_view bytes) {
  return Server::answering(200, std::string(bytes), "Content-Encoding: gzip\r\n");
}

/// A few kilobytes that unpack to more than the greatest body.
Server::Handler sendingBomb() {
  const std::string zeros(kLongestBody + 1, '\0');
  std::string bomb(compressBound(zeros.size()), '\0');
  uLongf size = bomb.size();
  compress(reinterpret_cast<Bytef*>(bomb.data()), &size, reinterpret_cast<const Bytef*>(zeros.data()), zeros.size());
  return Server::answering(200, bomb.substr(0, size), "Content-Encoding: deflate\r\n");
}

/// Megabytes that are never held as one.
Server::Handler sendingLength(std::uint64_t length) {
  return [length](const Server::Request&, Server::Connection& connection) {
    connection.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
    const std::string block(1 << 20, 'x');
    std::uint64_t left = length;
    for (; left >= block.size(); left -= block.size()) {
      if (!connection.send("100000\r\n" + block + "\r\n")) return;
    }
    if (left > 0) connection.send("1\r\nx\r\n");
    connection.send("0\r\n\r\n");
  };
}

/// Packed members that each stand for no byte, more of them than anybody waits for.
void sendEmptyMembers(const Server::Request&, Server::Connection& connection) {
  constexpr std::string_view kMember("\x1f\x8b\x08\0\0\0\0\0\0\x03\x03\0\0\0\0\0\0\0\0\0", 20);
  std::string members;
  for (int i = 0; i < 50'000; ++i) members += kMember;
  connection.send("HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\n\r\n");
  while (connection.send(members)) {
  }
  connection.close();
}

std::vector<Fault> faults(const std::string& self) {
  const std::string ok = "HTTP/1.1 200 OK\r\n";
  std::string manyFields;
  while (manyFields.size() < 400'000) manyFields += "X: " + std::string(1000, 'x') + "\r\n";
  return {
      {"answers", Server::answering(200, "hello"), 0, 200, "hello"},
      {"answers 204 without a body", Server::answering(204, ""), 0, 204},
      {"answers 404 with a body", Server::answering(404, "gone"), 0, 404, "gone"},
      {"answers 500 with a body", Server::answering(500, "<p>oh</p>"), 0, 500, "<p>oh</p>"},
      {"sends chunks", Server::sending(ok + "Transfer-Encoding: chunked\r\n\r\n3\r\nhel\r\n2\r\nlo\r\n0\r\n\r\n"), 0,
       200, "hello"},
      {"sends until it closes", Server::sending(ok + "\r\nhello"), 0, 200, "hello"},
      {"sends gzip", packed(kPacked), 0, 200, "hello"},
      {"sends gzip in pieces, and padding", packed(std::string(kPacked).append(kPacked).append(2, '\0')), 0, 200,
       "hellohello"},
      {"sends the greatest body", sendingLength(kLongestBody), 0, 200, std::string(kLongestBody, 'x')},
      {"sends a byte more", sendingLength(kLongestBody + 1), NSURLErrorDataLengthExceedsMaximum},
      {"sends what unpacks to a byte more", sendingBomb(), NSURLErrorDataLengthExceedsMaximum},
      {"sends packed nothing without end", sendEmptyMembers, NSURLErrorDataLengthExceedsMaximum},
      {"sends a header field of 200 kB", Server::answering(200, "", "X: " + std::string(200'000, 'x') + "\r\n"),
       NSURLErrorDataLengthExceedsMaximum},
      {"sends header fields of 400 kB", Server::answering(200, "", manyFields), NSURLErrorDataLengthExceedsMaximum},
      {"sends damaged gzip", packed("\x1f\x8b\x08garbage, garbage"), NSURLErrorCannotDecodeContentData},
      {"sends gzip that ends too early",
       Server::sending(ok + "Content-Encoding: gzip\r\n\r\n" + std::string(kPacked.substr(0, 17))),
       NSURLErrorCannotDecodeContentData},
      {"sends deflate without its frame", packed(kPacked.substr(10, 7)), 0, 200, "hello"},
      {"redirects", Server::redirecting("/other"), 0, 200, "other"},
      {"redirects to itself", Server::redirecting(self), NSURLErrorHTTPTooManyRedirects, 302},
      {"redirects to ftp", Server::redirecting("ftp://127.0.0.1/secret"), NSURLErrorUnsupportedURL, 302},
      {"redirects to a file", Server::redirecting("file:///etc/passwd"), NSURLErrorUnsupportedURL, 302},
      {"redirects to nonsense", Server::redirecting("http://[::x]:y/"), NSURLErrorBadURL, 302},
      {"closes without a word", Server::sending(""), NSURLErrorNetworkConnectionLost, 0},
      {"resets the connection", resettingAfter(""), NSURLErrorNetworkConnectionLost, 0},
      {"resets within the body", resettingAfter(ok + "Content-Length: 9\r\n\r\nhel"), NSURLErrorNetworkConnectionLost},
      {"ends within the headers", Server::sending(ok + "Content-Le"), NSURLErrorNetworkConnectionLost},
      {"sends less than it said", Server::sending(ok + "Content-Length: 9\r\n\r\nhel"),
       NSURLErrorNetworkConnectionLost},
      {"sends no last chunk", Server::sending(ok + "Transfer-Encoding: chunked\r\n\r\n3\r\nhel\r\n"),
       NSURLErrorNetworkConnectionLost},
      {"sends garbage", Server::sending("\x16\x03garbage\r\n\r\n"), NSURLErrorBadServerResponse, 0},
      {"says nothing", Server::staySilent, NSURLErrorTimedOut, 0},
      {"says nothing after the headers",
       [ok](const auto& request, auto& connection) {
         connection.send(ok + "Content-Length: 9\r\n\r\nhel");
         Server::staySilent(request, connection);
       },
       NSURLErrorTimedOut},
      {"speaks no TLS", Server::answering(200, ""), NSURLErrorSecureConnectionFailed, 0, "", "https" + self.substr(4)},
      {"does not listen", nullptr, NSURLErrorCannotConnectToHost, 0, "", "http://127.0.0.1:1/"},
      {"is not asked: ftp://", nullptr, NSURLErrorUnsupportedURL, 0, "", "ftp://127.0.0.1/"},
      {"is not asked: an address without a scheme", nullptr, NSURLErrorUnsupportedURL, 0, "", "127.0.0.1/x"},
      {"is not asked: no host", nullptr, NSURLErrorBadURL, 0, "", "http://"},
      {"is not asked: a port that is none", nullptr, NSURLErrorBadURL, 0, "", "HTTPS://127.0.0.1:99999/"},
  };
}

TEST_F(HttpSession, ReachesExactlyOneCallbackWhateverTheServerDoes) {
  std::ofstream table(ZRCORE_FAULT_TABLE);
  table << "| the server … | domain | code | status | text |\n|---|---|---|---|---|\n";
  server.on("/other", Server::answering(200, "other"));
  for (const Fault& fault : faults(server.url("/fault"))) {
    SCOPED_TRACE(fault.what);
    server.on("/fault", fault.handler ? fault.handler : Server::answering(200, ""));
    NSMutableURLRequest request{.URL =
                                    NSURL::URLWithString(fault.address.empty() ? server.url("/fault") : fault.address)};
    if (fault.code == NSURLErrorTimedOut) request.timeoutSeconds = 0.25;
    const Outcome outcome = outcomeOf(std::move(request));
    EXPECT_EQ(outcome.code(), fault.code);
    EXPECT_EQ(outcome.status(), fault.status);
    table << "| " << fault.what << " | ";
    if (outcome.error) {
      EXPECT_EQ(outcome.error->domain, NSURLErrorDomain);
      std::string text = outcome.error->localizedDescription();
      EXPECT_EQ(text.find("127.0.0.1:") != std::string::npos, !std::string_view(fault.what).starts_with("is not asked"))
          << text;
      for (std::size_t at; (at = text.find(std::to_string(server.port()))) != std::string::npos;) {
        text.replace(at, std::to_string(server.port()).size(), "PORT");
      }
      table << outcome.error->domain << " | " << outcome.code() << " | " << outcome.status() << " | " << text << " |\n";
    } else {
      EXPECT_TRUE(outcome.body == fault.body);  // of 64 MiB: not to be printed
      table << "– | – | " << outcome.status() << " | success |\n";
    }
  }
}

TEST_F(HttpSession, SendsTheRequestAsItStandsAndKeepsTheConnection) {
  server.on("/", Server::answering(200, "ok"));
  const auto url = NSURL::URLWithString(server.url("/?a=%20"));
  const std::string zeroWithin("a\0b", 3);
  outcomeOf(
      {.URL = url, .HTTPMethod = "POST", .HTTPHeaders = {{"X-Key", "1"}, {"X-Empty", ""}}, .HTTPBody = zeroWithin});
  outcomeOf({.URL = url, .HTTPMethod = "PUT", .HTTPBody = std::string(3 << 20, 'p')});
  outcomeOf({.URL = url, .HTTPMethod = "DELETE"});
  outcomeOf({.URL = url, .HTTPMethod = "POST"});
  outcomeOf({.URL = url});
  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 5U);
  EXPECT_EQ(requests[0].method, "POST");
  EXPECT_EQ(requests[0].target, "/?a=%20");
  EXPECT_EQ(requests[0].header("x-key"), "1");
  EXPECT_THAT(requests[0].headers, testing::Contains(Pair("x-empty", "")));
  EXPECT_EQ(requests[0].body, zeroWithin);
  EXPECT_EQ(requests[1].method, "PUT");
  EXPECT_EQ(requests[1].body.size(), 3U << 20);
  EXPECT_EQ(requests[2].method, "DELETE");
  EXPECT_EQ(requests[3].header("content-length"), "0");
  EXPECT_THAT(requests[4].header("accept-encoding"), HasSubstr("gzip"));
  EXPECT_EQ(server.connections(), 1);
}

TEST_F(HttpSession, RefusesToSendWhatWouldSayMoreThanItSeems) {
  const auto url = NSURL::URLWithString(server.url("/"));
  for (const NSMutableURLRequest& request :
       {NSMutableURLRequest{.URL = url, .HTTPHeaders = {{"A", "b\r\nHost: other"}}},
        NSMutableURLRequest{.URL = url, .HTTPHeaders = {{"A: b\r\nC", "d"}}},
        NSMutableURLRequest{.URL = url, .HTTPMethod = "GET /other HTTP/1.1\r\nX:"}}) {
    EXPECT_EQ(outcomeOf(request).code(), NSURLErrorBadURL);
  }
  EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(HttpSession, TellsOfTheLastAnswerOnly) {
  server.on("/first", Server::answering(301, "", "Location: /second\r\nX-First: 1\r\n"));
  server.on("/second", Server::sending("HTTP/1.1 103 Early Hints\r\nX-Early: 1\r\n\r\n"
                                       "HTTP/1.1 404 No\r\nX-Second: a\r\n b\r\nX-Second: c\r\nno colon\r\n\r\nnone"));
  const Outcome outcome = outcomeOf(server.url("/first"));
  ASSERT_NE(outcome.response, nullptr);
  EXPECT_EQ(outcome.response->URL->absoluteString(), server.url("/second"));
  EXPECT_EQ(outcome.status(), 404);
  EXPECT_THAT(outcome.response->headers, ElementsAre(Pair("X-Second", "a b"), Pair("X-Second", "c")));
}

TEST_F(HttpSession, AnswersMoreRequestsAtOnceThanThereAreDescriptorsEachWithItsOwn) {
  constexpr int kRequests = 1500;
  rlimit descriptors{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &descriptors), 0);
  descriptors.rlim_cur = 1024;  // as usual; the server's are among them
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &descriptors), 0);

  server.on("/echo", [](const Server::Request& request, Server::Connection& connection) {
    Server::answering(200, request.target)(request, connection);
  });
  std::set<std::string> expected, seen;
  for (int i = 0; i < kRequests; ++i) {
    expected.insert("/echo?" + std::to_string(i));
    get(server.url("/echo?" + std::to_string(i)));
  }
  runUntil([&] { return outcomes.size() == kRequests; });
  runWhatIsReady();
  for (const Outcome& outcome : outcomes) seen.insert(outcome.body.value_or(""));
  EXPECT_EQ(seen, expected);
  EXPECT_LE(server.connections(), 6);
  EXPECT_EQ(outcomes.size(), std::size_t{kRequests});
}

TEST_F(HttpSession, TheHostsOwnHeaderFieldsStayWithTheServerTheyAreFor) {
  HTTPTestServer other;
  server.on("/here", Server::redirecting("/there"));
  server.on("/there", Server::redirecting(other.url("/")));
  other.on("/", Server::redirecting(server.url("/back")));
  server.on("/back", Server::answering(200, "ok"));
  EXPECT_EQ(outcomeOf({.URL = NSURL::URLWithString(server.url("/here")), .HTTPHeaders = {{"X-Key", "secret"}}}).body,
            "ok");
  ASSERT_EQ(server.requests().size(), 3U);
  EXPECT_EQ(server.requests()[0].header("x-key"), "secret");
  EXPECT_EQ(server.requests()[1].header("x-key"), "secret");
  EXPECT_EQ(server.requests()[2].header("x-key"), "") << "sent there by another server";
  ASSERT_EQ(other.requests().size(), 1U);
  EXPECT_EQ(other.requests()[0].header("x-key"), "");
}

TEST_F(HttpSession, AProcessWithoutDescriptorsIsToldSo) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer's look at an object's type takes a pipe";
#endif
  server.on("/", Server::answering(200, "ok"));
  const rlimit few{64, 64};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
  std::vector<int> taken;
  for (int one = dup(0); one >= 0; one = dup(0)) taken.push_back(one);
  const Outcome outcome = outcomeOf(server.url("/"));
  for (const int one : taken) close(one);
  ASSERT_TRUE(outcome.error);
  EXPECT_THAT(outcome.error->localizedDescription(), HasSubstr("this process can open no more files"));
  EXPECT_EQ(outcomeOf(server.url("/")).status(), 200);
}

TEST_F(HttpSession, FindsAServerAgainThatDiedAndCameBack) {
  server.on("/", Server::answering(200, "ok"));
  EXPECT_EQ(outcomeOf(server.url("/")).status(), 200);
  server.stop();
  EXPECT_EQ(outcomeOf(server.url("/")).code(), NSURLErrorCannotConnectToHost);
  server.start();
  EXPECT_EQ(outcomeOf(server.url("/")).status(), 200);
  server.stop();
  server.start();
  EXPECT_EQ(outcomeOf(server.url("/")).status(), 200) << "the kept connection is dead, which costs the user nothing";
}

TEST_F(HttpSession, ReadsJSONWhateverItIsCalled) {
  server.on("/json", Server::answering(200, R"({"a":1})", "Content-Type: text/html\r\n"));
  server.on("/html", Server::answering(500, "<html>", "Content-Type: application/json\r\n"));
  std::vector<std::string> told;
  for (const char* path : {"/json", "/html"}) {
    NSURLSession_ZR::jsonDataTaskWithRequestSuccessFailure(
        {.URL = NSURL::URLWithString(server.url(path))},
        [&](const auto&, const ZROHMValue& document) { told.push_back(document.dictionary() ? "object" : "other"); },
        [&](const auto& response, const auto& error) {
          told.push_back(error->domain + " " + std::to_string(response->statusCode));
        })
        ->resume();
    runUntil([&, count = told.size()] { return told.size() > count; });
  }
  EXPECT_THAT(told, ElementsAre("object", std::string(NSCocoaErrorDomain) + " 500"));
}

TEST_F(HttpSession, TasksMayBeMadeResumedAndCancelledOnAnyThread) {
  server.on("/", Server::answering(200, "ok"));
  constexpr int kThreads = 4, kTasks = 40;
  std::atomic<int> completed = 0, twice = 0;
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&] {
      for (int i = 0; i < kTasks; ++i) {
        auto calls = std::make_shared<std::atomic<int>>(0);
        const auto task = NSURLSession::sharedSession()->dataTaskWithRequest(
            {.URL = NSURL::URLWithString(server.url("/"))}, [&, calls](const auto&, const auto&, const auto& error) {
              EXPECT_TRUE(!error || error->code == NSURLErrorCancelled);
              if (++*calls > 1) ++twice;
              ++completed;
            });
        std::thread other([&] { task->resume(); });
        if (i % 2 == 0) task->cancel();
        other.join();
      }
    });
  }
  runUntil([&] { return completed == kThreads * kTasks; });
  for (std::thread& thread : threads) thread.join();
  runWhatIsReady();
  EXPECT_EQ(completed, kThreads * kTasks);
  EXPECT_EQ(twice, 0);
}

}  // namespace
