// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatformFake.h>
#include <demo/tiles/MBTiles.h>
#include <gmock/gmock.h>
#include <sqlite3.h>

#include "TemporaryFolder.h"

namespace demo {
namespace {

const std::string kTables =
    "CREATE TABLE metadata (name TEXT, value TEXT); "
    "CREATE TABLE tiles (zoom_level INTEGER, tile_column INTEGER, tile_row INTEGER, tile_data BLOB);";

class MBTilesTest : public testing::Test {
 protected:
  std::string fileOf(const std::string& sql) const {
    const std::string path = temporary.at("some.mbtiles");
    std::filesystem::remove(path);
    sqlite3* file = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &file), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(file, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(file);
    sqlite3_close(file);
    return path;
  }
  static std::string faultOf(const std::string& path) {
    try {
      MBTiles tiles(path);
      return tiles.picture(2, 1, 1) ? "a picture" : "no picture";
    } catch (const TileSourceError& error) {
      return error.what();
    }
  }

  TemporaryFolder temporary;
};

TEST_F(MBTilesTest, GiveThePicturesOfTheirPlacesAndWhatTheySayOfThemselves) {
  ZRFakePlatform fake;
  const std::string path = fileOf(kTables +
                                  "INSERT INTO tiles VALUES (2, 1, 0, 'south'), (3, 1, 7, 'north'), (3, 2, 7, NULL);"
                                  "INSERT INTO metadata VALUES ('attribution', '<i>A</i> file'), ('maxzoom', '5')");
  const TileSource source = mbtilesSource(path, fake.platform());
  EXPECT_EQ(source.name, "some.mbtiles");
  EXPECT_EQ(source.attribution, "A file");
  EXPECT_EQ(source.zooms.least, 2) << "as its tiles are";
  EXPECT_EQ(source.zooms.most, 5) << "as it says";
  const auto came = [&](const Tile& tile) {
    std::string text = "nothing";
    source.session
        ->dataTaskWithRequest({source.addresses.addressOf(tile)},
                              [&](const auto& data, const auto& response, const auto&) {
                                text = std::to_string(response->statusCode) + ' ' + data.value_or("");
                              })
        ->resume();
    fake.mainQueue->run();
    return text;
  };
  EXPECT_EQ(came({2, 1, 3}), "200 south") << "its rows count from the south";
  EXPECT_EQ(came({3, 1, 0}), "200 north");
  EXPECT_EQ(came({3, 2, 0}), "200 ") << "what is no picture is for the task to say";
  EXPECT_EQ(came({3, 3, 0}), "404 ");
}

TEST_F(MBTilesTest, OfAnyOtherKindAreRefusedWithAReason) {
  EXPECT_THAT(faultOf(temporary.at("none.mbtiles")), testing::StartsWith("none.mbtiles cannot be opened"));
  EXPECT_THAT(faultOf(temporary.path), testing::HasSubstr("cannot be opened"));
  EXPECT_THAT(faultOf(temporary.write("text.mbtiles", "no database")), testing::HasSubstr("is no MBTiles file"));
  EXPECT_THAT(faultOf(fileOf("CREATE TABLE tiles (a)")), testing::HasSubstr("is no MBTiles file"));
  EXPECT_THAT(faultOf(fileOf(kTables + "INSERT INTO metadata VALUES ('format', 'pbf')")),
              testing::HasSubstr("\u201Cpbf"));
  const char* const endless =
      "CREATE TABLE metadata (name TEXT, value TEXT); CREATE VIEW tiles AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
      "SELECT i + 1 FROM n) SELECT 9 AS zoom_level, i AS tile_column, 0 AS tile_row, 'x' AS tile_data FROM n";
  EXPECT_THAT(faultOf(fileOf(endless)), testing::HasSubstr("takes too long"));

  const std::string good = contentOf(fileOf(kTables + "INSERT INTO tiles VALUES (2, 1, 1, 'picture')"));
  EXPECT_EQ(faultOf(temporary.at("some.mbtiles")), "a picture");
  for (std::size_t at = 16; at < good.size(); at += 97) {  // no crash, whatever is damaged
    std::string damaged = good;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x5a);
    faultOf(temporary.write("damaged.mbtiles", damaged));
    if (at % 512 < 97) faultOf(temporary.write("cut.mbtiles", good.substr(0, at)));
  }
}

}  // namespace
}  // namespace demo
