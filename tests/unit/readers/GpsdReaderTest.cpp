// SPDX-License-Identifier: Apache-2.0
#include "ReadInput.h"

namespace readers {
namespace {

ReaderEvents readGpsd(const std::string& input) { return readInput(Format::gpsdJson, input); }

TEST(GpsdReader, ReportsOfOneTimeAndPlaceMakeOneFixAndFillEachOthersGaps) {
  const auto events = readGpsd(
      "{\"class\":\"VERSION\",\"release\":\"3.22\"}\n"
      "$GPRMC,,V,,,,,,,,,,N*53\n"
      R"({"class":"TPV","mode":2,"time":"2009-12-09T15:25:05.000Z","lat":55.5,"lon":-23.25,"speed":null,"epv":NaN})"
      "\r\n"
      R"({"class":"SKY","hdop":2.72,"lat":1,"lon":1,"mode":3})"
      "\n"
      R"({"class":"TPV","mode":3,"time":"2009-12-09T15:25:05.000Z","lat":55.5,"lon":-23.25,"altHAE":63.9,"altMSL":37.5,)"
      R"("epx":18.5,"epy":35.5,"epv":129.5,"track":360,"speed":0.25})"
      "\n"
      R"({"class":"TPV","mode":3,"time":"2009-12-09T15:25:05.500Z","lat":55.5,"lon":-23.25,"eph":51.5,"epx":1.0})");
  EXPECT_TRUE(events.faults.empty() && events.warnings.empty());
  ASSERT_EQ(events.fixes.size(), 2u);
  const auto& first = events.fixes[0];
  EXPECT_EQ(first.coordinate.latitude, 55.5);
  EXPECT_EQ(first.coordinate.longitude, -23.25);
  EXPECT_EQ(first.secondsSince1970, 1260372305.0);
  EXPECT_EQ(first.altitudeMeters, 37.5);
  EXPECT_EQ(first.accuracyMeters, 35.5);
  EXPECT_EQ(first.verticalAccuracyMeters, 129.5);
  EXPECT_EQ(first.speedMetersPerSecond, 0.25);
  EXPECT_EQ(first.courseDegrees, 0.0);
  EXPECT_EQ(first.line, 3u);
  EXPECT_EQ(events.fixes[1].accuracyMeters, 51.5);
  EXPECT_FALSE(events.fixes[1].altitudeMeters);
}

TEST(GpsdReader, AReportWithoutAFixIsNoFix) {
  for (const std::string line : {R"({"class":"TPV","mode":1,"lat":5,"lon":5})", R"({"class":"TPV","lat":5,"lon":5})",
                                 R"({"class":"TPV","mode":3,"lat":5})",
                                 R"({"class":"TPV","mode":3,"lat":"5","lon":"5"})", R"({"class":7})", "{}"}) {
    SCOPED_TRACE(line);
    EXPECT_EQ(readGpsd(line + "\n").log, std::vector<std::string>{});
  }
}

TEST(GpsdReader, DamagedLinesAreFaultsAndTheRestIsRead) {
  const std::string good = R"({"class":"TPV","mode":2,"time":1260372305.5,"lat":55.5,"lon":23.5})";
  const std::string damaged[] = {
      good.substr(0, good.size() - 5),
      "[" + good + "]",
      good + good,
      R"({"class":"TPV","mode":3,"lat":1e999,"lon":2})",
      R"({"class":"TPV","mode":3,"lat":90.5,"lon":2})",
      "{\"x\":" + std::string(60000, '['),
      std::string("{\"class\":\"TPV\"\0}", 16),
  };
  for (const auto& line : damaged) {
    SCOPED_TRACE(line.substr(0, 80));
    const auto events = readGpsd(line + "\n" + good);
    ASSERT_EQ(events.faults.size(), 1u);
    EXPECT_EQ(events.faults[0].line, 1u);
    ASSERT_EQ(events.fixes.size(), 1u);
    EXPECT_EQ(events.fixes[0].secondsSince1970, 1260372305.5);
  }
}

TEST(GpsdReader, ALineCutByTheEndIsAFaultThatSaysSo) {
  const auto events = readGpsd(R"({"class":"TPV","mode":3,"lat":5,)");
  ASSERT_EQ(events.faults.size(), 1u);
  EXPECT_NE(events.faults[0].text.find("breaks off"), std::string::npos);
}

TEST(GpsdReader, DeepNestingIsReadWithoutDeepRecursion) {
  const std::string nested = "{\"class\":\"TPV\",\"x\":" + std::string(30000, '[') + std::string(30000, ']') + "}";
  EXPECT_EQ(readGpsd(nested).log, std::vector<std::string>{});
}

}  // namespace
}  // namespace readers
