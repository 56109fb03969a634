// SPDX-License-Identifier: Apache-2.0
// Requests that nothing comes of, on a loop whose time stands still, and sessions that go before their requests.
#include <ZRCore/ZRPlatformFake.h>
#include <gmock/gmock.h>

#include <semaphore>

#include "HTTPTestServer.h"
#include "ManualLoop.h"
#include "http/CurlSession.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Server = HTTPTestServer;

/// A session of its own on a loop whose time stands still.
class HttpSessionInSilence : public testing::Test {
 protected:
  std::shared_ptr<NSURLSessionDataTask> resumed(const std::string& path, std::function<void()> whenDone = nullptr) {
    auto task = session->dataTaskWithRequest(
        {.URL = NSURL::URLWithString(server.url(path)), .timeoutSeconds = 30.0},
        [this, whenDone = std::move(whenDone)](const auto&, const auto&, const auto& error) {
          codes.push_back(error ? error->code : 0);
          if (whenDone) whenDone();
        });
    task->resume();
    return task;
  }

  std::shared_ptr<ZRFakeClock> clock = std::make_shared<ZRFakeClock>();
  std::shared_ptr<ManualLoop> loop = std::make_shared<ManualLoop>(clock);
  std::shared_ptr<CurlSession> session =
      std::make_shared<CurlSession>(loop, clock, TransferOptions{std::uint64_t{1} << 20});
  std::vector<long> codes;
  std::counting_semaphore<> bytes{0};  ///< that the server may send
  HTTPTestServer server;               // the last: its threads end before what they use
};

TEST_F(HttpSessionInSilence, TimeIsUpAfterSilenceAndNotAfterAWhile) {
  server.on("/drip", [this](const Server::Request&, Server::Connection& connection) {
    bytes.acquire();
    connection.send("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n");
    for (int i = 0; i < 2; ++i) {
      bytes.acquire();
      connection.send("x");
    }
    connection.waitForClient();
  });
  resumed("/drip");
  ASSERT_TRUE(loop->runUntil([&] { return server.requests().size() == 1; }));
  for (int i = 0; i < 3; ++i) {
    loop->advance(20.0);
    const int before = loop->readiness;
    bytes.release();
    ASSERT_TRUE(loop->runUntil([&] { return loop->readiness > before; }));
  }
  loop->advance(29.9);
  EXPECT_THAT(codes, IsEmpty());
  loop->advance(0.2);
  EXPECT_THAT(codes, ElementsAre(NSURLErrorTimedOut));
  EXPECT_LE(loop->longestWait, 600.0) << "libcurl asks for milliseconds";
}

TEST_F(HttpSessionInSilence, ARequestThatDripsEndsWithItsWholeTime) {
  session = std::make_shared<CurlSession>(loop, clock, TransferOptions{.longestRequestSeconds = 50.0});
  server.on("/drip", [this](const Server::Request&, Server::Connection& connection) {
    while (bytes.acquire(), connection.send("HTTP/1.1 100 Continue\r\n\r\n")) {
    }
  });
  resumed("/drip");
  ASSERT_TRUE(loop->runUntil([&] { return server.requests().size() == 1; }));
  for (int i = 0; i < 2; ++i) {
    loop->advance(20.0);
    const int before = loop->readiness;
    bytes.release();
    ASSERT_TRUE(loop->runUntil([&] { return loop->readiness > before; }));
  }
  loop->advance(9.9);
  EXPECT_THAT(codes, IsEmpty());
  loop->advance(0.2);
  EXPECT_THAT(codes, ElementsAre(NSURLErrorTimedOut));
  bytes.release(2);
}

TEST_F(HttpSessionInSilence, WaitingForAConnectionIsNoSilence) {
  session = std::make_shared<CurlSession>(loop, clock, TransferOptions{.mostConnectionsPerHost = 1});
  server.on("/silent", Server::staySilent);
  server.on("/", Server::answering(200, "ok"));
  resumed("/silent");
  ASSERT_TRUE(loop->runUntil([&] { return server.requests().size() == 1; }));
  resumed("/");
  loop->advance(29.9);
  EXPECT_THAT(codes, IsEmpty());
  loop->advance(0.2);
  ASSERT_TRUE(loop->runUntil([&] { return codes.size() == 2; }));
  EXPECT_THAT(codes, ElementsAre(NSURLErrorTimedOut, 0));
}

TEST_F(HttpSessionInSilence, AClockThatIsSetMeanwhileEndsNothing) {
  server.on("/silent", Server::staySilent);
  resumed("/silent");
  ASSERT_TRUE(loop->runUntil([&] { return server.requests().size() == 1; }));
  clock->advance(1.5e9);  // a receiver's first fix
  loop->advance(30.1);
  clock->advance(-3600.0);
  loop->advance(30.1);
  EXPECT_THAT(codes, IsEmpty());
  loop->advance(30.1);
  EXPECT_THAT(codes, ElementsAre(NSURLErrorTimedOut));
}

TEST_F(HttpSessionInSilence, ASessionThatIsReleasedByACallbackCancelsTheRest) {
  server.on("/silent", Server::staySilent);
  server.on("/", Server::answering(200, "ok"));
  const auto late = session->dataTaskWithRequest(
      {}, [&](const auto&, const auto&, const auto& error) { codes.push_back(error->code); });
  for (int i = 0; i < 3; ++i) resumed("/silent");
  resumed("/", [&] { session.reset(); });
  ASSERT_TRUE(loop->runUntil([&] { return codes.size() == 4; }));
  late->resume();
  loop->advance(0.0);
  EXPECT_THAT(codes,
              ElementsAre(0, NSURLErrorCancelled, NSURLErrorCancelled, NSURLErrorCancelled, NSURLErrorCancelled));
  EXPECT_EQ(loop.use_count(), 1);
}

TEST_F(HttpSessionInSilence, ATaskOutlivesSessionAndLoop) {
  server.on("/silent", Server::staySilent);
  const auto held = std::make_shared<int>();
  const auto running = resumed("/silent", [held] {});
  ASSERT_TRUE(loop->runUntil([&] { return server.requests().size() == 1; }));
  const auto waiting = resumed("/silent");
  session.reset();
  loop.reset();
  running->cancel();
  waiting->cancel();
  EXPECT_THAT(codes, IsEmpty()) << "nobody is left to tell";
}

}  // namespace
