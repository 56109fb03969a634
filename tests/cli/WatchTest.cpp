// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>

#include "RunTool.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

class Watch : public testing::Test {
 protected:
  /// A recording whose fixes are due at once, because they have one time, and are pairs of one place.
  std::string recording(int fixes) const {
    std::string text = "time,lat,lon,accuracy,speed,course\n";
    for (int i = 0; i < fixes; ++i) text += "1778319000,52.5," + std::to_string(13.4 + i / 2 * 1e-5) + ",5,14,90\n";
    return folder.file("drive.csv", text);
  }

  ToolFolder folder;
};

TEST_F(Watch, ShowsWhatTripShowsAndItsRecordingIsTheSameTripAgain) {
  const std::string file = recording(500);
  const std::string record = folder.path("record.gpx");
  const ToolRun watched = folder.run({"watch", "file:" + file, "--json", "--filter", "measured", "--record", record});
  EXPECT_EQ(watched.exitCode, 0) << watched.err;
  EXPECT_THAT(watched.err, HasSubstr("positions come from the recording"));
  for (const std::string& other : {file, record}) {
    const auto again = linesOf(folder.run({"trip", other, "--json", "--filter", "measured"}).out);
    const auto lines = linesOf(watched.out);
    ASSERT_EQ(lines.size(), again.size());
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
      json row = json::parse(lines[i]), expected = json::parse(again[i]);
      for (const char* key : {"line", "snappedLatitude", "snappedLongitude"}) {
        row.erase(key);
        expected.erase(key);
      }
      EXPECT_EQ(row, expected);
    }
  }
  EXPECT_EQ(folder.run({"watch", "file:" + file, "--record", record}).exitCode, 2) << "the recording is kept";
}

TEST_F(Watch, ARunWithoutAFixLeavesNoRecording) {
  const std::string record = folder.path("record.gpx");
  EXPECT_EQ(folder.run({"watch", "file:" + folder.path("none"), "--record", record}).exitCode, 3);
  EXPECT_EQ(folder.run({"watch", "file:" + recording(2), "--record", record}).exitCode, 0);
}

TEST_F(Watch, TheRecordingOutlastsTheReaderOfTheTableAndEndsWithASignal) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "the sanitizer's runtime (g++ 12) can lose a signal that comes while the program first waits";
#endif
  for (const int signal : {SIGTERM, SIGHUP, SIGQUIT}) {
    const std::string fifo = folder.path("fifo" + std::to_string(signal)), record = fifo + ".gpx";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    auto output = std::make_unique<ToolPipe>();
    ToolPipe messages;
    const pid_t tool =
        startTool({"watch", "nmea:" + fifo, "--record", record}, {"/dev/null", output->path(), messages.path()});
    std::ofstream receiver(fifo);
    const auto fix = [&receiver](const char* time, const char* sum) {
      receiver << "$GPRMC," << time << ",A,4648.0,N,00724.0,E,10.0,45.0,090526,,,A*" << sum << "\r\n" << std::flush;
    };
    fix("093000.00", "53");
    EXPECT_THAT(output->readLine(), testing::StartsWith("time\t"));
    output.reset();
    fix("093001.00", "52");
    std::string said;
    do {
      said = messages.readLine();
    } while (!said.empty() && said.find("standard output is closed") == std::string::npos);
    EXPECT_THAT(said, Not(testing::IsEmpty()));
    ::kill(tool, signal);
    EXPECT_EQ(waitForTool(tool).exitCode, 128 + signal);
    EXPECT_THAT(folder.run({"trip", record, "--quiet"}).err, HasSubstr(": 2 fixes"));
  }
}

TEST_F(Watch, ExitCodesTellWhatWasWrong) {
  EXPECT_EQ(folder.run({"watch", "gps"}).exitCode, 2);
  EXPECT_EQ(folder.run({"watch", "auto", "--for", "0"}).exitCode, 2);
  EXPECT_EQ(folder.run({"watch", "file:" + folder.path("none")}).exitCode, 3);
  EXPECT_EQ(folder.run({"watch", "file:" + folder.file("text", "no recording\n")}).exitCode, 3);
  EXPECT_EQ(folder.run({"watch", "file:" + folder.file("empty.csv", "lat,lon\n")}).exitCode, 1);
  EXPECT_EQ(folder.run({"watch", "--quiet", "--record", "/nowhere/x.gpx"}).exitCode, 2);
  const ToolRun nobody = folder.run({"watch", "gpsd:" + folder.path("none"), "--for", "0.3"});
  EXPECT_EQ(nobody.exitCode, 3);
  EXPECT_THAT(nobody.err, HasSubstr("does not answer"));
}

}  // namespace
