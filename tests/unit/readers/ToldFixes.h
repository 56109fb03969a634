// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_UNIT_READERS_TOLDFIXES_H
#define ZRCORE_TESTS_UNIT_READERS_TOLDFIXES_H

#include <cstdio>
#include <ctime>
#include <ostream>
#include <string>

#include "ReadInput.h"

/// A fix as the tables of these tests write it: day and time (UTC) or "-", place, and what else is told, each behind a
/// letter: altitude, horizontal accuracy, dilution, knots, course, satellites; ~ for an estimate.
inline std::string textOf(const readers::SourceFix& fix) {
  char text[80] = "-";
  if (fix.secondsSince1970) {
    const auto seconds = static_cast<std::time_t>(*fix.secondsSince1970);
    std::strftime(text, sizeof text, "%d %T", std::gmtime(&seconds));
  }
  std::string told = text;
  const auto add = [&](const char* letter, std::optional<double> value) {
    if (!value) return;
    std::snprintf(text, sizeof text, " %s%.9g", letter, *value);
    told += text;
  };
  constexpr double kKnotsPerMeterPerSecond = 3600.0 / 1852.0;
  add("", fix.coordinate.latitude);
  add("", fix.coordinate.longitude);
  add("a", fix.altitudeMeters);
  add("h", fix.accuracyMeters);
  add("d", fix.hdop);
  if (fix.speedMetersPerSecond) add("k", *fix.speedMetersPerSecond * kKnotsPerMeterPerSecond);
  add("c", fix.courseDegrees);
  if (fix.satellites) add("s", *fix.satellites);
  return fix.isEstimated ? told + " ~" : told;
}

/// Bytes in, fixes out.
struct ReadingRow {
  const char* name;
  std::string input;
  std::vector<std::string> fixes;
  std::size_t faults = 0, warnings = 0;
};

inline void PrintTo(const ReadingRow& row, std::ostream* out) { *out << row.name; }

inline void expectReading(const ReadingRow& row) {
  const auto format = readers::detectFormat(row.input);
  ASSERT_TRUE(format);
  const auto events = readInput(*format, row.input);
  std::vector<std::string> fixes;
  for (const auto& fix : events.fixes) fixes.push_back(textOf(fix));
  EXPECT_EQ(fixes, row.fixes);
  EXPECT_EQ(events.faults.size(), row.faults) << testing::PrintToString(events.log);
  EXPECT_EQ(events.warnings.size(), row.warnings) << testing::PrintToString(events.log);
}

/// A sentence with its checksum and without an end.
inline std::string sealed(const std::string& body) {
  unsigned sum = 0;
  for (const char c : body) sum ^= static_cast<unsigned char>(c);
  char end[8];
  std::snprintf(end, sizeof end, "*%02X", sum);
  return "$" + body + end;
}

inline std::string sentence(const std::string& body) { return sealed(body) + "\r\n"; }

#endif
