// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <trip/replay/TurnDetector.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

/// "L", "R", "U" at the fixes where a turn is found, "." at the others.
std::string turns(const std::vector<double>& courses) {
  trip::TurnDetector detector;
  std::string found;
  for (const double course : courses) {
    const auto turn = detector.add(course);
    found += !turn ? '.' : *turn == trip::Turn::left ? 'L' : *turn == trip::Turn::right ? 'R' : 'U';
  }
  return found;
}

TEST(TurnDetector, FindsTurnsOfMoreThan40DegreesTheShorterWayRoundOnceEach) {
  const struct {
    const char* name;
    std::vector<double> courses;
    const char* found;
  } rows[] = {
      {"straight", {10, 10, 10, 10}, "...."},
      {"40 is none", {10, 50, 50}, "..."},
      {"at one fix", {10, 51, 51, 51}, ".R.."},
      {"left over north", {5, 320, 320}, ".L."},
      {"right over north", {350, 40}, ".R"},
      {"spread over fixes", {0, 15, 30, 45, 60, 75, 90}, "...R..R"},
      {"a long bend", {0, 5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55}, "............"},
      {"there and back", {0, 60, 0}, ".RL"},
      {"back where it came from", {0, 180}, ".U"},
      {"courses that wind up", {710, 780}, ".R"},
      {"no course", {0, NAN, 60}, "..R"},
  };
  for (const auto& row : rows) EXPECT_EQ(turns(row.courses), row.found) << row.name;
}

}  // namespace
