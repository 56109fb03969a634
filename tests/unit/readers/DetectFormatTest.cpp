// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <readers/FixReader.h>

namespace readers {
namespace {

TEST(DetectFormat, TellsByTheContent) {
  const std::string sound = "$GPGSV,1,1,00*79\r\n";
  struct Row {
    std::string head;
    std::optional<Format> format;
  };
  const Row rows[] = {
      {"<?xml version=\"1.0\"?><gpx version=\"1.1\">", Format::gpx},
      {"\xEF\xBB\xBF\n <!-- c -->\n<g:gpx xmlns:g='x'", Format::gpx},
      {"<gpx>" + std::string(100000, ' '), Format::gpx},
      {"<?xml version=\"1.0\"?><kml><name>gpx</name>", std::nullopt},
      {"<html>" + sound, std::nullopt},
      {sound, Format::nmea},
      {"# Name: receiver\n\n" + sound, Format::nmea},
      {"4,S,15303.1201\n$GPG\xff\n" + sound, Format::nmea},
      {"$GPRMC,100000,A,5100.000,N,00730.000,E,,,110922", Format::nmea},
      {"$GPGSV,1,1,00*78\r\n", std::nullopt},
      {"$PATH,is,no,sentence\n", std::nullopt},
      {sound + sound + "{\"class\":\"TPV\",\"mo", Format::gpsdJson},
      {"{\"class\":\"VERSION\"}\n" + sound, Format::gpsdJson},
      {"[{\"place_id\":1}]\n", std::nullopt},
      {"# drive\ntime,LAT,\"lon\"\n", Format::csv},
      {"lat,lon", Format::csv},
      {"\"Latitude\";lng;time\n", Format::csv},
      {"\tlat\tlongitude\n", Format::csv},
      {"name,value\nlat,lon\n", std::nullopt},
      {"", std::nullopt},
      {std::string(100, '\0'), std::nullopt},
  };
  for (const auto& [head, format] : rows) {
    SCOPED_TRACE(head);
    EXPECT_EQ(detectFormat(head), format);
  }
}

TEST(DetectFormat, NamesWhatItDoesNotRead) {
  const std::pair<std::string, const char*> rows[] = {
      {"<?xml version=\"1.0\"?>\n<kml xmlns=\"http://www.opengis.net/kml/2.2\">", "KML"},
      {"<TrainingCenterDatabase>", "XML, but no GPX"},
      {"{\"type\":\"FeatureCollection\",\"features\":[\n", "GeoJSON"},
      {"PK\x03\x04rest", "zip"},
      {"BZh91AY&SY", "bzip2"},
      {"time,x,y\n1,2,3\n", "columns lat and lon"},
      {"Dear diary,\n", "GPX, NMEA 0183, gpsd JSON lines, or CSV"},
      {"", "no recording"},
  };
  for (const auto& [head, words] : rows) {
    EXPECT_EQ(detectFormat(head), std::nullopt);
    EXPECT_NE(whyUnreadable(head).find(words), std::string::npos) << whyUnreadable(head);
  }
}

}  // namespace
}  // namespace readers
