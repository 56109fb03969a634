// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>
#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <set>

#include "DemoScreen.h"
#include "HTTPTestServer.h"
#include "TilePictures.h"

namespace {

constexpr std::uint32_t kToCome = 0xd3dde6;

class BaseMap : public DemoScreen {
 protected:
  /// A trip due south, so that what lies beside it is known.
  std::string southward() const {
    const std::string path = display->folder() / "southward.csv";
    std::ofstream file(path);
    file << "time,lat,lon\n";
    for (int second = 0; second <= 100; ++second) file << second << ',' << kNorth - second * kStep << ",7\n";
    return path;
  }

  /// Waits for the tiles of the whole trip, in a window that has its size and room for the attribution.
  void untilDrawn() {
    until("the tiles", [this] {
      return number("tiles") > 0 && number("awaited") == 0 && std::labs(number("zoom") - kWholeTripZoom) <= 6;
    });
  }

  /// What is told may be ahead of what is painted.
  void expectTilesInPlace(const std::string& name) const {
    std::string fault;
    for (int looks = 0; looks < 20; ++looks) {
      fault = misplacedIn(picture(name));
      if (fault.empty()) return;
    }
    ADD_FAILURE() << name << ": " << fault;
  }

  /// Compares the map beside the track with the colours of the tiles that belong there. @return where they differ
  static std::string misplacedIn(const Pixels& picture) {
    constexpr int kMiddleY = 360;
    int trackX = 200, northY = kMiddleY, southY = kMiddleY;
    while (trackX < 500 && !picture.isAt(trackX, kMiddleY, kToCome)) ++trackX;
    trackX += 2;
    while (northY > 60 && picture.isAt(trackX, northY, kToCome)) --northY;
    while (southY < 700 && picture.isAt(trackX, southY, kToCome)) ++southY;
    northY -= 7;  // under the mark of the newest fix
    southY -= 3;  // lines have round ends
    if (southY - northY < 450) return "no track";
    const ZRMapPoint north = ZRMapPointForCoordinate({kNorth, 7.0});
    const ZRMapPoint south = ZRMapPointForCoordinate({kNorth - 100 * kStep, 7.0});
    const double scale = (southY - northY) / (south.y - north.y);  // pixels for a map point
    const int zoom = static_cast<int>(std::lround(std::log2(scale * ZRMapSizeWorld.width / tileSize)));
    const double across = ZRMapSizeWorld.width / std::exp2(zoom);
    std::set<std::uint32_t> colors;
    for (int x = 160; x < 560; x += 10) {
      for (int y = 130; y < 600; y += 10) {
        const double column = (south.x + (x - trackX) / scale) / across;
        const double row = (south.y + (y - southY) / scale) / across;
        const double toEdge = std::min(std::fabs(column - std::round(column)), std::fabs(row - std::round(row)));
        if (std::abs(x - trackX) < 30 || toEdge * across * scale < 8.0) continue;
        const auto color = tileColor(zoom, static_cast<int>(column), static_cast<int>(row));
        colors.insert(color);
        if (!picture.isAt(x, y, color)) return std::to_string(x) + ", " + std::to_string(y);
      }
    }
    return colors.size() < 4 ? "too few tiles" : "";
  }

