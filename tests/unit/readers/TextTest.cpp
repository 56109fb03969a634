// SPDX-License-Identifier: Apache-2.0
#include "Text.h"

#include <gtest/gtest.h>

#include "TimeText.h"

namespace readers {
namespace {

TEST(ParseNumber, TakesWholeDecimalNumbersOnly) {
  const std::pair<const char*, std::optional<double>> rows[] = {
      {"45.27", 45.27}, {"-0", -0.0},     {" +3.5\t", 3.5}, {"1e3", 1000.0}, {"", {}},    {"+", {}},
      {"1,5", {}},      {"12 m", {}},     {"+-1", {}},      {"0x10", {}},    {"nan", {}}, {"-inf", {}},
      {"1e999", {}},    {"1.7.2022", {}}, {"\xd9\xa3", {}}, {"--1", {}},
  };
  for (const auto& [text, expected] : rows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(parseNumber(text), expected);
  }
}

TEST(SecondsFromIso8601, CountsFrom1970AndRefusesWhatIsNoTime) {
  const std::pair<const char*, std::optional<double>> rows[] = {
      {"1970-01-01T00:00:00Z", 0.0},
      {"2020-12-18T06:15:50Z", 1608272150.0},
      {"2009-12-09T15:25:05.500Z", 1260372305.5},
      {"2020-02-29T23:59:60Z", 1583020800.0},  // a leap second is the next minute's first
      {"1969-12-31T23:59:59.25Z", -0.75},
      {"2020-12-18T06:15:50+05:30", 1608252350.0},
      {"2020-12-18T06:15:50-0800", 1608300950.0},
      {"2020-12-18 06:15+00", 1608272100.0},
      {" 2020-12-18T06:15:50 ", 1608272150.0},  // no zone: UTC
      {"2021-02-29T00:00:00Z", {}},
      {"2020-13-01T00:00:00Z", {}},
      {"2020-00-10T00:00:00Z", {}},
      {"2020-12-18T24:00:00Z", {}},
      {"2020-12-18T06:60:00Z", {}},
      {"2020-12-18T06:15:61Z", {}},
      {"2020-12-18T06:15:5Z", {}},
      {"2020-12-18T06:15:50.Z", {}},
      {"2020-12-18T06:15:50+", {}},
      {"2020-12-18T06:15:50+25:00", {}},
      {"2020-12-18T06:15:50ZZ", {}},
      {"20-12-18T06:15:50Z", {}},
      {"-020-12-18T06:15:50Z", {}},
      {"2020-12-18", {}},
      {"", {}},
  };
  for (const auto& [text, expected] : rows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(secondsFromIso8601(text), expected);
  }
}

TEST(InQuotes, ShowsForeignTextShortAndHarmless) {
  EXPECT_EQ(inQuotes("a\x1b[2J\xff"), "\"a\\x1B[2J\\xFF\"");
  EXPECT_LT(inQuotes(std::string(5000, 'x')).size(), 60u);
}

}  // namespace
}  // namespace readers
