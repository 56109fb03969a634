// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <readers/FixIntake.h>
#include <readers/LiveReader.h>

#include <string>
#include <vector>

namespace readers {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double kPresent = 1778317200.0;  // 2026-05-09 09:00
constexpr double kWeeks = 1024 * 7 * 86400.0;

/// A report of a second after kPresent.
std::string report(int second, const std::string& more) {
  return R"({"class":"TPV","mode":3,"time":"2026-05-09T09:00:0)" + std::to_string(second) +
         R"(Z","lat":52.5,"lon":13.4)" + more + "}\n";
}

const std::string kDerived = R"(,"alt":34,"eph":9,"epv":20,"track":90,"speed":93.281)";
const std::string kOwn = R"(,"speed":0.617)";

std::vector<double> speedsOf(const LiveEvents& events) {
  std::vector<double> speeds;
  for (const auto& fix : events.fixes) speeds.push_back(fix.speed);
  return speeds;
}

TEST(LiveReading, AnInstantIsToldAtTheLastOfAsManyReportsAsThoseBeforeHad) {
  LiveReader reader(Format::gpsdJson);
  const auto feed = [&](const std::string& bytes) { return speedsOf(reader.feed(bytes)); };
  // Unknown yet: it is told when the next one begins, or in a quiet moment, however much it says already.
  EXPECT_THAT(feed(report(0, kDerived)), IsEmpty());
  EXPECT_THAT(feed(report(0, kOwn)), IsEmpty());
  EXPECT_THAT(feed(report(1, kDerived)), ElementsAre(0.617));
  EXPECT_THAT(feed(report(1, kOwn)), IsEmpty());
  EXPECT_THAT(speedsOf(reader.tellHeld()), ElementsAre(0.617));
  EXPECT_THAT(feed(report(2, kDerived)), IsEmpty());
  EXPECT_THAT(feed(report(2, kOwn)), ElementsAre(0.617)) << "two before had two";
  // A third report comes too late this once, and is waited for from then on.
  EXPECT_THAT(feed(report(2, R"(,"speed":0.5)")), IsEmpty());
  EXPECT_THAT(feed(report(3, kDerived)), IsEmpty());
  EXPECT_THAT(feed(report(3, kOwn)), IsEmpty());
  EXPECT_THAT(feed(report(3, R"(,"speed":0.5)")), ElementsAre(0.5));
  // One that is missing is told by the next instant, and an instant of one report is told at once in the end.
  EXPECT_THAT(feed(report(4, kOwn)), IsEmpty());
  EXPECT_THAT(feed(report(5, kOwn)), ElementsAre(0.617));
  for (int second = 6; second < 9; ++second) feed(report(second, kOwn));
  EXPECT_THAT(feed(report(9, kOwn)), ElementsAre(0.617));
}

TEST(LiveReading, TheSentencesOfAReceiverRepeatThemselvesToo) {
  LiveReader reader(Format::nmea);
  for (int second = 0; second < 6; ++second) {
    const std::string time = ",12000" + std::to_string(second);
    const auto before = reader.feed("$GPGGA" + time + ",5230.0,N,01324.0,E,1,08,1.0,34.0,M,40.0,M,,\n").fixes;
    const auto at = reader.feed("$GPRMC" + time + ",A,5230.0,N,01324.0,E,10.0,90.0,090526,,\n").fixes;
    EXPECT_EQ(before.size(), second == 1 || second == 2 ? 1u : 0u);
    EXPECT_EQ(at.size(), second >= 2 ? 1u : 0u);
  }
}

TEST(LiveReading, WhatHasNoDateHasTheTimeAtWhichItCameAndInARecordingNone) {
  const std::string undated = "{\"class\":\"TPV\",\"mode\":3,\"lat\":52.6,\"lon\":13.4}\n";
  for (const bool isRecording : {false, true}) {
    LiveReader reader(Format::gpsdJson,
                      {.intake = {.now = [] { return NSDate{kPresent}; }}, .isRecording = isRecording});
    reader.feed(report(1, "") + undated);
    const auto fixes = reader.tellHeld().fixes;
    ASSERT_EQ(fixes.size(), 1u);
    EXPECT_EQ(fixes[0].timestamp, NSDate{isRecording ? 0.0 : kPresent});
  }
}

TEST(Intake, EstimatesAreLeftOutAndDatesRepairedOnRequestOnly) {
  const auto taken = [](FixIntake::Options options, double seconds, bool isEstimated) {
    options.now = [] { return NSDate{kPresent}; };
    SourceFix fix;
    fix.secondsSince1970 = seconds;
    fix.isEstimated = isEstimated;
    return FixIntake(options).takes(fix) ? *fix.secondsSince1970 : -1.0;
  };
  EXPECT_EQ(taken({}, kPresent - kWeeks, true), kPresent - kWeeks);
  EXPECT_EQ(taken({.leavesOutEstimates = true}, kPresent, true), -1.0);
  EXPECT_EQ(taken({.leavesOutEstimates = true}, kPresent, false), kPresent);
  const FixIntake::Options repairing{.repairsWeekRollover = true};
  EXPECT_EQ(taken(repairing, kPresent - kWeeks, false), kPresent);
  EXPECT_EQ(taken(repairing, kPresent - 2 * kWeeks + 60, false), kPresent + 60) << "a clock that is a little ahead";
  EXPECT_EQ(taken(repairing, kPresent - kWeeks + 2 * 86400, false), kPresent - kWeeks + 2 * 86400);
}

TEST(Intake, ALiveDateThatLiesMoreThanTenYearsBackIsToldOnce) {
  const std::string old = R"({"class":"TPV","mode":3,"time":"2006-09-23T09:00:00Z","lat":52.5,"lon":13.4})"
                          "\n";
  for (const bool isRepaired : {false, true}) {
    LiveReader reader(Format::gpsdJson,
                      {.intake = {.repairsWeekRollover = isRepaired, .now = [] { return NSDate{kPresent}; }}});
    reader.feed(old);
    const auto told = reader.tellHeld();
    ASSERT_EQ(told.fixes.size(), 1u);
    if (isRepaired) {
      EXPECT_FALSE(told.oldDate);
      EXPECT_EQ(told.fixes[0].timestamp, NSDate{kPresent});
    } else {
      EXPECT_THAT(told.oldDate.value(), HasSubstr("2006-09-23, lies more than ten years back"));
    }
    reader.feed(report(1, ""));
    EXPECT_FALSE(reader.feed(old).oldDate);
  }
}

}  // namespace
}  // namespace readers
