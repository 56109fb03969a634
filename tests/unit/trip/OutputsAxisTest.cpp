// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <trip/Words.h>
#include <trip/drawing/Axis.h>
#include <trip/drawing/CourseFold.h>
#include <trip/drawing/Diagrams.h>

#include <cmath>
#include <limits>

namespace trip {
namespace {

using testing::ElementsAre;

std::vector<std::string> labels(const std::vector<Tick>& ticks) {
  std::vector<std::string> result;
  for (const Tick& tick : ticks) result.push_back(tick.label);
  return result;
}

TEST(RoundNumbers, EncloseTheValue) {
  const struct {
    double value, down, up;
  } rows[] = {{1.0, 1.0, 1.0},     {1.01, 1.0, 2.0},   {4.99, 2.0, 5.0}, {5.0, 5.0, 5.0},
              {730.0, 500.0, 1e3}, {0.03, 0.02, 0.05}, {9e6, 5e6, 1e7},  {1000.0, 1000.0, 1000.0}};
  for (const auto& row : rows) {
    EXPECT_DOUBLE_EQ(roundDown(row.value), row.down) << row.value;
    EXPECT_DOUBLE_EQ(roundUp(row.value), row.up) << row.value;
  }
}

TEST(TimeTicks, AreRoundClockTimesWithLabelsThatFitTheirSteps) {
  constexpr double kNoon = 1778328000.0;  // 2026-05-09T12:00:00Z
  EXPECT_THAT(labels(timeTicks(kNoon - 61, kNoon + 125, 4)), ElementsAre("11:59", "12:00", "12:01", "12:02"));
  EXPECT_THAT(labels(timeTicks(kNoon + 1, kNoon + 31, 3)), ElementsAre("12:00:10", "12:00:20", "12:00:30"));
  EXPECT_THAT(labels(timeTicks(kNoon, kNoon + 3 * 86400, 4)), ElementsAre("05-10", "05-11", "05-12"));
  EXPECT_THAT(timeTicks(kNoon, kNoon + 3e8, 5).front().label, testing::MatchesRegex("20..-..-.."));
}

TEST(TimeTicks, StayFewAndInsideWhateverTheSpan) {
  for (const double from : {0.0, -1e10, 1.7e9, 1e15, -1e300}) {
    for (const double span : {0.01, 1.0, 59.0, 3600.0, 1e5, 1e8, 1e12, 1e299}) {
      if (!(from + span > from)) continue;
      const auto ticks = timeTicks(from, from + span, 10);
      EXPECT_LE(ticks.size(), 11u);
      for (const Tick& tick : ticks) {
        EXPECT_GE(tick.value, from);
        EXPECT_LE(tick.value, from + span);
      }
    }
  }
}

TEST(DurationText, CarriesBetweenItsUnits) {
  const std::pair<double, const char*> rows[] = {{0.0, "0 s"},           {59.4, "59 s"},         {59.6, "1 min 00 s"},
                                                 {700.0, "11 min 40 s"}, {3599.7, "1 h 00 min"}, {7500.0, "2 h 05 min"},
                                                 {273600.0, "3 d 4 h"},  {-90.0, "-1 min 30 s"}};
  for (const auto& [seconds, text] : rows) EXPECT_EQ(durationText(seconds), text);
}

TEST(MeasuredLengthText, HasThreeDigitsAndNeverCutsWholeKilometres) {
  const std::pair<double, const char*> rows[] = {
      {0.0, "0 m"},        {0.42, "0.42 m"},      {9.994, "9.99 m"},     {9.996, "10.0 m"},   {99.96, "100 m"},
      {153.7, "154 m"},    {999.4, "999 m"},      {999.6, "1.00 km"},    {9126.0, "9.13 km"}, {10071.0, "10.1 km"},
      {99960.0, "100 km"}, {999600.0, "1000 km"}, {1234567.0, "1235 km"}};
  for (const auto& [meters, text] : rows) EXPECT_EQ(measuredLengthText(meters), text);
}

TEST(DegreeTicks, AreRoundNameTheirHemisphereAndGoOnAroundTheWorld) {
  EXPECT_THAT(labels(latitudeTicks(46.7961, 46.8137, 4)), ElementsAre("46.800° N", "46.805° N", "46.810° N"));
  EXPECT_THAT(labels(latitudeTicks(-0.25, 0.2, 5)), ElementsAre("0.2° S", "0.1° S", "0.0°", "0.1° N", "0.2° N"));
  EXPECT_THAT(labels(longitudeTicks(178.5, 181.2, 3)), ElementsAre("179° E", "180°", "179° W"));
  EXPECT_THAT(labels(longitudeTicks(-541.0, -538.9, 3)), ElementsAre("179° E", "180°", "179° W"));
  EXPECT_THAT(latitudeTicks(85.0, 85.0, 4), testing::IsEmpty());
  EXPECT_THAT(labels(longitudeTicks(110.0, 410.0, 6)),
              ElementsAre("150° E", "160° W", "110° W", "60° W", "10° W", "40° E"));
}

TEST(FoldCourses, LeadsOverNorthThroughTheEdgesOfTheDiagram) {
  const auto folded = foldCourses({{0.0, 350.0, true}, {3.0, 20.0, false}, {4.0, 340.0, false}});
  ASSERT_EQ(folded.size(), 7u);
  EXPECT_DOUBLE_EQ(folded[1].x, 1.0);  // a third of the way from 350 to 380
  EXPECT_EQ(folded[1].y, 360.0);
  EXPECT_EQ(folded[2].y, 0.0);
  EXPECT_TRUE(folded[2].startsStroke);
  EXPECT_DOUBLE_EQ(folded[4].x, 3.5);
  EXPECT_EQ(folded[4].y, 0.0);
  EXPECT_EQ(folded[5].y, 360.0);
}

TEST(FoldCourses, MarksNorthItselfAtOneEdgeOnly) {
  for (const auto& point : foldCourses({{0.0, 340.0, true}, {1.0, 0.0, false}, {2.0, 350.0, false}})) {
    EXPECT_GE(point.y, 340.0);
  }
}

TEST(FoldCourses, NeverDrawsAcrossTheDiagramAndForgetsNoCourse) {
  std::vector<DiagramPoint> courses;
  for (int i = 0; i < 2000; ++i) {
    courses.push_back({static_cast<double>(i), std::fmod(i * i * 37.7, 1100.0) - 400.0, i % 97 == 0});
  }
  courses.push_back({2000.0, -1e300, false});
  courses.push_back({2001.0, -1e-300, false});
  const auto folded = foldCourses(courses);
  std::size_t found = 0;
  for (std::size_t i = 0; i < folded.size(); ++i) {
    ASSERT_GE(folded[i].y, 0.0);
    ASSERT_LE(folded[i].y, 360.0);
    if (i == 0 || folded[i].startsStroke) continue;
    ASSERT_LE(std::fabs(folded[i].y - folded[i - 1].y), 180.0);
    ASSERT_GE(folded[i].x, folded[i - 1].x);
  }
  for (const DiagramPoint& point : folded) {
    if (found < courses.size() && point.x == courses[found].x) ++found;
  }
  EXPECT_EQ(found, courses.size());
}

TEST(SpeedAxis, ShowsAllOrdinarySpeedsAndIsNotStretchedByAFewJumps) {
  std::vector<double> drive(600, 50.0);
  drive[10] = 68.0;
  EXPECT_GE(speedAxisTop(drive, 0.0), 68.0);
  drive[20] = drive[30] = 255.0;
  EXPECT_GE(speedAxisTop(drive, 0.0), 50.0);
  EXPECT_LE(speedAxisTop(drive, 0.0), 80.0);
  EXPECT_GE(speedAxisTop(drive, 120.0), 120.0);  // smoothed speeds are never cut off
  EXPECT_EQ(speedAxisTop({}, 0.0), 10.0);
  EXPECT_EQ(speedAxisTop({0.0, 0.0}, 0.0), 10.0);
}

}  // namespace
}  // namespace trip
