// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <trip/replay/Pacer.h>

#include <vector>

namespace trip {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;

class FakeWaiter final : public Waiter {
 public:
  double nowSeconds() override { return now; }
  void wait(double seconds) override {
    waits.push_back(seconds);
    now += seconds;
  }

  double now = 5000.0;
  std::vector<double> waits;
};

constexpr double kStart = 1.7e9;

TEST(Pacer, WaitsForTheRecordedTimeDividedByTheRate) {
  FakeWaiter waiter;
  Pacer pacer(10.0, waiter);
  for (const double second : {0.0, 1.0, 3.0}) pacer.waitUntilDue(kStart + second);
  EXPECT_THAT(waiter.waits, ElementsAre(DoubleNear(0.1, 1e-9), DoubleNear(0.2, 1e-9)));
}

TEST(Pacer, TimeSpentOnTheWorkIsNotWaitedForAgain) {
  FakeWaiter waiter;
  Pacer pacer(1.0, waiter);
  pacer.waitUntilDue(kStart);
  waiter.now += 0.75;
  pacer.waitUntilDue(kStart + 1.0);
  waiter.now += 2.5;  // late for the next two
  pacer.waitUntilDue(kStart + 2.0);
  pacer.waitUntilDue(kStart + 3.0);
  pacer.waitUntilDue(kStart + 4.0);
  EXPECT_THAT(waiter.waits, ElementsAre(DoubleNear(0.25, 1e-9), DoubleNear(0.5, 1e-9)));
}

TEST(Pacer, FixesWithoutATimeOrWithAnEarlierOneAreDueAtOnce) {
  FakeWaiter waiter;
  Pacer pacer(1.0, waiter);
  pacer.waitUntilDue(std::nullopt);
  pacer.waitUntilDue(kStart);
  pacer.waitUntilDue(std::nullopt);
  pacer.waitUntilDue(kStart - 3600.0);  // the next recording of a joined file
  EXPECT_THAT(waiter.waits, IsEmpty());
  pacer.waitUntilDue(kStart - 3599.0);
  EXPECT_THAT(waiter.waits, ElementsAre(DoubleNear(1.0, 1e-9)));
}

TEST(Pacer, ANightBetweenTwoDrivesIsCutShort) {
  FakeWaiter waiter;
  Pacer pacer(2.0, waiter);
  pacer.waitUntilDue(kStart);
  pacer.waitUntilDue(kStart + 36000.0);
  EXPECT_THAT(waiter.waits, ElementsAre(DoubleNear(policy::ReplayPace::kLongestPauseSeconds / 2.0, 1e-9)));
}

}  // namespace
}  // namespace trip