  static constexpr double kNorth = 46.01, kStep = 1e-4;
  static constexpr long kWholeTripZoom = -231;
};

/// Paints each tile in its colour, and counts.
void serveTiles(HTTPTestServer& server) {
  server.onOthers([](const HTTPTestServer::Request& request, HTTPTestServer::Connection& connection) {
    int zoom = 0, column = 0, row = 0;
    const bool isTile = std::sscanf(request.target.c_str(), "/tiles/%d/%d/%d.png", &zoom, &column, &row) == 3;
    const auto answer = isTile ? HTTPTestServer::answering(200, tilePicture(tileColor(zoom, column, row)))
                               : HTTPTestServer::answering(404, "not here");
    answer(request, connection);
  });
}

TEST_F(BaseMap, OfAServerLiesUnderTheTrackIsAskedForOnceAndComesFromTheDiskWhenTheServerHasGone) {
  if (!AccessibleTree::isInstalled()) GTEST_SKIP() << "this machine lacks dbus-daemon";
  HTTPTestServer server;
  serveTiles(server);
  const std::string trip = southward(), tiles = "--tiles=" + server.url("/tiles/{z}/{x}/{y}.png");
  AccessibleTree& tree = startTree();
  start(1024, 768, false, {tiles, "--tiles-attribution=<a href='/'>&copy; The testers</a>", trip});
  untilDrawn();
  EXPECT_EQ(text("tilefault"), "");
  expectTilesInPlace("basemap");
  EXPECT_TRUE(tree.waitFor("\u00A9 The testers"));
  const long zoom = number("zoom");
  key("ctrl+minus");
  key("ctrl+minus");
  until("another level", [&] { return number("zoom") < zoom - 100 && number("awaited") == 0; });
  key("ctrl+0");
  until("the first level", [&] { return number("zoom") == zoom; });
  key("ctrl+End");
  until("the end of the trip", [&] { return number("drawn") == 101; });
  picture("basemap-played");
  std::vector<std::string> asked;
  for (const auto& request : server.requests()) {
    asked.push_back(request.target);
    EXPECT_THAT(request.header("user-agent"), testing::StartsWith("zrcore-demo/"));
  }
  EXPECT_GT(asked.size(), 12u);
  EXPECT_EQ(std::set(asked.begin(), asked.end()).size(), asked.size()) << "something was asked for twice";

  server.stop();
  start(1024, 768, false, {tiles, trip});
  untilDrawn();
  expectTilesInPlace("basemap-kept");
  EXPECT_EQ(text("tilefault"), "");
  EXPECT_TRUE(tree.waitFor("Map tiles: 127.0.0.1"));
  for (int i = 0; i < 6; ++i) key("ctrl+plus");  // to levels that nobody has seen
  until("a word about the server", [&] { return text("tilefault").find("No map tiles: 127.0.0.1:") == 0; });
  picture("basemap-away");
  start(1024, 768, false, {"--tiles=" + server.url("/{z}/{x}.png"), trip});
  until("a word about the address", [&] { return text("tilefault").find("{y}") != std::string::npos; });
  EXPECT_GT(picture("basemap-bad").find(kToCome).count, 500u) << "the trip is drawn as before";
}

TEST_F(BaseMap, OfAnMBTilesFileIsChosenInTheDetailsAndComesBack) {
  const std::string path = display->folder() / "tiles.mbtiles";
  sqlite3* file = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &file), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(file,
                         "CREATE TABLE metadata (name TEXT, value TEXT); CREATE TABLE tiles (zoom_level INTEGER, "
                         "tile_column INTEGER, tile_row INTEGER, tile_data BLOB, PRIMARY KEY (zoom_level, tile_column,"
                         " tile_row)); INSERT INTO metadata VALUES ('format', 'png'), ('attribution', 'A file''s')",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(file, "INSERT INTO tiles VALUES (?, ?, ?, ?)", -1, &insert, nullptr);
  constexpr int kZoom = 16, kTilesAround = 4;
  const double across = ZRMapSizeWorld.width / std::exp2(kZoom);
  const ZRMapPoint middle = ZRMapPointForCoordinate({kNorth - 50 * kStep, 7.0});
  const int column = static_cast<int>(middle.x / across), row = static_cast<int>(middle.y / across);
  for (int x = column - kTilesAround; x <= column + kTilesAround; ++x) {
    for (int y = row - kTilesAround; y <= row + kTilesAround; ++y) {
      const std::string picture = tilePicture(tileColor(kZoom, x, y), 512);
      sqlite3_bind_int(insert, 1, kZoom);
      sqlite3_bind_int(insert, 2, x);
      sqlite3_bind_int(insert, 3, (1 << kZoom) - 1 - y);  // counted from the south
      sqlite3_bind_blob(insert, 4, picture.data(), static_cast<int>(picture.size()), SQLITE_TRANSIENT);
      ASSERT_EQ(sqlite3_step(insert), SQLITE_DONE);
      sqlite3_reset(insert);
    }
  }
  sqlite3_finalize(insert);
  sqlite3_close(file);

  start(1024, 768, false, {southward()});
  until("the trip", [&] { return number("drawn") == 1; });
  EXPECT_EQ(number("tiles"), 0);
  constexpr int kDetailsX = 870, kTilesY = 640;
  mouse({"mousemove", std::to_string(kDetailsX), "500", "click", "--repeat", "30", "5"});
  picture("basemap-details");
  click(kDetailsX, kTilesY);
  mouse({"type", "--delay", "0", path});
  key("Return");
  untilDrawn();
  expectTilesInPlace("basemap-file");
  key("ctrl+q");
  EXPECT_EQ(exitCode(), 0);
  start(1024, 768, false);
  untilDrawn();
  expectTilesInPlace("basemap-again");
}

}  // namespace
