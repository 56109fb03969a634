// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <readers/GeoClueFix.h>
#include <readers/LiveReader.h>

#include <limits>

namespace readers {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(GeoClueValues, WhatIsUnknownThereIsUnknownHere) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr NSDate kNow{77.0};
  GeoClueLocation location;
  EXPECT_FALSE(fixOf(location, kNow)) << "no place at all";
  location.latitude = 52.5;
  location.longitude = 13.4;
  const auto bare = fixOf(location, kNow).value();
  EXPECT_EQ(bare.horizontalAccuracy, 0.0);
  EXPECT_EQ(bare.verticalAccuracy, -1.0);
  EXPECT_EQ(bare.altitude, 0.0);
  EXPECT_EQ(bare.speed, -1.0);
  EXPECT_EQ(bare.course, -1.0);
  EXPECT_EQ(bare.timestamp, kNow);

  location = {52.5, 13.4, 9.0, -3.0, 2.5, 360.0, 100, 250000};
  const auto full = fixOf(location, kNow).value();
  EXPECT_EQ(full.horizontalAccuracy, 9.0);
  EXPECT_EQ(full.altitude, -3.0);
  EXPECT_EQ(full.verticalAccuracy, 0.0);
  EXPECT_EQ(full.speed, 2.5);
  EXPECT_EQ(full.course, 0.0);
  EXPECT_EQ(full.timestamp, NSDate{100.25});

  location.headingDegrees = 361.0;
  location.speedMetersPerSecond = kInfinity;
  location.altitudeMeters = kInfinity;
  const auto odd = fixOf(location, kNow).value();
  EXPECT_EQ(odd.course, -1.0);
  EXPECT_EQ(odd.speed, -1.0);
  EXPECT_EQ(odd.verticalAccuracy, -1.0);
}

TEST(LiveReading, AnInstantIsToldOnceInAQuietMomentAndLateSentencesChangeNothing) {
  // The second instant's RMC comes after a pause: a recording would take it into the fix, live it has been reported.
  const std::string first = "$GPGGA,120000,5230.0,N,01324.0,E,1,08,1.0,34.0,M,40.0,M,,\n";
  const std::string late = "$GPRMC,120000,A,5230.0,N,01324.0,E,10.0,90.0,090526,,\n";
  const std::string next = "$GPRMC,120001,A,5230.1,N,01324.0,E,10.0,90.0,090526,,\n";
  LiveReader reader(Format::nmea);
  EXPECT_TRUE(reader.feed(first).fixes.empty());
  EXPECT_TRUE(reader.isHolding());
  EXPECT_EQ(reader.tellHeld().fixes.size(), 1u);
  EXPECT_FALSE(reader.isHolding());
  EXPECT_TRUE(reader.feed(late).fixes.empty());
  EXPECT_FALSE(reader.isHolding());
  EXPECT_TRUE(reader.feed(next).fixes.empty());
  const auto told = reader.tellHeld().fixes;
  ASSERT_EQ(told.size(), 1u);
  EXPECT_NEAR(told[0].speed, 5.144, 1e-3);
  EXPECT_TRUE(reader.tellHeld().fixes.empty());
}

TEST(LiveReading, RemarksAboutRubbishAreBoundedForEachConnection) {
  LiveReader reader(Format::gpsdJson);
  std::string rubbish;
  for (int i = 0; i < 1000; ++i) rubbish += "rubbish\n";
  for (int connection = 0; connection < 2; ++connection) {
    reader.beginConnection();
    const auto events = reader.feed(rubbish);
    EXPECT_EQ(events.remarks.size(), static_cast<std::size_t>(LiveReader::kMostRemarks));
    EXPECT_THAT(events.remarks.back(), HasSubstr("left out"));
    EXPECT_TRUE(reader.feed(rubbish).remarks.empty());
  }
}

TEST(LiveReading, ALineWithoutEndIsNoFilesFault) {
  for (const Format format : {Format::nmea, Format::gpsdJson}) {
    const auto events = LiveReader(format).feed(std::string(70'000, 'x') + "\n");
    ASSERT_EQ(events.remarks.size(), 1u);
    EXPECT_THAT(events.remarks[0], AllOf(HasSubstr("longer than 64 KiB"), Not(HasSubstr("file"))));
  }
}

TEST(LiveReading, HeadingsLieOnTheRoseAndAConnectionBeginsWithAWholeLine) {
  LiveReader reader(Format::gpsdJson);
  const std::pair<const char*, bool> rows[] = {{"-0.1", false}, {"0", true}, {"359.9", true}, {"360", false}};
  for (const auto& [degrees, isHeading] : rows) {
    reader.feed(R"({"class":"ATT","heading":7,"cla)");
    reader.beginConnection();
    const auto events = reader.feed(std::string(R"({"class":"ATT","heading":)") + degrees + "}\n");
    EXPECT_EQ(events.headings.size(), isHeading ? 1U : 0U) << degrees;
  }
}

TEST(LiveReading, ReceiversAreCountedAsTheyComeAndGo) {
  LiveReader reader(Format::gpsdJson);
  const auto receivers = [&](const char* line) { return reader.feed(std::string(line) + "\n").receivers; };
  EXPECT_EQ(receivers(R"({"class":"DEVICES","devices":[{"path":"a"},{"path":"b"},7]})"), 2u);
  EXPECT_EQ(receivers(R"({"class":"DEVICE","path":"a","activated":0})"), 1u);
  EXPECT_EQ(receivers(R"({"class":"DEVICE","path":"b","activated":"2026-05-09T09:00:00Z"})"), 1u);
  EXPECT_EQ(receivers(R"({"class":"DEVICE","path":"b","activated":0})"), 0u);
  EXPECT_EQ(receivers(R"({"class":"SKY"})"), std::nullopt);
}

}  // namespace
}  // namespace readers
