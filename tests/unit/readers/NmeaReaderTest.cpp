// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstdio>

#include "ToldFixes.h"

namespace readers {
namespace {

constexpr double kKnot = 1852.0 / 3600.0;
constexpr double kSeptember11 = 1662854400.0;  // 2022-09-11

/// A fix at 51 degrees north.
std::string rmc(const std::string& time, const std::string& date) {
  return sentence("GPRMC," + time + ",A,5100.000,N,00730.000,E,,," + date + ",,,A");
}

ReaderEvents readNmea(const std::string& input) { return readInput(Format::nmea, input); }

TEST(NmeaReader, TheSentencesOfOneInstantMakeOneFixInWhateverOrder) {
  std::array<std::string, 5> parts{
      sentence("GNRMC,191503.25,A,3645.8760,S,03124.6700,W,2.0,300.5,110922,3.6,E,A,V"),
      sentence("GPGGA,191503.25,3645.8760,S,03124.6700,W,1,05,1.3,-6.7,M,32.0,M,,"),
      sentence("GPGLL,3645.8760,S,03124.6700,W,191503.25,A,A"),
      sentence("GPVTG,300.5,T,296.9,M,2.0,N,3.7,K,A"),
      sentence("GPGSA,A,3,13,15,17,,,,,,,,,,2.9,1.3,2.6,1"),
  };
  std::sort(parts.begin(), parts.begin() + 3);
  do {
    SCOPED_TRACE(parts[0] + parts[1]);
    const auto events = readNmea(parts[0] + parts[1] + parts[2] + parts[3] + parts[4]);
    EXPECT_TRUE(events.faults.empty() && events.warnings.empty());
    ASSERT_EQ(events.fixes.size(), 1u);
    const auto& fix = events.fixes[0];
    EXPECT_DOUBLE_EQ(fix.coordinate.latitude, -(36 + 45.876 / 60));
    EXPECT_DOUBLE_EQ(fix.coordinate.longitude, -(31 + 24.67 / 60));
    EXPECT_EQ(fix.secondsSince1970, kSeptember11 + 19 * 3600 + 15 * 60 + 3.25);
    EXPECT_EQ(fix.altitudeMeters, -6.7);
    EXPECT_EQ(fix.hdop, 1.3);
    EXPECT_EQ(fix.speedMetersPerSecond, 2.0 * kKnot);
    EXPECT_EQ(fix.courseDegrees, 300.5);
    EXPECT_FALSE(fix.accuracyMeters || fix.verticalAccuracyMeters);
    EXPECT_EQ(fix.line, 1u);
  } while (std::next_permutation(parts.begin(), parts.begin() + 3));
}

TEST(NmeaReader, ASentenceThatSaysNoFixVoidsItsOwnInstantOnly) {
  const std::string good = rmc("100000", "110922");
  for (const std::string& no :
       {sentence("GPGGA,100000,5100.000,N,00730.000,E,0,00,,,M,,M,,"),
        sentence("GPRMC,100000,V,5100.000,N,00730.000,E,,,110922,,,N"), sentence("GPGLL,,,,,100000,V,N")}) {
    SCOPED_TRACE(no);
    EXPECT_EQ(readNmea(no + good).log.size(), 0u);
    EXPECT_EQ(readNmea(good + no).log.size(), 0u);
  }
  // A receiver in a tunnel sends neither time nor place.
  for (const std::string& no :
       {sentence("GPGGA,,,,,,0,,,,,,,,"), sentence("GPRMC,,V,,,,,,,,,,N"), sentence("GPGLL,,,,,,V,N")}) {
    SCOPED_TRACE(no);
    EXPECT_EQ(readNmea(good + no + no).fixes.size(), 1u);
  }
}

TEST(NmeaReader, TheDateIsCarriedOnOverMidnight) {
  const auto gga = [](const std::string& time) {
    return sentence("GPGGA," + time + ",5100.000,N,00730.000,E,1,05,1.0,100.0,M,,M,,");
  };
  const auto events = readNmea(gga("235957") + rmc("235958", "110922") + gga("235959") + gga("000001") +
                               gga("235958.5") + gga("120000") + rmc("000000", "010180"));
  std::vector<std::optional<double>> times;
  for (const auto& fix : events.fixes) times.push_back(fix.secondsSince1970);
  const double midnight = kSeptember11 + 86400;
  const std::vector<std::optional<double>> expected{
      std::nullopt,  // no date yet
      midnight - 2,     midnight - 1, midnight + 1,
      midnight - 1.5,  // a sentence out of order lies on the day before
      midnight + 43200,
      315532800.0,  // 1980, not 2080
  };
  EXPECT_EQ(times, expected);
  EXPECT_EQ(events.warnings.size(), 2u);
  EXPECT_TRUE(events.faults.empty());
}

TEST(NmeaReader, OneKindAtOneTimeAndTwoPlacesIsTwoFixes) {
  const std::string here = rmc("100000", "110922");
  const std::string there = sentence("GPRMC,100000,A,5100.100,N,730.000,E,,,110922,,,A");  // without leading zeros
  EXPECT_EQ(readNmea(here + there).fixes.size(), 2u);
  EXPECT_EQ(readNmea(here + here).fixes.size(), 1u);
}

TEST(NmeaReader, DamageIsReportedWhereItStandsAndTheRestIsRead) {
  const std::string before = rmc("100000", "110922"), after = rmc("100002", "110922");
  const std::string damaged[] = {
      "$GPRMC,100001,A,5100.000,N,00730.000,E,,,110922,,,A*00\n",  // wrong checksum
      "$GPRMC,100001,A,5100.000,N,00730.000,E,,,110922,,,A*5\n",   // cut checksum
      "$GPGSV,2,1,07,26$GPRMC,100001,A,5100.000,N\n",              // run together
      std::string("$GPRMC,10\0"
                  "001,A\n",
                  16),    // a NUL
      "$GPGGA,100000\n",  // too short to void the fix of its instant
      "$GPRMC*4B\n",
      sentence("GPRMC,106001,A,5100.000,N,00730.000,E,,,110922,,,A"),
      sentence("GPRMC,1000,A,5100.000,N,00730.000,E,,,110922,,,A"),
      sentence("GPRMC,100001,A,5160.000,N,00730.000,E,,,110922,,,A"),
      sentence("GPRMC,100001,A,51-1.000,N,00730.000,E,,,110922,,,A"),
      sentence("GPRMC,100001,A,005100.000,N,00730.000,E,,,110922,,,A"),
      sentence("GPRMC,100001,A,00730.000,E,5100.000,N,,,110922,,,A"),
      sentence("GPRMC,100001,A,5100.000,N,,,,,110922,,,A"),
      sentence("GPRMC,100001,A,5100.000,N,18100.000,E,,,110922,,,A"),
      "50,A,5100.000,N,00730.000,E,0.0,\n",  // the head of a sentence is missing
      std::string(70000, '$') + "\n",
  };
  for (const auto& line : damaged) {
    SCOPED_TRACE(line.substr(0, 80));
    const auto events = readNmea(before + line + after);
    ASSERT_EQ(events.faults.size(), 1u);
    EXPECT_EQ(events.faults[0].line, 2u);
    ASSERT_EQ(events.fixes.size(), 2u);
    EXPECT_EQ(events.fixes[1].secondsSince1970, kSeptember11 + 36002);
  }
}

TEST(NmeaReader, CutAnywhereItKeepsWhatWasWholeAndTellsOneFault) {
  const auto gga = [](const std::string& time) {
    return sentence("GPGGA," + time + ",5100.000,N,00730.000,E,1,05,1.0,100.0,M,47.0,M,,");
  };
  const std::string start = gga("100000") + rmc("100000", "110922");
  const std::string input = start + gga("100001") + rmc("100001", "110922");
  for (std::size_t length = start.size(); length <= input.size(); ++length) {
    SCOPED_TRACE(length);
    const auto read = input.substr(0, length);
    const auto lastLine = read.substr(read.rfind('\n') + 1);
    const auto star = lastLine.find('*');
    const bool broken = !lastLine.empty() && (star == std::string::npos || star + 3 > lastLine.size());
    const auto events = readNmea(read);
    ASSERT_EQ(events.faults.size(), broken ? 1u : 0u);
    ASSERT_EQ(events.fixes.size(), length < start.size() + gga("100001").size() - 2 ? 1u : 2u);
  }
}

TEST(NmeaReader, AnUnreadableMeasurementCostsTheMeasurementOnly) {
  const auto events = readNmea(sentence("GPRMC,100000,A,5100.000,N,00730.000,E,fast,720.0,310922,,,A"));
  ASSERT_EQ(events.fixes.size(), 1u);
  EXPECT_EQ(events.faults.size(), 3u);
  const auto& fix = events.fixes[0];
  EXPECT_FALSE(fix.speedMetersPerSecond || fix.courseDegrees || fix.secondsSince1970);
}

TEST(NmeaReader, SentencesWithoutChecksumAreTakenAndCounted) {
  const auto events = readNmea(
      "\xEF\xBB\xBF$GPRMC,100000,A,5100.000,N,00730.000,E,,,110922\n$GPRMC,100001,A,5100.000,N,00730.000,E,,,110922");
  EXPECT_EQ(events.fixes.size(), 2u);
  ASSERT_EQ(events.warnings.size(), 2u);
  EXPECT_EQ(events.warnings[1].text.substr(0, 12), "2 sentences ");
  EXPECT_TRUE(events.faults.empty());
}

TEST(NmeaReader, WhatIsNoPositionIsPassedOverInSilence) {
  const auto events = readNmea("# Chipset: SiRF-II $\n\n!AIVDM,1,1,,B,177KQJ5000G?tO`K>RA1wUbN0TKH,0*5C\r\n" +
                               sentence("PQGSV,1,1,01,65,22,292,23") + sentence("PXRMC,100000,A,1,N,2,E") +
                               sentence("GPTXT,01,01,02,ANTSTATUS=OK") + sentence("GPVTG,,T,,M,0.253,N,0.469,K,A"));
  EXPECT_EQ(events.log, std::vector<std::string>{});
}

}  // namespace
}  // namespace readers
