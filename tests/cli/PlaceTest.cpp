// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "RunTool.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

const std::filesystem::path kPlaces = std::filesystem::path(ZRCORE_SAMPLES) / "places";

class PlaceCommand : public testing::Test {
 protected:
  ToolFolder folder;
};

TEST_F(PlaceCommand, ReadsEverySampleAndToldItsDialectReadsTheSame) {
  std::size_t files = 0;
  for (const auto& dialect : std::filesystem::directory_iterator(kPlaces)) {
    for (const auto& entry : std::filesystem::directory_iterator(dialect)) {
      SCOPED_TRACE(entry.path());
      ++files;
      const std::string name = entry.path().filename();
      const ToolRun run = folder.run({"place", entry.path(), "--json"});
      const bool isFaulty = name == "damaged.json" || name == "wrong-kinds.json" || name == "nothing.json";
      EXPECT_EQ(run.exitCode, isFaulty ? 1 : 0) << run.err;
      EXPECT_EQ(json::parse(run.out).empty(), name == "nothing.json");
      EXPECT_EQ(folder.run({"place", entry.path(), "--json", "--dialect", dialect.path().filename()}).out, run.out);
      const std::string again = folder.file("again.json", run.out);
      EXPECT_EQ(folder.run({"place", again, "--json"}).out, run.out);
    }
  }
  EXPECT_GE(files, 25U);
}

TEST_F(PlaceCommand, ShowsLinesToPrograms) {
  const ToolRun run = folder.run({"place", kPlaces / "documented" / "capitals.json"});
  EXPECT_EQ(run.exitCode, 0);
  const auto lines = linesOf(run.out);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], "file\tresult\tfirst_line\tsecond_line\tsingle_line\tlat\tlon\tquality\tzoom");
  EXPECT_THAT(lines[1], testing::EndsWith("\t1\t14 Lantern Row\tQuillmere, IL 62999\t14 Lantern Row, Quillmere, IL "
                                          "62999\t39.9013100\t-89.4472200\taddress\t16"));
}

TEST_F(PlaceCommand, NamesFaultsByPositionAndUnknownKeysWhenAsked) {
  const std::string file =
      folder.file("a.json", R"([{"city":"a\tb\u001b\u009b2J","state":"x"},null,{"zip":"1","t":2}])");
  const ToolRun run = folder.run({"place", "-", "--verbose"}, file);
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(linesOf(run.out).size(), 3U);
  EXPECT_THAT(run.out, HasSubstr("\ta\\x09b\\x1B\\xC2\\x9B2J, x\t"));
  EXPECT_EQ(run.err,
            "zrcore: standard input: result 2: is no object\n"
            "zrcore: standard input: not used: t\n");
  EXPECT_EQ(folder.run({"place", "-"}, file).err, "zrcore: standard input: result 2: is no object\n");

  std::string nulls = "[null";
  for (int i = 1; i < 50; ++i) nulls += ",null";
  const auto told = linesOf(folder.run({"place", "-"}, folder.file("nulls.json", nulls + "]")).err);
  ASSERT_EQ(told.size(), 21U);
  EXPECT_THAT(told.back(), HasSubstr("and 30 more"));
}

TEST_F(PlaceCommand, GoesOnAfterAFileThatCannotBeRead) {
  const std::string good = folder.file("good.json", R"({"zip":"1"})");
  const std::string cut = folder.file("cut.json", R"([{"zip":)");
  const ToolRun run = folder.run({"place", folder.path("none.json"), cut, folder.path(""), good, "--geojson"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(json::parse(run.out)["features"].size(), 1U);
  EXPECT_THAT(run.err, HasSubstr("none.json: cannot be opened"));
  EXPECT_THAT(run.err, HasSubstr("is a folder"));
  EXPECT_EQ(linesOf(run.err).size(), 3U) << run.err;
}

TEST_F(PlaceCommand, RefusesOptionsThatMakeNoSense) {
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"place"},
                                                    {"place", "-", "--json", "--geojson"},
                                                    {"place", "-", "--tambrel"},
                                                    {"place", "-", "--dialect", "other"}}) {
    EXPECT_EQ(folder.run(arguments).exitCode, 2) << arguments.back();
  }
  EXPECT_THAT(folder.run({"place", "--help"}).out, HasSubstr("zrcore place "));
}

TEST_F(PlaceCommand, GivesItsPlacesToATripsPictures) {
  const std::string drive = (std::filesystem::path(ZRCORE_SAMPLES) / "drive.csv").string();
  const auto trip = [&](const char* out, const std::string& places) {
    return folder.run({"trip", drive, "--quiet", "--out", folder.path(out), "--places", places});
  };
  const std::string second = linesOf(textOfFile(drive)).at(400);
  const auto comma = second.find(','), next = second.find(',', comma + 1);
  const std::string lat = second.substr(comma + 1, next - comma - 1);
  const std::string lng = second.substr(next + 1, second.find(',', next + 1) - next - 1);
  const std::string good = R"({"city":"Here","latLng":{"lat":)" + lat + R"(,"lng":)" + lng + "}}";
  EXPECT_EQ(trip("marked", folder.file("good.json", good)).exitCode, 0);
  EXPECT_EQ(folder.run({"trip", drive, "--quiet", "--out", folder.path("bare")}).exitCode, 0);
  EXPECT_NE(textOfFile(folder.path("marked/trip.png")), textOfFile(folder.path("bare/trip.png")));
  EXPECT_EQ(textOfFile(folder.path("marked/trip.csv")), textOfFile(folder.path("bare/trip.csv")));

  const ToolRun partly = trip("partly", folder.file("partly.json", "[" + good + ",7]"));
  EXPECT_EQ(partly.exitCode, 1);
  EXPECT_THAT(partly.err, HasSubstr("partly.json: result 2: is no object"));
  EXPECT_EQ(textOfFile(folder.path("partly/trip.png")), textOfFile(folder.path("marked/trip.png")));

  EXPECT_EQ(trip("none", folder.file("none.json", R"({"city":"Nowhere"})")).exitCode, 1);
  EXPECT_FALSE(std::filesystem::exists(folder.path("none")));
  EXPECT_EQ(folder.run({"trip", drive, "--places", "x.json"}).exitCode, 2);
  EXPECT_EQ(folder.run({"trip", "-", "--out", folder.path("o"), "--places", "-"}).exitCode, 2);
}

TEST_F(PlaceCommand, ReadsARealServicesAnswer) {
  const std::filesystem::path answer = std::filesystem::path(ZRCORE_SHARED_SAMPLES) / "geocode-nominatim-berlin.json";
  if (!std::filesystem::exists(answer)) GTEST_SKIP() << answer << " is not there";
  const ToolRun run = folder.run({"place", answer});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_THAT(run.out, HasSubstr("1 Unter den Linden\tBerlin, BE 10117, DE\t"));
  EXPECT_THAT(run.out, HasSubstr("52.5172077\t13.3978344\taddress\t16"));
}

}  // namespace
