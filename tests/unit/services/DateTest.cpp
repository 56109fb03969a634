// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSDate_ZR.h>
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "InformalInterval.h"
#include "WithFakePlatform.h"

using namespace NSDate_ZR;
using testing::Optional;

namespace {

TEST(ISODateTest, TheExactShapeOfARealSecondIsRead) {
  const std::pair<const char*, double> rows[] = {
      {"2016-03-01T12:00:00Z", 1456833600.0},   {"1970-01-01T00:00:00Z", 0.0},
      {"1969-12-31T23:59:59Z", -1.0},           {"2016-02-29T00:00:00Z", 1456704000.0},
      {"2000-02-29T00:00:00Z", 951782400.0},    {"1582-10-10T00:00:00Z", -12219724800.0},
      {"0001-01-01T00:00:00Z", -62135596800.0}, {"9999-12-31T23:59:59Z", 253402300799.0}};
  for (const auto& [text, seconds] : rows) EXPECT_THAT(dateWithISO8601String(text), Optional(NSDate{seconds})) << text;
}

TEST(ISODateTest, AnythingElseIsAbsent) {
  EXPECT_EQ(dateWithISO8601String(std::nullopt), std::nullopt);
  for (const char* text : {"",
                           "Z",
                           "2016-03-01T12:00:00.000Z",
                           "2016-03-01T12:00:00+01:00",
                           "2016-03-01T12:00:00",
                           "2016-03-01T12:00:00z",
                           "2016-03-01 12:00:00Z",
                           "2016/03/01T12:00:00Z",
                           "2016-03-01T12:00:00Zx",
                           " 2016-03-01T12:00:00Z",
                           "2016-3-001T12:00:00Z",
                           "2016-03-01T1:200:00Z",
                           "+016-03-01T12:00:00Z",
                           "2016-00-01T12:00:00Z",
                           "2016-13-01T12:00:00Z",
                           "2016-03-00T12:00:00Z",
                           "2016-04-31T12:00:00Z",
                           "2015-02-29T12:00:00Z",
                           "1900-02-29T12:00:00Z",
                           "0000-01-01T12:00:00Z",
                           "2016-03-01T24:00:00Z",
                           "2016-03-01T12:60:00Z",
                           "2016-12-31T23:59:60Z",
                           "2016-03-01T12:00:0 Z"}) {
    EXPECT_EQ(dateWithISO8601String(text), std::nullopt) << text;
  }
}

TEST(ShortDateTest, MonthDayAndTwoDigitsOfTheYear) {
  const std::pair<double, const char*> rows[] = {
      {0, "1/1/70"},          {-1, "12/31/69"},           {951782400, "2/29/00"},   {1456833599.999, "3/1/16"},
      {4102444800, "1/1/00"}, {-12219379200, "10/14/82"}, {-62135596800, "1/1/01"}, {-62135596801, "12/31/01"}};
  for (const auto& [seconds, text] : rows) EXPECT_THAT(monthDayYear({seconds}), Optional(std::string(text)));
}

TEST(ShortDateTest, WhatNoCalendarHoldsIsAbsent) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  for (const double seconds : {kInf, -kInf, std::nan(""), 1e13, -1e13, 1e300}) {
    EXPECT_EQ(monthDayYear({seconds}), std::nullopt) << seconds;
  }
}

TEST(NumberDateTest, WholeDecimalNumbersAreSecondsOrFractionsOfThem) {
  const std::pair<const char*, double> rows[] = {{"12", 12},
                                                 {"007", 7},
                                                 {"-5", -5},
                                                 {"-0", 0},
                                                 {"-3.5", -3.5},
                                                 {".5", .5},
                                                 {"-.5", -.5},
                                                 {"5.", 5},
                                                 {"1e3", 1000},
                                                 {"1E+3", 1000},
                                                 {"1E-3", .001},
                                                 {" \t12", 12},
                                                 {"1456833600.25", 1456833600.25},
                                                 {"12345678901234567890123", 12345678901234567890123.0},
                                                 {"1e-400", 0}};
  for (const auto& [text, seconds] : rows) {
    EXPECT_THAT(dateFromIntervalSince1970FromStringDividedBy(text), Optional(NSDate{seconds})) << text;
  }
  EXPECT_THAT(dateFromIntervalSince1970FromStringDividedBy("1456833600000", 1000), Optional(NSDate{1456833600.0}));
  EXPECT_THAT(dateFromIntervalSince1970FromStringDividedBy("1", 0),
              Optional(NSDate{std::numeric_limits<double>::infinity()}));
}

