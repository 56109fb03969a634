// SPDX-License-Identifier: Apache-2.0
#include "loop/GLibLoop.h"

#include <ZRCore/ZRLinuxPlatform.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

using testing::ElementsAre;

namespace {

/// A loop on a context of its own, iterated until something holds.
class GLibLoopTest : public testing::Test {
 protected:
  ~GLibLoopTest() override { g_main_context_unref(context); }

  void runUntil(const std::function<bool()>& holds) {
    while (!holds()) g_main_context_iteration(context, TRUE);
  }
  void runWhatIsReady() {
    while (g_main_context_iteration(context, FALSE)) {
    }
  }

  GMainContext* context = g_main_context_new();
  std::unique_ptr<GLibLoop> loop = std::make_unique<GLibLoop>(context);
};

TEST_F(GLibLoopTest, PostsOfManyThreadsWakeTheLoopAndEachThreadsOrderIsKept) {
  constexpr int kThreads = 4;
  constexpr int kPosts = 2000;
  std::vector<std::vector<int>> seen(kThreads);
  int count = 0;
  std::vector<std::thread> posters;
  for (int thread = 0; thread < kThreads; ++thread) {
    posters.emplace_back([&, thread] {
      for (int number = 0; number < kPosts; ++number) {
        loop->post([&, thread, number] {
          seen[static_cast<std::size_t>(thread)].push_back(number);
          ++count;
        });
      }
    });
  }
  runUntil([&] { return count == kThreads * kPosts; });
  for (auto& poster : posters) poster.join();
  for (const auto& numbers : seen) EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
}

TEST_F(GLibLoopTest, APostFromAPostWaitsForTheNextRound) {
  std::vector<int> order;
  loop->post([&] {
    loop->post([&] { order.push_back(3); });
    order.push_back(1);
  });
  loop->post([&] { order.push_back(2); });
  g_main_context_iteration(context, FALSE);
  EXPECT_THAT(order, ElementsAre(1, 2));
  runWhatIsReady();
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST_F(GLibLoopTest, WhatACallbackThrowsComesOutOfTheRunAndHarmsNothingElse) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ASSERT_EQ(write(ends[1], "x", 1), 1);
  const std::function<void()> fail = [] { throw std::runtime_error("no"); };
  std::unique_ptr<Loop::Wait> wait;
  bool isReached = false;
  const std::function<void()> ways[] = {
      [&] {
        loop->post(fail);
        loop->post([&] { isReached = true; });
      },
      [&] {
        wait = loop->after(0.0, fail);
        loop->post([&] { isReached = true; });
      },
      [&] {
        wait = loop->watch(ends[0], {.canRead = true}, [&](Loop::Readiness) {
          wait.reset();
          fail();
        });
        loop->post([&] { isReached = true; });
      },
      [&] {  // from inside a run of the loop that a callback has begun
        loop->post([&] {
          const auto inner = loop->after(0.0, fail);
          ZRRunLinuxLoopUntil([] { return false; }, context);
        });
        isReached = true;
      },
  };
  for (const auto& way : ways) {
    isReached = false;
    way();
    EXPECT_THROW(ZRRunLinuxLoopFor(
                     20.0, [] { return false; }, context),
                 std::runtime_error);
    EXPECT_TRUE(ZRRunLinuxLoopFor(
        20.0, [&] { return isReached; }, context));
  }
  close(ends[0]);
  close(ends[1]);
}

TEST_F(GLibLoopTest, AWaitEndsWithItsObjectAlsoInsideItsOwnCallback) {
  int pipeEnds[2];
  ASSERT_EQ(pipe(pipeEnds), 0);
  ASSERT_EQ(write(pipeEnds[1], "x", 1), 1);  // never read: readable for good
  int calls = 0;
  std::unique_ptr<Loop::Wait> readable;
  const auto witness = std::make_shared<int>();
  readable = loop->watch(pipeEnds[0], {.canRead = true}, [&, witness](Loop::Readiness readiness) {
    EXPECT_TRUE(readiness.canRead);
    if (++calls == 2) readable.reset();
  });
  int fired = 0;
  auto kept = loop->after(0.0, [&] { ++fired; });
  loop->after(0.0, [&] { ADD_FAILURE() << "waited for by nobody"; }).reset();
  runWhatIsReady();
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(fired, 1) << "a timer fires once";
  EXPECT_EQ(witness.use_count(), 1) << "the callback is released with the waiting";
  close(pipeEnds[0]);
  close(pipeEnds[1]);
}

TEST_F(GLibLoopTest, AHangUpIsReportedUnasked) {
  int pipeEnds[2];
  ASSERT_EQ(pipe(pipeEnds), 0);
  bool failed = false;
  const auto wait = loop->watch(pipeEnds[0], {}, [&](Loop::Readiness readiness) { failed = readiness.hasFailed; });
  close(pipeEnds[1]);
  runUntil([&] { return failed; });
  close(pipeEnds[0]);
}

TEST_F(GLibLoopTest, TheLoopMayBeReleasedByAPostAndDropsTheRest) {
  const auto witness = std::make_shared<int>();
  loop->post([&] { loop.reset(); });
  runWhatIsReady();
  EXPECT_EQ(loop, nullptr);
  loop = std::make_unique<GLibLoop>(context);
  loop->post([witness] {});
  loop.reset();
  EXPECT_EQ(witness.use_count(), 1);
}

}  // namespace
