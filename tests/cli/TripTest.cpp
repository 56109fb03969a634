// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>

#include "Gzip.h"
#include "RunTool.h"

namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kTable =
    "time,lat,lon\n"
    "2026-05-09T09:30:00Z,46.80,7.40\n"
    "2026-05-09T09:30:01Z,46.81,7.41\n"
    "2026-05-09T09:30:02Z,46.82,7.42\n";

class Trip : public testing::Test {
 protected:
  ToolFolder folder;

  /// What the last line of --json says.
  static json summaryOf(const ToolRun& run) {
    const auto lines = linesOf(run.out);
    return lines.empty() ? json::object() : json::parse(lines.back(), nullptr, false).value("summary", json::object());
  }

  std::map<std::string, std::string> filesIn(const std::string& name) const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path(name))) {
      files[entry.path().filename()] = textOfFile(entry.path());
    }
    return files;
  }
};

TEST_F(Trip, WhateverIsWrongWithTheDataIsToldAndTheGoodFixesAreCounted) {
  const std::string gpx = "<?xml version=\"1.0\"?>\n<gpx version=\"1.1\"><trk><trkseg>\n";
  const std::string point = "<trkpt lat=\"46\" lon=\"7\"><time>2026-05-09T09:30:00Z</time></trkpt>\n";
  const std::string soundSentence = "$GPRMC,093000.00,A,4648.0,N,00724.0,E,10.0,45.0,090526,,,A*53\n";
  const struct {
    const char* name;
    std::string content;
    int exitCode;
    int fixes;  ///< -1: none was replayed
    const char* message;
  } cases[] = {
      {"sound", kTable, 0, 3, ""},
      {"empty", "", 1, -1, "empty"},
      {"prose", "Dear diary,\ntoday we drove to the lake.\n", 1, -1, "no recording"},
      {"bytes", std::string("\0\xff\xfe\x80 \x00 MZ", 9), 1, -1, "no recording"},
      {"headerOnly", "time,lat,lon\n", 1, 0, "no fix"},
      {"cutGpx", gpx + point + point + "<trkpt lat=\"4", 1, 2, ":5: "},
      {"damagedSentence", soundSentence + "$GPRMC,093001.00,A,4649.0,N,00724.0,E,10.0,45.0,090526,,,A*00\n", 1, 1,
       ":2: "},
      {"offTheEarth", kTable + "2026-05-09T09:30:03Z,146.83,7.43\n", 1, 3, ":5: "},
      {"ours.geojson", "{\"type\":\"FeatureCollection\",\"features\":[]}\n", 1, -1, "is GeoJSON"},
      {"notUtf8", kTable + "2026-05-09T09:30:03Z,\xff\xfe,7.43\n", 1, 3, ":5: "},
      {"timeGoesBack", kTable + "2026-05-09T09:29:00Z,46.83,7.43\n", 0, 4, ":5: warning: "},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    const std::string path = folder.file(row.name, row.content);
    const ToolRun run = folder.run({"trip", path, "--json"});
    EXPECT_EQ(run.exitCode, row.exitCode) << run.err;
    if (*row.message) {
      EXPECT_THAT(run.err, AllOf(HasSubstr("zrcore: " + path), HasSubstr(row.message)));
    } else {
      EXPECT_EQ(run.err, "");
    }
    if (row.fixes >= 0) {
      EXPECT_EQ(summaryOf(run).value("fixes", -1), row.fixes);
    } else {
      EXPECT_EQ(run.out, "");
    }
  }
  for (const char* path : {"/nonexistent.gpx", "/tmp"}) {
    const ToolRun run = folder.run({"trip", path});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.err, HasSubstr(std::string("zrcore: ") + path + ": "));
    EXPECT_EQ(run.out, "");
  }
}

