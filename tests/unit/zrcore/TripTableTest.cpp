// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zrcore/view/LiveTable.h>
#include <zrcore/view/TripTable.h>

#include <limits>
#include <set>
#include <sstream>

namespace {

using testing::AllOf;
using testing::HasSubstr;

trip::TripRow rowOf(std::uint64_t index) {
  trip::TripRow row;
  row.index = index;
  row.secondsSince1970 = 1778319000.0 + static_cast<double>(index);
  row.coordinate = {-46.80715, -120.42564};
  row.accuracyMeters = 3.9;
  row.courseDegrees = 264.2;
  row.speedMetersPerSecond = 10.0;
  row.smoothSpeedMetersPerSecond = 5.0;
  return row;
}

TEST(TripTable, NoLineIsWiderThanTheTerminalAndTheCursorKeepsALineOfItsOwn) {
  TripTable table;
  table.setHeading(std::string(50, 'h'));
  for (std::uint64_t i = 0; i < 1000; ++i) table.row(rowOf(i));
  trip::TripRow extreme = rowOf(1000);
  extreme.secondsSince1970 = 1e18;
  extreme.accuracyMeters = std::numeric_limits<double>::max();
  table.row(extreme);
  table.setProgress(0.5);
  for (const int columns : {1, 10, 40, 79, 80, 300}) {
    for (const int rows : {4, 24, 1000}) {
      SCOPED_TRACE(testing::Message() << columns << "x" << rows);
      const auto lines = table.lines({.columns = columns, .rows = rows, .color = false, .unicode = false});
      EXPECT_LT(lines.size(), static_cast<std::size_t>(rows));
      for (const auto& line : lines) EXPECT_LE(line.size(), static_cast<std::size_t>(columns)) << line;
    }
  }
}

TEST(TripTable, ShowsTheNewestRowsThatFitWithRawAndSmoothedValues) {
  TripTable table;
  for (std::uint64_t i = 0; i < 10; ++i) table.row(rowOf(i));
  trip::TripRow jump = rowOf(10);
  jump.jump = jump.stable = true;
  table.row(jump);
  table.fault();
  table.setProgress(0.425);
  table.setHeading("filter: measured");
  auto lines = table.lines({.columns = 80, .rows = 9, .color = false, .unicode = false});
  ASSERT_EQ(lines.size(), 8u);
  EXPECT_EQ(lines[0], " filter: measured");
  lines.erase(lines.begin());
  EXPECT_THAT(lines[0], AllOf(HasSubstr("UTC"), HasSubstr("latitude"), HasSubstr("stable")));
  EXPECT_THAT(lines[1], HasSubstr("09:30:06"));
  EXPECT_THAT(lines[5], testing::MatchesRegex(" 09:30:10 +-46.80715 +-120.42564 +3.9 +264.2 +0.0 +36.0 +18.0 +J +yes"));
  EXPECT_THAT(lines[6], AllOf(HasSubstr("=."), HasSubstr(" 42 %"), HasSubstr("11 fixes, 1 fault")));
}

TEST(TripTable, NamesEachColumnByItselfAndThoseThatDoNotFit) {
  const auto title = TripTable().lines({.columns = 80, .rows = 8, .color = false, .unicode = false})[0];
  std::istringstream words(title);
  std::set<std::string> names;
  for (std::string word; words >> word;) EXPECT_TRUE(names.insert(word).second) << word;
  EXPECT_EQ(TripTable::leftOut(79), "");
  EXPECT_EQ(TripTable::leftOut(60), "a terminal of 60 columns leaves out ~km/h, mark, stable; 79 show all");
}

/// A clock that is set by hand.
class HandClock final : public trip::Waiter {
 public:
  double nowSeconds() override { return now; }
  void wait(double) override {}
  double now = 100.0;
};

TEST(LiveTable, IsDrawnAtABoundedRate) {
  StandardOutput output;
  HandClock clock;
  int drawings = 0;
  LiveTable live(output, clock, [&drawings] {
    ++drawings;
    return Terminal{};
  });
  for (std::uint64_t i = 0; i < 1000; ++i) {
    live.changing().row(rowOf(i));
    live.refresh();
    clock.now += LiveTable::kSecondsBetweenDrawings / 100.0;
  }
  EXPECT_GE(drawings, 9);
  EXPECT_LE(drawings, 11);
}

}  // namespace
