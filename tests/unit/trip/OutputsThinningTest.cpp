// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <trip/drawing/LineSimplifier.h>
#include <trip/drawing/MarkThinner.h>
#include <trip/drawing/SeriesThinner.h>
#include <trip/drawing/TripPicture.h>

#include <cmath>
#include <random>

#include "OutputsSupport.h"

namespace trip {
namespace {

using testing::Le;
using testing::SizeIs;

using Line = std::vector<ZRMapPoint>;

double distanceFromStrokes(ZRMapPoint point, const std::vector<StrokePoint>& line) {
  double least = INFINITY;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const ZRMapPoint from = line[line[i].startsStroke ? i : i - 1].at;
    least = std::min(least, distanceFromStretch(point, from, line[i].at));
  }
  return least;
}

std::map<std::string, Line> linesOfAllKinds() {
  std::map<std::string, Line> lines;
  std::mt19937 random(1);
  ZRMapPoint walker{0.0, 0.0};
  for (int i = 0; i < 4000; ++i) {
    const double t = i;
    walker.x += static_cast<double>(random() % 201) - 100.0;
    walker.y += static_cast<double>(random() % 201) - 100.0;
    lines["random walk"].push_back(walker);
    lines["straight"].push_back({t, 2 * t});
    lines["trembling"].push_back({t, static_cast<double>(random() % 61) / 100.0});  // about as much as the tolerance
    lines["in one place"].push_back({5.0, 5.0});
    lines["zigzag"].push_back({t, i % 2 * 1000.0});
    lines["there and back"].push_back({std::fabs(2000.0 - t), 0.0});
    lines["widening spiral"].push_back({t * std::cos(t * 0.1), t * std::sin(t * 0.1)});
    lines["circling"].push_back({100.0 * std::cos(t * 0.1), 100.0 * std::sin(t * 0.1)});
    lines["bursting"].push_back({std::pow(1.005, i), std::pow(1.004, i)});
  }
  return lines;
}

TEST(LineSimplifier, KeepsEveryDroppedPointWithinItsErrorBoundAndBothEnds) {
  for (const auto& [name, line] : linesOfAllKinds()) {
    SCOPED_TRACE(name);
    LineSimplifier simplifier(64, 0.25);
    for (std::size_t i = 0; i < line.size(); ++i) {
      simplifier.add(line[i], i % 50 == 0 || i / 1000 == 1);  // long strokes, then nothing but gaps, and strokes again
      ASSERT_THAT(simplifier.points(), SizeIs(Le(64u)));
      ASSERT_EQ(simplifier.points().back().at.x, line[i].x);
      if (i % 400 != 399) continue;  // while the bound is still tight, and later
      double worst = 0.0;
      for (std::size_t j = 0; j <= i; ++j) worst = std::max(worst, distanceFromStrokes(line[j], simplifier.points()));
      ASSERT_LE(worst, simplifier.errorBound() * (1 + 1e-12) + 1e-9);
    }
    EXPECT_EQ(simplifier.points().front().at.x, line.front().x);
    EXPECT_EQ(simplifier.points().front().at.y, line.front().y);
  }
}

TEST(LineSimplifier, LosesNothingWhileThereIsRoomAndLittleOfASimpleLine) {
  const auto lines = linesOfAllKinds();
  LineSimplifier roomy(4000, 0.25);
  for (const ZRMapPoint& point : lines.at("random walk")) roomy.add(point);
  EXPECT_THAT(roomy.points(), SizeIs(4000));
  EXPECT_EQ(roomy.errorBound(), 0.0);

  // However often it was simplified, the tolerance only grows where the shape needs it.
  for (const char* name : {"straight", "in one place", "there and back"}) {
    LineSimplifier tight(128, 0.25);
    for (const ZRMapPoint& point : lines.at(name)) tight.add(point);
    EXPECT_EQ(tight.errorBound(), 0.25) << name;
  }
}

TEST(LineSimplifier, KeepsBothEndsOfAGapThatCanBeSeen) {
  LineSimplifier simplifier(64, 0.25);
  for (int i = 0; i < 10'000; ++i) simplifier.add({i + (i < 5000 ? 0.0 : 9e5), 0.0}, i == 5000);
  const auto& points = simplifier.points();
  const auto gap = std::find_if(points.begin() + 1, points.end(), [](const auto& point) { return point.startsStroke; });
  ASSERT_NE(gap, points.end());
  EXPECT_EQ((gap - 1)->at.x, 4999.0);
  EXPECT_EQ(gap->at.x, 905'000.0);
}

TEST(SeriesThinner, KeepsTheExtremesAndTheOrder) {
  std::mt19937 random(2);
  for (const int length : {1, 2, 15, 16, 17, 33, 1000, 12345}) {
    SCOPED_TRACE(length);
    SeriesThinner series(16, SeriesThinner::Keep::extremes);
    double least = INFINITY, greatest = -INFINITY;
    for (int i = 0; i < length; ++i) {
      const double value = static_cast<double>(random());
      series.add(static_cast<std::uint64_t>(i), std::nullopt, value);
      least = std::min(least, value);
      greatest = std::max(greatest, value);
    }
    ASSERT_LE(series.bucketCount(), 16u);
    const auto points = series.points();
    const auto byValue = [](const SeriesPoint& a, const SeriesPoint& b) { return a.value < b.value; };
    EXPECT_EQ(std::min_element(points.begin(), points.end(), byValue)->value, least);
    EXPECT_EQ(std::max_element(points.begin(), points.end(), byValue)->value, greatest);
    for (std::size_t i = 1; i < points.size(); ++i) ASSERT_LT(points[i - 1].index, points[i].index);
    if (length <= 16) {
      EXPECT_THAT(points, SizeIs(length));
    }
  }
}

TEST(SeriesThinner, OfNewestValuesEndsWithTheLastOneAndInventsNone) {
  SeriesThinner series(8, SeriesThinner::Keep::newest);
  for (std::uint64_t i = 0; i < 1000; ++i) {
    series.add(i, static_cast<double>(i) + 0.5, static_cast<double>(i * 7 % 360));
  }
  const auto points = series.points();
  ASSERT_THAT(points, SizeIs(testing::AllOf(Le(8u), testing::Ge(4u))));
  EXPECT_EQ(points.back().index, 999u);
  for (const SeriesPoint& point : points) {
    EXPECT_EQ(point.value, static_cast<double>(point.index * 7 % 360));
    EXPECT_EQ(point.seconds, static_cast<double>(point.index) + 0.5);
  }
}

TEST(MarkThinner, KeepsAnEvenSelectionAndTheFullCount) {
  MarkThinner thinner(10);
  for (int i = 0; i < 1001; ++i) thinner.add({static_cast<double>(i), 0.0});
  const auto& marks = thinner.marks();
  EXPECT_EQ(thinner.count(), 1001u);
  ASSERT_THAT(marks, SizeIs(testing::AllOf(Le(10u), testing::Ge(5u))));
  EXPECT_EQ(marks.front().x, 0.0);
  for (std::size_t i = 1; i < marks.size(); ++i) EXPECT_EQ(marks[i].x - marks[i - 1].x, marks[1].x);
}

TEST(TripPicture, KeepsATrackConnectedAcrossTheAntimeridianThereAndBack) {
  TripPicture picture;
  std::uint64_t index = 0;
  for (const double longitude : {179.9, 180.0, -179.9, -179.8, -179.9, 179.9, 179.8, -179.9}) {
    picture.add(rowAt(10.0, longitude, index++));
  }
  const double degree = ZRMapSizeWorld.width / 360.0;
  EXPECT_NEAR(picture.envelope().maxX - picture.envelope().minX, 0.4 * degree, 1e-3);
  const auto& track = picture.rawTrack().points();
  for (std::size_t i = 1; i < track.size(); ++i) EXPECT_LT(std::fabs(track[i].at.x - track[i - 1].at.x), 0.4 * degree);
}

/// Where the strokes of a track begin, counted in the points that it keeps.
std::vector<std::size_t> strokeStarts(const std::vector<StrokePoint>& points) {
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (points[i].startsStroke) starts.push_back(i);
  }
  return starts;
}

std::vector<std::uint64_t> strokeStarts(const std::vector<SeriesPoint>& points) {
  std::vector<std::uint64_t> starts;
  for (const SeriesPoint& point : points) {
    if (point.startsStroke) starts.push_back(point.index);
  }
  return starts;
}

TEST(TripPicture, DrawsNoLineOverWhatIsMissing) {
  TripPicture picture;
  for (std::uint64_t i = 0; i < 40; ++i) {
    TripRow row = rowAt(10.0, 20.0, i);
    if (i >= 30) *row.secondsSince1970 += 45.0;   // a tunnel
    if (i >= 35) *row.secondsSince1970 -= 900.0;  // another trip
    row.significant = i > 3 && i != 30;
    if (i == 10 || i == 11) row.speedMetersPerSecond.reset();
    if (i == 20) row.smoothSpeedMetersPerSecond = -1.0;  // unknown
    picture.add(row);
  }
  EXPECT_THAT(strokeStarts(picture.rawCourse().points()), testing::ElementsAre(0, 30, 35));
  EXPECT_THAT(strokeStarts(picture.rawSpeed().points()), testing::ElementsAre(0, 12, 30, 35));
  EXPECT_THAT(strokeStarts(picture.smoothedSpeed().points()), testing::ElementsAre(0, 21, 30, 35));
  EXPECT_THAT(strokeStarts(picture.rawTrack().points()), testing::ElementsAre(0, 30, 35));
  EXPECT_THAT(strokeStarts(picture.smoothedTrack().points()), testing::ElementsAre(0, 27, 31));  // without 1, 2, 3, 30
  EXPECT_EQ(picture.smoothedCourse().points().front().index, 4u) << "before there was movement, it is no course";
}

TEST(TripPicture, TakesTheSlowRhythmOfALoggerForNoSilence) {
  TripPicture picture;
  for (std::uint64_t i = 0; i < 20; ++i) {
    TripRow row = rowAt(10.0, 20.0, i);
    row.secondsSince1970 = 1.7e9 + 300.0 * static_cast<double>(i);
    picture.add(row);
  }
  EXPECT_THAT(strokeStarts(picture.rawCourse().points()), testing::ElementsAre(0));
}

}  // namespace
}  // namespace trip