TEST_F(Trip, OnlyALossIsAFaultAndEstimatesAreMarkedOrLeftOut) {
  const auto gga = [](const char* time, int quality) {
    return "$GPGGA," + std::string(time) + ",4648.0,N,00724.0,E," + std::to_string(quality) + ",05,1.0,500.0,M,,M,,\n";
  };
  const std::string file = folder.file("tunnel.nmea", "u-blox AG\n$GPTXT,01,01,02,x*00\n$GPZDA,093000,23,09,2006,,\n" +
                                                          gga("093000", 1) + gga("093001", 6) + gga("093002", 8));
  const ToolRun all = folder.run({"trip", file, "--json"});
  EXPECT_EQ(all.exitCode, 0) << all.err;
  const auto lines = linesOf(all.out);
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_FALSE(json::parse(lines[0]).contains("estimated"));
  for (const auto& line : {lines[1], lines[2]}) EXPECT_EQ(json::parse(line)["estimated"], true);
  EXPECT_EQ(linesOf(folder.run({"trip", file, "--json", "--no-estimates"}).out).size(), 2u);
  EXPECT_EQ(folder.run({"trip", folder.file("lost.nmea", gga("093000", 1) + "$GPGGA,093001,x*00\n")}).exitCode, 1);
}

TEST_F(Trip, ADateOfARolledOverWeekCounterIsMendedOnRequestAndToldOfAStream) {
  const std::string old = "time,lat,lon\n2006-09-23T09:30:00Z,46.8,7.4\n";
  const ToolRun file = folder.run({"trip", folder.file("old.csv", old)});
  EXPECT_THAT(file.err, Not(HasSubstr("ten years")));
  EXPECT_THAT(folder.run({"trip", folder.path("old.csv"), "--week-rollover"}).out, HasSubstr("2026-05-09T09:30:00"));
  const std::string fifo = folder.path("fifo");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  const pid_t tool = startTool({"trip", fifo}, {"/dev/null", folder.path("out"), folder.path("err")});
  std::ofstream(fifo) << old;
  EXPECT_EQ(waitForTool(tool).exitCode, 0);
  EXPECT_THAT(textOfFile(folder.path("err")), HasSubstr("2006-09-23, lies more than ten years back"));
}

TEST_F(Trip, AFloodOfFaultsIsCutAndCounted) {
  std::string content = kTable;
  for (int i = 0; i < 332; ++i) content += "2026-05-09T09:31:00Z,north,east\n";
  const ToolRun run = folder.run({"trip", folder.file("flood.csv", content), "--quiet"});
  EXPECT_EQ(run.exitCode, 1);
  const auto lines = linesOf(run.err);
  ASSERT_GT(lines.size(), 21u);
  EXPECT_THAT(lines[19], HasSubstr("flood.csv:24: "));
  EXPECT_THAT(lines[20], HasSubstr("… and 312 more"));
  EXPECT_THAT(run.err, HasSubstr("332 faults"));
}

TEST_F(Trip, WhatTheCommandLineGetsWrongIsRefusedBeforeAnythingIsWritten) {
  const std::string table = folder.file("table.csv", kTable);
  const std::vector<std::vector<std::string>> wrong{
      {},
      {"trip"},
      {"fly", table},
      {"trip", table, "--rate", "0"},
      {"trip", table, "--rate", "fast"},
      {"trip", table, "--filter", "kalman"},
      {"trip", table, "--assume-accuracy", "-5"},
      {"trip", table, "--from", "noon"},
      {"trip", table, "--from", "+2", "--to", "+1"},
      {"trip", table, "--json", "--quiet"},
      {"trip", "-", "--route", "-"},
      {"trip", table, "--out", table},
  };
  for (auto arguments : wrong) {
    SCOPED_TRACE(testing::PrintToString(arguments));
    if (arguments.size() > 2 && arguments[2] != "--out") {
      arguments.insert(arguments.end(), {"--out", folder.path("out")});
    }
    const ToolRun run = folder.run(arguments);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, Not(IsEmpty()));
    EXPECT_FALSE(std::filesystem::exists(folder.path("out/trip.csv")));
  }
  EXPECT_EQ(textOfFile(table), kTable);
}

