// SPDX-License-Identifier: Apache-2.0
#include "ReadInput.h"

namespace readers {
namespace {

ReaderEvents readCsv(const std::string& input) { return readInput(Format::csv, input); }

TEST(CsvReader, FindsColumnsByNameInAnyOrder) {
  const auto events = readCsv(
      "\xEF\xBB\xBF# a drive\r\n"
      "Speed,note, LON ,\"lat\",course,accuracy,altitude,time,lat\r\n"
      "1.5,\"a \"\"quoted\"\", cell\nof two lines\",-7.25,50.5,360,4,-3.5,2022-09-11T00:00:00.5Z,ignored\r\n"
      "\r\n"
      ",,7.25,\"51\",,,,1662854401,\r\n"
      "-1,,0,0,-1,-1,,,\r\n");
  EXPECT_TRUE(events.faults.empty() && events.warnings.empty());
  ASSERT_EQ(events.fixes.size(), 3u);
  const auto& full = events.fixes[0];
  EXPECT_EQ(full.coordinate.latitude, 50.5);
  EXPECT_EQ(full.coordinate.longitude, -7.25);
  EXPECT_EQ(full.secondsSince1970, 1662854400.5);
  EXPECT_EQ(full.altitudeMeters, -3.5);
  EXPECT_EQ(full.accuracyMeters, 4.0);
  EXPECT_EQ(full.speedMetersPerSecond, 1.5);
  EXPECT_EQ(full.courseDegrees, 0.0);
  EXPECT_EQ(full.line, 3u);
  EXPECT_EQ(events.fixes[1].secondsSince1970, 1662854401.0);
  EXPECT_EQ(events.fixes[1].line, 6u);
  const auto& sparse = events.fixes[2];  // negative is "unknown", and (0, 0) is a place
  EXPECT_FALSE(sparse.secondsSince1970 || sparse.altitudeMeters || sparse.accuracyMeters ||
               sparse.speedMetersPerSecond || sparse.courseDegrees);
}

TEST(CsvReader, ReadsTheDialectsThatSpreadsheetsAndOtherToolsWrite) {
  for (const std::string input :
       {"time,Latitude,LONGITUDE,speed\n1662854400,50.5,-7.25,1.5\n", "lng;lat;time;speed\n-7.25;50.5;1662854400;1.5\n",
        "lon\tlatitude\ttime\tspeed\n-7.25\t50.5\t1662854400\t1.5\n",
        "longitude;latitude;time;speed\n-7,25;50,5;2022-09-11T00:00:00,0Z;1,5\n",
        "speed;\"note; of, words\";lon;lat;time\n\"1,5\";a,b;-7.25;50,5;1662854400\n"}) {
    SCOPED_TRACE(input);
    const auto events = readCsv(input);
    EXPECT_TRUE(events.faults.empty() && events.warnings.empty());
    ASSERT_EQ(events.fixes.size(), 1u);
    EXPECT_EQ(events.fixes[0].coordinate.latitude, 50.5);
    EXPECT_EQ(events.fixes[0].coordinate.longitude, -7.25);
    EXPECT_EQ(events.fixes[0].secondsSince1970, 1662854400.0);
    EXPECT_EQ(events.fixes[0].speedMetersPerSecond, 1.5);
  }
  EXPECT_EQ(readCsv("lat;lon\n1,234.5;7\n").faults.size(), 1u) << "no decimal comma";
}

TEST(CsvReader, ARowThatCannotBeReadIsDroppedAndTheOthersAreKept) {
  for (const std::string row :
       {"2022-09-11T00:00:00Z,north,7", "2022-09-11T00:00:00Z,,7", "2022-09-11T00:00:00Z,91,7",
        "2022-09-11T00:00:00Z,51,-180.001", "2022-09-11T00:00:00Z,nan,7", "51,7", "2022-09-11T00:00:00Z,51,3,7,5"}) {
    SCOPED_TRACE(row);
    const auto events = readCsv("time,lat,lon\n" + row + "\n2022-09-11T00:00:01Z,-90,180\n");
    ASSERT_EQ(events.faults.size(), 1u);
    EXPECT_EQ(events.faults[0].line, 2u);
    EXPECT_EQ(events.fixes.size(), 1u);
  }
}

TEST(CsvReader, AnUnreadableCellCostsTheCellOnly) {
  const auto events = readCsv(
      "lat,lon,time,altitude,speed,course\n"
      "51,7,yesterday,10 m,fast,400\n"
      "51,7,1662854401000,,,\n");  // milliseconds
  ASSERT_EQ(events.fixes.size(), 2u);
  EXPECT_EQ(events.faults.size(), 5u);
  for (const auto& fix : events.fixes) {
    EXPECT_FALSE(fix.secondsSince1970 || fix.altitudeMeters || fix.speedMetersPerSecond || fix.courseDegrees);
  }
}

TEST(CsvReader, TimesThatGoBackwardsAreKeptWithAWarning) {
  const auto events = readCsv("lat,lon,time\n1,1,100\n1,1,90\n1,1,90\n1,1,\n1,1,80\n1,1,95\n");
  EXPECT_EQ(events.fixes.size(), 6u);
  ASSERT_EQ(events.warnings.size(), 2u);
  EXPECT_EQ(events.warnings[0].line, 3u);
  EXPECT_EQ(events.warnings[1].line, 6u);
  EXPECT_TRUE(events.faults.empty());
}

TEST(CsvReader, WithoutTheTwoColumnsThereIsOneFaultAndNoFlood) {
  const auto events = readCsv("time,y,x\n0,1,2\n1,1,2\n");
  EXPECT_TRUE(events.fixes.empty());
  ASSERT_EQ(events.faults.size(), 1u);
  EXPECT_EQ(events.faults[0].line, 1u);
  EXPECT_NE(events.faults[0].text.find("lat and lon (or latitude"), std::string::npos);
}

TEST(CsvReader, AnOpenQuotationMarkSwallowsABoundedPartOfTheFile) {
  std::string input = "lat,lon,note\n1,1,\"\n";
  for (int i = 0; i < 20000; ++i) input += "2,2,good\n";
  const auto events = readCsv(input);
  ASSERT_EQ(events.faults.size(), 1u);
  EXPECT_EQ(events.faults[0].line, 2u);
  EXPECT_GT(events.fixes.size(), 10000u);

  const auto cut = readCsv("lat,lon,note\n1,1,x\n1,1,\"unfinished\n");
  EXPECT_EQ(cut.fixes.size(), 1u);
  ASSERT_EQ(cut.faults.size(), 1u);
  EXPECT_EQ(cut.faults[0].line, 3u);
}

TEST(CsvReader, ALineBeyondTheLimitIsSkippedToItsEnd) {
  constexpr std::size_t kLimit = 65536;
  for (const auto& [length, faults] : {std::pair{kLimit, 0u}, std::pair{kLimit + 1, 1u}, std::pair{10 * kLimit, 1u}}) {
    SCOPED_TRACE(length);
    const auto events = readCsv("lat,lon,note\r\n1,1," + std::string(length - 4, 'x') + "\r\n2,2,\r\n");
    EXPECT_EQ(events.faults.size(), faults);
    EXPECT_EQ(events.fixes.size(), 2u - faults);
    EXPECT_EQ(events.fixes.back().line, 3u);
  }
}

TEST(CsvReader, ALastLineWithoutAnEndCountsWhenItIsWhole) {
  EXPECT_EQ(readCsv("lat,lon\n1,2").fixes.size(), 1u);
  const auto cut = readCsv("time,lat,lon\n1,2");
  EXPECT_TRUE(cut.fixes.empty());
  EXPECT_EQ(cut.faults.size(), 1u);
}

}  // namespace
}  // namespace readers
