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
      {"name,value\nlat,lon\n", std::nullopt},
      {"", std::nullopt},
      {std::string(100, '\0'), std::nullopt},
  };
  for (const auto& [head, format] : rows) {
    SCOPED_TRACE(head);
    EXPECT_EQ(detectFormat(head), format);
  }
}

}  // namespace
}  // namespace readers