TEST_F(Trip, HelpAndVersionAreResults) {
  EXPECT_THAT(folder.run({"--version"}).out, testing::StartsWith("zrcore "));
  const ToolRun help = folder.run({"trip", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_THAT(help.out, AllOf(HasSubstr("Examples:"), HasSubstr("Exit codes:")));
  EXPECT_EQ(help.err, "");
  for (const std::vector<std::string>& asked :
       {{"--version"}, {"--help"}, {"help"}, std::vector<std::string>{"trip", "-h"}}) {
    EXPECT_EQ(waitForTool(startTool(asked, {"/dev/null", "/dev/full", folder.path("err")})).exitCode, 3);
    EXPECT_THAT(textOfFile(folder.path("err")), HasSubstr("standard output: No space left"));
  }
}

TEST_F(Trip, TheSameInputGivesTheSameBytes) {
  const std::vector<std::string> arguments{"trip", kDrive, "--filter", "measured", "--out"};
  std::vector<std::map<std::string, std::string>> files;
  std::vector<std::string> lines;
  for (const std::string name : {"first", "second"}) {
    auto all = arguments;
    all.push_back(folder.path(name));
    const ToolRun run = folder.run(all);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    lines.push_back(run.out);
    files.push_back(filesIn(name));
  }
  EXPECT_EQ(lines[0], lines[1]);
  EXPECT_THAT(files[0], testing::SizeIs(testing::Ge(3u)));
  EXPECT_TRUE(files[0] == files[1]);
}

TEST_F(Trip, NoFileIsOverwrittenUnasked) {
  const std::string table = folder.file("table.csv", kTable), out = folder.path("out");
  EXPECT_EQ(folder.run({"trip", kDrive, "--quiet", "--out", out}).exitCode, 0);
  const auto before = filesIn("out");
  const ToolRun refused = folder.run({"trip", table, "--out", out});
  EXPECT_EQ(refused.exitCode, 2);
  EXPECT_THAT(refused.err, HasSubstr("--force"));
  EXPECT_EQ(refused.out, "");
  EXPECT_TRUE(filesIn("out") == before);
  EXPECT_EQ(folder.run({"trip", table, "--quiet", "--out", out, "--force"}).exitCode, 0);
  EXPECT_EQ(json::parse(filesIn("out")["summary.json"])["fixes"], 3);
  EXPECT_EQ(filesIn("out").size(), before.size());
}

TEST_F(Trip, ItsOwnTableIsARecordingThatForceDoesNotDestroy) {
  const std::string out = folder.path("out"), table = out + "/trip.csv";
  folder.run({"trip", kDrive, "--quiet", "--out", out});
  const json again = summaryOf(folder.run({"trip", table, "--json"}));
  EXPECT_EQ(again["fixes"], summaryOf(folder.run({"trip", kDrive, "--json"}))["fixes"]);
  EXPECT_EQ(again["faults"], 0);
  const std::string before = textOfFile(table);
  EXPECT_EQ(folder.run({"trip", table, "--out", out, "--force"}).exitCode, 2);
  EXPECT_EQ(textOfFile(table), before);
}

TEST_F(Trip, AStreamGivesTheSameFixesAsAFile) {
  const ToolRun file = folder.run({"trip", kDrive}), stream = folder.run({"trip", "-"}, kDrive);
  EXPECT_EQ(stream.exitCode, 0);
  EXPECT_EQ(file.out, stream.out);
  EXPECT_THAT(stream.err, HasSubstr("standard input"));

  const std::string pipe = folder.path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const pid_t tool = startTool({"trip", pipe, "--json"}, {"/dev/null", folder.path("out"), folder.path("err")});
  std::ofstream(pipe) << textOfFile(kDrive);
  EXPECT_EQ(waitForTool(tool).exitCode, 0);
  const ToolRun piped{0, textOfFile(folder.path("out")), "", 0};
  EXPECT_EQ(summaryOf(piped)["deliveredByClient"]["half-way"], 100);  // the length was not known
  EXPECT_EQ(linesOf(piped.out).size(), linesOf(file.out).size());     // a summary here, a header there
}

TEST_F(Trip, APackedRecordingGivesTheSameFixesAsAPlainOne) {
  const auto table = [&](const std::string& file) { return folder.run({"trip", file, "--json"}); };
  const std::string plain = textOfFile(kDrive), packed = gzipped(plain);
  const std::string file = folder.file("drive.csv.gz", packed);
  json expected = summaryOf(table(kDrive)), found = summaryOf(table(file));
  EXPECT_NEAR(found["deliveredByClient"]["half-way"], expected["deliveredByClient"]["half-way"].get<int>(), 3);
  for (json* summary : {&expected, &found}) {
    summary->erase("source");
    (*summary)["deliveredByClient"].erase("half-way");
  }
  EXPECT_EQ(found, expected);
  EXPECT_EQ(linesOf(folder.run({"trip", "-"}, file).out).size(), linesOf(plain).size());
  const ToolRun watched =
      folder.run({"watch", "file:" + folder.file("few.gz", gzipped("lat,lon\n1,2\n1,3\n")), "--json"});
  EXPECT_EQ(linesOf(watched.out).size(), 3u) << watched.err;

  const ToolRun cut = table(folder.file("cut.gz", packed.substr(0, packed.size() / 2)));
  EXPECT_EQ(cut.exitCode, 1);
  EXPECT_THAT(cut.err, HasSubstr("breaks off"));
  EXPECT_GT(summaryOf(cut).value("fixes", 0), 100);
}

TEST_F(Trip, TheOptionsReachTheFilter) {
  const auto fixes = [this](std::vector<std::string> more) {
    more.insert(more.begin(), {"trip", kDrive, "--json"});
    return folder.run(more);
  };
  const json documented = summaryOf(fixes({"--filter", "documented"})), measured = summaryOf(fixes({}));
  EXPECT_EQ(documented["jumps"], 0);
  EXPECT_EQ(documented["stableFixes"], 0);
  EXPECT_EQ(measured["jumps"], 2);
  EXPECT_GT(measured["stableFixes"], 600);

  const json part = summaryOf(fixes({"--from", "09:31:00", "--to", "2026-05-09T09:31:09Z"}));
  EXPECT_EQ(part["fixes"], 10);
  EXPECT_EQ(part["firstTime"], "2026-05-09T09:31:00.000Z");
  EXPECT_EQ(fixes({"--from", "+86400"}).exitCode, 1);

  const std::string bare = folder.file("bare.csv", kTable);
  const std::string foot = folder.run({"trip", bare}).err;
  EXPECT_THAT(foot, AllOf(HasSubstr("filter measured"), HasSubstr("--derive-speed"), HasSubstr("--assume-accuracy")));
  const ToolRun completed = folder.run({"trip", bare, "--json", "--assume-accuracy", "12", "--derive-speed"});
  const json second = json::parse(linesOf(completed.out)[1]);
  EXPECT_EQ(second["accuracyMeters"], 12.0);
  EXPECT_NEAR(second["speedMetersPerSecond"].get<double>(), 1349.0, 1.0);

  const std::string route = folder.file("route.csv", "lat,lon\n46.8,7.0\n46.8,8.0\n");
  const json snapped = json::parse(linesOf(fixes({"--route", route}).out)[5]);
  EXPECT_NEAR(snapped["snappedLatitude"].get<double>(), 46.8, 1e-12);
  EXPECT_EQ(fixes({"--route", folder.file("noRoute.csv", "lat,lon\n")}).exitCode, 1);
}

TEST_F(Trip, RealRecordingsAreCalmedByTheFilter) {
  const std::filesystem::path collection = ZRCORE_SHARED_SAMPLES;
  if (!std::filesystem::exists(collection)) GTEST_SKIP() << "no recordings beside the checkout";
  // A walk whose course is calmed, and a phone among high buildings whose place jumps.
  const json walk = summaryOf(folder.run({"trip", collection / "haicom-305N-walk.log", "--json"}));
  const json& turns = walk["courseChangeDegrees"];
  EXPECT_LE(turns["smoothed"]["percentile90"].get<double>(), turns["raw"]["percentile90"].get<double>() / 3.0);
  const json phone = summaryOf(folder.run({"trip", collection / "pinephone-quectel-eg25-g.log", "--json"}));
  EXPECT_EQ(phone["jumps"], 2);
  EXPECT_LT(phone["topSpeedMetersPerSecond"]["smoothed"].get<double>(), 3.5);
}

TEST_F(Trip, WhateverBecomesOfTheStandardOutputTheFilesAreWhole) {
  ASSERT_EQ(folder.run({"trip", kDrive, "--quiet", "--out", folder.path("whole")}).exitCode, 0);
  const std::string err = folder.path("err");
  pid_t full = startTool({"trip", kDrive, "--out", folder.path("full")}, {"/dev/null", "/dev/full", err});
  EXPECT_EQ(waitForTool(full).exitCode, 3);
  EXPECT_THAT(textOfFile(err), HasSubstr("standard output: No space left"));
  pid_t closed = -1;
  {
    ToolPipe reader;
    closed = startTool({"trip", kDrive, "--json", "--out", folder.path("closed")}, {"/dev/null", reader.path(), err});
    reader.readLine();
  }
  EXPECT_EQ(waitForTool(closed).exitCode, 0);
  EXPECT_EQ(textOfFile(err), "");
  for (const char* name : {"full", "closed"}) EXPECT_TRUE(filesIn(name) == filesIn("whole")) << name;
}

TEST_F(Trip, AReaderThatGoesAwayEndsItQuietly) {
  pid_t tool = -1;
  {
    ToolPipe reader;
    tool = startTool({"trip", kDrive, "--rate", "100"}, {"/dev/null", reader.path(), folder.path("err")});
    EXPECT_THAT(reader.readLine(), testing::StartsWith("time\t"));
  }
  EXPECT_EQ(waitForTool(tool).exitCode, 0);
  EXPECT_THAT(textOfFile(folder.path("err")), Not(HasSubstr("zrcore:")));
}

TEST_F(Trip, AnInterruptionEndsTheWaitForAReaderAndKeepsTheFiles) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "the sanitizer's runtime (g++ 12) can lose a signal that comes while the program first waits";
#endif
  ToolPipe reader;  // which has room for a part of the table only
  const pid_t tool = startTool({"trip", kDrive, "--json", "--out", folder.path("out")},
                               {"/dev/null", reader.path(), folder.path("err")});
  reader.readLine();
  ::kill(tool, SIGINT);
  EXPECT_EQ(waitForTool(tool).exitCode, 128 + SIGINT);
  EXPECT_TRUE(json::accept(filesIn("out")["summary.json"]));
}

TEST_F(Trip, TheLimitOfAFilesSizeEndsItLikeASignal) {
  std::string table = "lat,lon\n";
  for (int i = 0; i < 20000; ++i) table += "46.8," + std::to_string(7.0 + i * 1e-4) + '\n';
  const std::string file = folder.file("long.csv", table);
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  const rlimit small{3'000'000, old.rlim_max};  // room for the pictures, and for half of trip.geojson
  setrlimit(RLIMIT_FSIZE, &small);
  const ToolRun run = folder.run({"trip", file, "--out", folder.path("out")});
  setrlimit(RLIMIT_FSIZE, &old);
  EXPECT_EQ(run.exitCode, 128 + SIGXFSZ) << run.err;
  EXPECT_THAT(run.err, AllOf(HasSubstr("ulimit -f"), HasSubstr("is complete")));
  auto files = filesIn("out");
  const json summary = json::parse(files["summary.json"]);
  EXPECT_EQ(linesOf(files["trip.csv"]).size(), summary["fixes"].get<std::size_t>() + 1);
  EXPECT_TRUE(json::accept(files["trip.geojson"]));
  EXPECT_EQ(files.size(), 5u);
}

TEST_F(Trip, AnInterruptionKeepsWhatWasReplayed) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "the sanitizer's runtime (g++ 12) can lose a signal that comes while the program first waits";
#endif
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
    SCOPED_TRACE(signal);
    const std::string out = std::to_string(signal);
    ToolPipe reader;
    const pid_t tool = startTool({"trip", kDrive, "--rate", "0.01", "--out", folder.path(out)},
                                 {"/dev/null", reader.path(), folder.path("err")});
    reader.readLine();
    reader.readLine();  // the first fix is there; the second one is due in 100 seconds
    ::kill(tool, signal);
    ::kill(tool, signal);  // as timeout(1) does, and a shell whose terminal closes
    EXPECT_EQ(waitForTool(tool).exitCode, 128 + signal);
    EXPECT_EQ(json::parse(filesIn(out)["summary.json"])["fixes"], 1);
    EXPECT_EQ(linesOf(filesIn(out)["trip.csv"]).size(), 2u);
    EXPECT_THAT(textOfFile(folder.path("err")), HasSubstr("interrupted"));
  }
}

}  // namespace
