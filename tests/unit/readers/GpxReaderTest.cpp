// SPDX-License-Identifier: Apache-2.0
#include "ReadInput.h"

namespace readers {
namespace {

constexpr const char* kTrip = R"(<?xml version="1.0" encoding="UTF-8"?>
<gpx version="1.1" xmlns="http://www.topografix.com/GPX/1/1" xmlns:x="urn:x">
  <metadata><time>1999-01-01T00:00:00Z</time></metadata>
  <wpt lat="1" lon="1"><name>caf&#233; &amp; bar</name></wpt>
  <rte><rtept lat="2" lon="2"/></rte>
  <trk><name>a</name><trkseg>
    <trkpt lat="45.5" lon="-13.25">
      <ele>211.5</ele><time>2020-12-18T06:15:50Z</time><hdop>1.5</hdop>
      <extensions><x:Track><x:speed>2.5</x:speed><x:course> 90 </x:course><x:time>x</x:time></x:Track></extensions>
    </trkpt>
    <trkpt lon="13" lat="46"><extensions/><other><speed>9</speed></other><hdop>0</hdop>
      <speed>3.5</speed><course>180</course></trkpt>
  </trkseg><trkseg><trkpt lat="47" lon="13"/></trkseg></trk>
  <trk><trkseg><trkpt lat="48" lon="13"><time><!-- c -->2020-12-18<![CDATA[T06:15:51Z]]></time></trkpt></trkseg></trk>
</gpx>
)";

ReaderEvents readGpx(const std::string& input) { return readInput(Format::gpx, input); }
std::string track(const std::string& points) { return "<gpx><trk><trkseg>" + points + "</trkseg></trk></gpx>"; }

TEST(GpxReader, ReadsTheTrackPointsOfAllSegmentsInOrder) {
  for (const std::string start : {"", "\xEF\xBB\xBF", "\xEF\xBB\xBF \r\n\n"}) {
    const auto events = readGpx(start + kTrip);
    EXPECT_TRUE(events.faults.empty() && events.warnings.empty());
    ASSERT_EQ(events.fixes.size(), 4u);
    const auto& first = events.fixes[0];
    EXPECT_EQ(first.coordinate.latitude, 45.5);
    EXPECT_EQ(first.coordinate.longitude, -13.25);
    EXPECT_EQ(first.altitudeMeters, 211.5);
    EXPECT_EQ(first.secondsSince1970, 1608272150.0);
    EXPECT_EQ(first.hdop, 1.5);
    EXPECT_EQ(first.speedMetersPerSecond, 2.5);
    EXPECT_EQ(first.courseDegrees, 90.0);
    EXPECT_EQ(first.line, start.size() > 3 ? 9u : 7u);
    EXPECT_EQ(events.fixes[1].speedMetersPerSecond, 3.5);
    EXPECT_EQ(events.fixes[1].courseDegrees, 180.0);
    EXPECT_FALSE(events.fixes[1].hdop) << "0 means unknown";
    EXPECT_FALSE(events.fixes[2].altitudeMeters || events.fixes[2].secondsSince1970);
    EXPECT_EQ(events.fixes[3].secondsSince1970, 1608272151.0);
  }
}

TEST(GpxReader, CutAnywhereItKeepsTheCompletePointsAndTellsOneFault) {
  const std::string trip = kTrip;
  const auto whole = readGpx(trip);
  for (std::size_t length = 0; length < trip.find("</gpx>") + 6; ++length) {
    SCOPED_TRACE(length);
    const auto events = readGpx(trip.substr(0, length));
    ASSERT_EQ(events.log.size(), events.fixes.size() + 1);
    ASSERT_EQ(events.faults.size(), 1u);
    EXPECT_NE(events.faults[0].text.find("breaks off"), std::string::npos) << events.faults[0].text;
    ASSERT_TRUE(std::equal(events.log.begin(), events.log.end() - 1, whole.log.begin()));
  }
}

TEST(GpxReader, WhatFollowsTheDocumentIsAFault) {
  const auto events = readGpx(std::string(kTrip) + "<gpx/>");
  EXPECT_EQ(events.fixes.size(), 4u);
  ASSERT_EQ(events.faults.size(), 1u);
  EXPECT_EQ(events.faults[0].text.find("breaks off"), std::string::npos);
}

TEST(GpxReader, DamageEndsTheReadingWithItsLine) {
  const std::string good = "<gpx>\n<trk><trkseg><trkpt lat=\"1\" lon=\"2\"></trkpt>\n";
  std::string deep;
  for (int i = 0; i < 100000; ++i) deep += "<a>";
  std::string manyNames;
  for (int i = 0; i < 20000; ++i) manyNames += "<n" + std::to_string(i) + "/>";
  const std::string damages[] = {"<trkpt lat='5' lat='6' lon='1'/>",
                                 "</trk>",
                                 "&unknown;",
                                 "<name>\xff\xfe</name>",
                                 "<a b='" + std::string(300000, 'x') + "'/>",
                                 "<!--" + std::string(70000, 'x') + "-->",
                                 deep,
                                 manyNames,
                                 std::string("\0", 1)};
  for (const auto& damage : damages) {
    SCOPED_TRACE(damage.substr(0, 60));
    const auto events = readGpx(good + damage + "<trkpt lat='1' lon='2'/></trkseg></trk></gpx>");
    EXPECT_EQ(events.fixes.size(), 1u);
    ASSERT_EQ(events.faults.size(), 1u);
    EXPECT_EQ(events.faults[0].line, 3u);
  }
}

TEST(GpxReader, DeclarationsOfEntitiesAreRefusedBeforeTheyAreUsed) {
  const auto events = readGpx("<!DOCTYPE gpx [\n<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;\">]>\n" +
                              track("<trkpt lat='1' lon='2'/>&b;"));
  EXPECT_TRUE(events.fixes.empty());
  EXPECT_EQ(events.faults.size(), 1u);
  EXPECT_EQ(readGpx("<!DOCTYPE gpx>" + track("<trkpt lat='1' lon='2'/>")).fixes.size(), 1u);
}

TEST(GpxReader, APointWithoutAUsablePlaceIsDroppedAlone) {
  for (const std::string point : {"<trkpt lat='x' lon='2'><ele>y</ele></trkpt>", "<trkpt lon='2'/>",
                                  "<trkpt lat='-90.01' lon='2'/>", "<trkpt lat='1' lon='NaN'/>"}) {
    SCOPED_TRACE(point);
    const auto events = readGpx(track(point + "<trkpt lat='1' lon='2'/>"));
    EXPECT_EQ(events.fixes.size(), 1u);
    EXPECT_EQ(events.faults.size(), 1u);
  }
}

TEST(GpxReader, AnUnreadableValueCostsTheValueOnly) {
  const auto events = readGpx(track("<trkpt lat='1' lon='2'><time>noon</time><ele>1,5</ele><hdop>" +
                                    std::string(100000, '1') + "&#49;</hdop><speed> </speed></trkpt>"));
  ASSERT_EQ(events.fixes.size(), 1u);
  ASSERT_EQ(events.faults.size(), 3u);
  EXPECT_NE(events.faults[2].text.find("64 KiB"), std::string::npos);
  EXPECT_FALSE(events.fixes[0].secondsSince1970 || events.fixes[0].altitudeMeters || events.fixes[0].hdop);
}

TEST(GpxReader, AValueIsTheTextOfItsOwnElement) {
  const auto events = readGpx(track("<trkpt lat='1' lon='2'><ele>12<x>3</x></ele></trkpt>"));
  ASSERT_EQ(events.fixes.size(), 1u);
  EXPECT_EQ(events.fixes[0].altitudeMeters, 12.0);
}

TEST(GpxReader, WithoutATrackThereIsOneFaultThatSaysSo) {
  for (const std::string input : {"<gpx><wpt lat='1' lon='2'/><rte><rtept lat='1' lon='2'/></rte></gpx>", "<gpx/>",
                                  "<kml><trkpt lat='1' lon='2'/></kml>", " \n", "x<gpx/>"}) {
    SCOPED_TRACE(input);
    const auto events = readGpx(input);
    EXPECT_TRUE(events.fixes.empty());
    EXPECT_EQ(events.faults.size(), 1u);
  }
}

}  // namespace
}  // namespace readers
