// SPDX-License-Identifier: Apache-2.0
#include <demo/Playback.h>
#include <demo/Timeline.h>
#include <gtest/gtest.h>

#include <limits>

#include "HandClock.h"

namespace demo {
namespace {

class PlaybackTest : public testing::Test {
 protected:
  PlaybackTest() { playback.load(100.0); }
  /// Lets time pass in steps as short as frames.
  void pass(double seconds) {
    for (int i = 0; i < 10; ++i) {
      clock.seconds += seconds / 10;
      playback.step();
    }
  }

  HandClock clock;
  Playback playback{clock};
};

TEST_F(PlaybackTest, GoesByTheClockTimesTheRateAndRestsWhenPaused) {
  pass(5.0);
  EXPECT_EQ(playback.positionSeconds(), 0.0);
  playback.play();
  pass(2.0);
  EXPECT_NEAR(playback.positionSeconds(), 2.0, 1e-6);
  clock.seconds += 0.5;
  playback.setRate(10.0);  // the half second before passed at the old rate
  pass(1.0);
  EXPECT_NEAR(playback.positionSeconds(), 12.5, 1e-5);
  clock.seconds += 0.1;
  playback.pause();  // and that tenth has been played
  pass(3.0);
  EXPECT_NEAR(playback.positionSeconds(), 13.5, 1e-5);
  EXPECT_FALSE(playback.isPlaying());
  playback.play();
  EXPECT_NEAR(playback.positionSeconds(), 13.5, 1e-5);
}

TEST_F(PlaybackTest, RestsAtTheEndAndStartsAnewFromThere) {
  playback.seek(99.5);
  playback.play();
  pass(1.0);
  EXPECT_EQ(playback.positionSeconds(), 100.0);
  EXPECT_FALSE(playback.isPlaying());
  playback.play();
  EXPECT_EQ(playback.positionSeconds(), 0.0);
  EXPECT_TRUE(playback.isPlaying());
  playback.load(5.0);
  EXPECT_FALSE(playback.isPlaying());
  EXPECT_EQ(playback.durationSeconds(), 5.0);
}

TEST_F(PlaybackTest, ClocksThatJumpAndWishesOutOfRangeMoveItNoFurtherThanSensible) {
  playback.play();
  clock.seconds += 3600.0;  // the machine slept
  playback.step();
  EXPECT_LE(playback.positionSeconds(), Playback::kLongestStepSeconds);
  const double before = playback.positionSeconds();
  clock.seconds -= 7200.0;  // somebody set the clock
  playback.step();
  EXPECT_EQ(playback.positionSeconds(), before);

  for (const double rate : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) playback.setRate(rate);
  EXPECT_EQ(playback.rate(), 1.0);
  playback.seek(-5.0);
  EXPECT_EQ(playback.positionSeconds(), 0.0);
  playback.seek(std::numeric_limits<double>::infinity());
  EXPECT_EQ(playback.positionSeconds(), 100.0);
  playback.load(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(playback.durationSeconds(), 0.0);
}

TEST(Timeline, CutsLongPausesAndBearsMissingAndBackwardTimes) {
  Timeline timeline;
  EXPECT_EQ(timeline.countDueAt(1e9), 0u);
  for (const auto& seconds : {std::optional(1000.0), std::optional(1002.0), std::optional<double>(),
                              std::optional(1003.0), std::optional(900.0), std::optional(9000.0)}) {
    timeline.add(seconds);
  }
  // due at 0, 2, 3, 4, 4 and 64 seconds
  const std::pair<double, std::size_t> expected[] = {{-1.0, 0}, {0.0, 1}, {1.9, 1},  {2.0, 2},
                                                     {3.5, 3},  {4.0, 5}, {63.9, 5}, {64.0, 6}};
  for (const auto& [seconds, count] : expected) EXPECT_EQ(timeline.countDueAt(seconds), count) << seconds;
  EXPECT_EQ(timeline.durationSeconds(), 64.0);
}

}  // namespace
}  // namespace demo
