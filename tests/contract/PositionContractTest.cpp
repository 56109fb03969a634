// SPDX-License-Identifier: Apache-2.0
// What every receiver on this system promises of positions, whatever its source tells.
#include <ZRCore/CLLocationManager.h>
#include <readers/GeoClueFix.h>

#include <fstream>
#include <limits>

#include "LivePositioning.h"
#include "StreamPeer.h"

namespace {

const std::string kGreeting = "{\"class\":\"VERSION\",\"release\":\"3.22\"}\n";

std::string report(const std::string& place) { return "{\"class\":\"TPV\",\"mode\":3," + place + "}\n"; }

std::string point(const std::string& place) { return "<trkpt " + place + "/>\n"; }

/// Places that are nowhere, then one at 51 degrees north.
struct HostileSource {
  const char* name;
  std::string kind;  ///< of the source; a stream's words are said to whoever connects, a recording's stand in a file
  std::string words;
};

void PrintTo(const HostileSource& source, std::ostream* out) { *out << source.name; }

const std::string kSentences =
    "$GPRMC,100000,A,9100.000,N,00700.000,E,,,110922\n$GPRMC,100001,A,5100.000,N,18100.000,E,,,110922\n"
    "$GPRMC,100002,A,nan,N,inf,E,,,110922\n$GPGGA,100003,,,,,1,,,,,,,,\n"
    "$GPRMC,100004,A,5100.000,N,00700.000,E,,,110922\n";
const std::string kReports = kGreeting + report(R"("lat":NaN,"lon":7)") + report(R"("lat":91,"lon":7)") +
                             report(R"("lat":51,"lon":-180.5)") + report(R"("lat":1e999,"lon":7)") +
                             report(R"("lat":null,"lon":7)") + report(R"("lat":51,"lon":7)");
const std::string kPoints = "<gpx><trk><trkseg>" + point("lat='nan' lon='7'") + point("lat='91' lon='7'") +
                            point("lat='51' lon='1e999'") + point("lon='7'") + point("lat='51' lon='7'") +
                            "</trkseg></trk></gpx>";
const std::string kRows = "lat,lon\nnan,7\n91,7\n51,inf\n51,\n51,7\n";

const HostileSource hostileSources[] = {
    {"gpsd", "gpsd", kReports},     {"receiver", "nmea", kSentences}, {"nmeaFile", "file", kSentences},
    {"gpsdFile", "file", kReports}, {"gpxFile", "file", kPoints},     {"csvFile", "file", kRows},
};

class PositionContract : public LivePositioning, public testing::WithParamInterface<HostileSource> {};

struct PlaceListener final : CLDidUpdateLocations {
  void locationManagerDidUpdateLocations(CLLocationManager&, const CLLocations& locations) override {
    for (const auto& location : locations) {
      EXPECT_TRUE(CLLocationCoordinate2DIsValid(location->coordinate()));
      hasArrived = hasArrived || location->coordinate().latitude == 51.0;
    }
  }
  bool hasArrived = false;
};

TEST_P(PositionContract, EachCoordinateThatIsDeliveredIsValid) {
  const HostileSource& source = GetParam();
  const std::string path = folder.at("source");
  std::optional<StreamPeer> peer;
  if (source.kind == "file") {
    std::ofstream(path) << source.words;
  } else {
    peer.emplace(*loop, path);
  }
  PositioningOptions options;
  options.source = source.kind + ":" + path;
  options.now = [] { return NSDate{1000.0}; };
  options.log = [](const std::string&) {};
  const auto receiver = makeLinuxPositioning(loop, options)->makeLocationManager();
  const auto listener = std::make_shared<PlaceListener>();
  receiver->setDelegate(listener);
  receiver->startUpdatingLocation();
  if (peer) {
    runUntil([&] { return peer->connections == 1; });
    peer->say(source.words);
  }
  runUntil([&] { return listener->hasArrived; });
  receiver->stopUpdatingLocation();
}

INSTANTIATE_TEST_SUITE_P(, PositionContract, testing::ValuesIn(hostileSources),
                         [](const auto& row) { return row.param.name; });

TEST(GeoCluePositionContract, APlaceThatIsNowhereIsNoFix) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const auto& [latitude, longitude] :
       {std::pair(kNaN, 7.0), {51.0, kNaN}, {91.0, 7.0}, {51.0, -180.5}, {kInfinity, 7.0}}) {
    readers::GeoClueLocation location;
    location.latitude = latitude;
    location.longitude = longitude;
    EXPECT_FALSE(readers::fixOf(location, NSDate{1.0}));
  }
}

}  // namespace