TEST(NumberDateTest, EverythingElseIsAbsent) {
  EXPECT_EQ(dateFromIntervalSince1970FromStringDividedBy(std::nullopt, 1000), std::nullopt);
  for (const char* text :
       {"",   " ",   "abc", "12abc", "1,000", "12,5",  "1.5.2",  "5%",  "0x10", "1_000",   "1 000", "1e",
        "1E", "1e+", "+5",  "- 5",   "--5",   "$5",    "(5)",    "∞",   "NaN",  "nan",     "inf",   "-inf",
        ".",  "-",   "-.",  "e5",    ".e5",   "1e400", "-1e400", "12 ", "\n12", "infinity"}) {
    EXPECT_EQ(dateFromIntervalSince1970FromStringDividedBy(text), std::nullopt) << text;
  }
}

class InformalTest : public WithFakePlatform {
 protected:
  std::string ago(double seconds) {
    return informalIntervalSinceDate({fake.clock->time.secondsSince1970 - seconds}).value_or("absent");
  }
};

TEST_F(InformalTest, TheFirstPhraseThatMatchesIsTaken) {
  constexpr double kMinute = 60, kHour = 3600, kDay = 86400;
  const std::pair<double, const char*> rows[] = {{-1, "absent"},
                                                 {0, "just now"},
                                                 {90, "just now"},
                                                 {2 * kMinute - 1, "just now"},
                                                 {2 * kMinute, "2 mins ago"},
                                                 {kHour - 1, "59 mins ago"},
                                                 {kHour, "1 hour ago"},
                                                 {119 * kMinute, "1 hour ago"},
                                                 {2 * kHour, "2 hours ago"},
                                                 {kDay - 1, "23 hours ago"},
                                                 {kDay, "24 hours ago"},
                                                 {30 * kHour, "30 hours ago"},
                                                 {2 * kDay - 1, "47 hours ago"},
                                                 {2 * kDay, "2 days ago"},
                                                 {29 * kDay, "29 days ago"},
                                                 {30 * kDay, "30 days ago"},
                                                 {31 * kDay, "31 days ago"},
                                                 {60 * kDay - 1, "59 days ago"},
                                                 {60 * kDay, "2 months ago"},
                                                 {365 * kDay, "12 months ago"}};
  for (const auto& [seconds, text] : rows) EXPECT_EQ(ago(seconds), text) << seconds;
}

TEST_F(InformalTest, NoIntervalIsTooLongAndNaNIsAbsent) {
  EXPECT_EQ(ago(1e300), "2147483647 months ago");
  EXPECT_EQ(ago(std::numeric_limits<double>::infinity()), "2147483647 months ago");
  EXPECT_EQ(ago(-std::numeric_limits<double>::infinity()), "absent");
  EXPECT_EQ(ago(std::nan("")), "absent");
}

TEST_F(InformalTest, ATranslationIsAFormatForTheNumberAndCanDoNoHarm) {
  fake.bundle->translations = {{"just now", "eben %d %s"}, {"1 hour ago", ""}};
  EXPECT_EQ(ago(0), "eben %d %s") << "no number to fill in";
  EXPECT_EQ(ago(3600), "");
  const std::pair<const char*, const char*> rows[] = {{"vor %d Minuten", "vor 5 Minuten"},
                                                      {"%@ min", "5 min"},
                                                      {"%1$d%1$@", "55"},
                                                      {"%i, %1$li, %l", "5, 5, %l"},
                                                      {"100%% %d", "100% 5"},
                                                      {"%%d", "%d"},
                                                      {"%s%n%9999999d", "%s%n%9999999d"},
                                                      {"%", "%"},
                                                      {"%1$", "%1$"},
                                                      {"%2$d", "%2$d"},
                                                      {"", ""}};
  for (const auto& [translation, text] : rows) {
    fake.bundle->translations["%d mins ago"] = translation;
    EXPECT_EQ(ago(300), text);
  }
  EXPECT_EQ(fillInNumber("%d", std::numeric_limits<int>::min()), "-2147483648");
}

}  // namespace
