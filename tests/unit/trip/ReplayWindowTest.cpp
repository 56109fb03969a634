// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <trip/replay/TimeWindow.h>

#include <cmath>

namespace trip {
namespace {

constexpr double kDayStart = 20000.0 * 86400.0;
constexpr double kRecordingStart = kDayStart + 9.5 * 3600.0;  // 09:30:00

TEST(TimeBound, IsReadInThreeWaysAndNothingElse) {
  const struct {
    const char* text;
    TimeBound::Kind kind;
    double seconds;
  } readable[] = {
      {"2026-05-09T09:30:00Z", TimeBound::Kind::instant, 1778319000.0},
      {"2026-05-09T11:30:00.5+02:00", TimeBound::Kind::instant, 1778319000.5},
      {"09:30", TimeBound::Kind::timeOfDay, 34200.0},
      {"09:30:15", TimeBound::Kind::timeOfDay, 34215.0},
      {"+90", TimeBound::Kind::sinceStart, 90.0},
      {"+0.5", TimeBound::Kind::sinceStart, 0.5},
  };
  for (const auto& row : readable) {
    SCOPED_TRACE(row.text);
    const auto bound = parseTimeBound(row.text);
    ASSERT_TRUE(bound);
    EXPECT_EQ(bound->kind, row.kind);
    EXPECT_DOUBLE_EQ(bound->seconds, row.seconds);
  }
  for (const char* text : {"", "+", "90", "-90", "+-90", "+1s", "+nan", "+inf", "25:00", "noon", "09:30 o'clock"}) {
    SCOPED_TRACE(text);
    EXPECT_FALSE(parseTimeBound(text));
  }
}

TEST(TimeWindow, BothEndsBelongToIt) {
  TimeWindow window(parseTimeBound("09:30:10"), parseTimeBound("+20"));
  EXPECT_FALSE(window.contains(kRecordingStart));  // the recording's first time settles both bounds
  EXPECT_FALSE(window.contains(kRecordingStart + 9.9));
  EXPECT_TRUE(window.contains(kRecordingStart + 10.0));
  EXPECT_TRUE(window.contains(kRecordingStart + 20.0));
  EXPECT_FALSE(window.contains(kRecordingStart + 20.1));
  EXPECT_TRUE(window.contains(kRecordingStart + 15.0));  // time went back into it
}

TEST(TimeWindow, AFixWithoutATimeGoesWithTheOneBeforeAndTheFirstComesBeforeEveryBeginning) {
  EXPECT_TRUE(TimeWindow().contains(std::nullopt));
  EXPECT_TRUE(TimeWindow(std::nullopt, parseTimeBound("+5")).contains(std::nullopt));
  EXPECT_FALSE(TimeWindow(parseTimeBound("+0"), std::nullopt).contains(std::nullopt));
  TimeWindow window(parseTimeBound("+1"), parseTimeBound("+2"));
  for (const auto& [second, isInside] : {std::pair(100.0, false), {101.0, true}, {103.0, false}}) {
    EXPECT_EQ(window.contains(second), isInside);
    EXPECT_EQ(window.contains(std::nullopt), isInside);
  }
}

TEST(TimeWindow, IsKnownToBeReversedOnceItsBoundsAreSettled) {
  TimeWindow window(parseTimeBound("+20"), parseTimeBound("09:30:10"));
  EXPECT_FALSE(window.isReversed());
  window.contains(kRecordingStart);
  EXPECT_TRUE(window.isReversed());
  EXPECT_TRUE(TimeWindow(parseTimeBound("2026-05-09T09:30:00Z"), parseTimeBound("2026-05-08T09:30:00Z")).isReversed());
}

}  // namespace
}  // namespace trip
