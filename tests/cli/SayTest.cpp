// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "RunTool.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;

constexpr double kSamplesPerSecond = 22050.0;

/// The samples of a file that the tool has written.
std::vector<std::int16_t> samplesOf(const std::string& path) {
  const std::string bytes = textOfFile(path);
  constexpr std::size_t kHeader = 44;
  std::vector<std::int16_t> samples(bytes.size() > kHeader ? (bytes.size() - kHeader) / 2 : 0);
  if (!samples.empty()) std::memcpy(samples.data(), bytes.data() + kHeader, samples.size() * 2);
  return samples;
}

struct Stretch {
  double begin, end;
  int peak;
};

/// The stretches of sound that stand more than half a second apart, in seconds.
std::vector<Stretch> stretchesOf(const std::vector<std::int16_t>& samples) {
  std::vector<Stretch> stretches;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    if (std::abs(samples[i]) < 100) continue;
    const double at = static_cast<double>(i) / kSamplesPerSecond;
    if (stretches.empty() || at - stretches.back().end > 0.5) stretches.push_back({at, at, 0});
    stretches.back().end = at;
    stretches.back().peak = std::max(stretches.back().peak, std::abs(samples[i]));
  }
  return stretches;
}

class Say : public testing::Test {
 protected:
  Say() {
    ::setenv("PULSE_SERVER", ("unix:" + folder.path("no-server")).c_str(), 1);
    ::setenv("XDG_RUNTIME_DIR", folder.path("").c_str(), 1);
    hasEngine = std::system("command -v espeak-ng >/dev/null") == 0;
  }
  /// An engine in front of the real one.
  void standIn(const std::string& script) {
    const std::string engine = folder.file("espeak-ng", "#!/bin/sh\n" + script);
    std::filesystem::permissions(engine, std::filesystem::perms::owner_all);
    ::setenv("PATH", (folder.path("") + ":" + std::getenv("PATH")).c_str(), 1);
  }

  ToolFolder folder;
  bool hasEngine;
};

TEST_F(Say, EndsWithTheCodeThatTellsWhatMustBeChanged) {
  if (!hasEngine) GTEST_SKIP() << "espeak-ng is not installed: run scripts/setup";
  const std::string wav = "wav:" + folder.path("a.wav"), victim = folder.file("victim", "mine");
  std::filesystem::create_symlink(victim, folder.path("link.wav"));
  const struct {
    std::vector<std::string> arguments;
    int exitCode;
    const char* message;
  } rows[] = {
      {{"say", "Turn left", "--to", wav}, 0, ""},
      {{"say", "Turn left", "--to", wav}, 2, "--force"},
      {{"say", "links", "", "--to", wav, "--force", "--voice", "de", "--rate", "1", "--volume", "0.5"}, 0, ""},
      {{"say", "--", "--stdout"}, 3, "no sound server"},
      {{"say", "x", "--to", wav, "--force", "--voice", "xx-YY"}, 3, "voice does not exist"},
      {{"say", "x", "--to", wav, "--force", "--voice", "-x"}, 2, "language tag"},
      {{"say", "x", "--to", "wav:"}, 2, "wav:FILE"},
      {{"say", "x", "--to", "file.wav"}, 2, "wav:FILE"},
      {{"say", "x", "--to", "wav:" + folder.path("new.wav"), "--voice", "xx-YY"}, 3, "voice does not exist"},
      {{"say", "x", "--to", "wav:" + folder.path("new.wav"), "--voice", "en"}, 0, ""},
      {{"say", "x", "--to", "wav:" + folder.path("link.wav")}, 2, "--force"},
      {{"say", "x", "--to", "wav:" + folder.path("link.wav"), "--force"}, 0, ""},
      {{"say", "x", "--to", "wav:/nonexistent/a.wav"}, 2, "No such file"},
      {{"say", "x", "--rate", "1.5"}, 2, "--rate"},
      {{"say", "x", "--volume", "-1"}, 2, "--volume"},
      {{"say"}, 2, "TEXT"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.arguments));
    const ToolRun run = folder.run(row.arguments);
    EXPECT_EQ(run.exitCode, row.exitCode) << run.err;
    EXPECT_THAT(run.err, HasSubstr(row.message));
    EXPECT_EQ(run.err.empty(), *row.message == 0);
    EXPECT_EQ(run.out, "");
  }
  EXPECT_EQ(textOfFile(victim), "mine") << "a link is replaced, and not followed";
}

TEST_F(Say, RateAndVolumeAreHeardAndTextsFollowOneAnother) {
  if (!hasEngine) GTEST_SKIP() << "espeak-ng is not installed: run scripts/setup";
  const auto spoken = [this](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "say");
    arguments.insert(arguments.end(), {"--force", "--to", "wav:" + folder.path("a.wav")});
    EXPECT_EQ(folder.run(arguments).exitCode, 0);
    return samplesOf(folder.path("a.wav"));
  };
  const auto peak = [](const std::vector<std::int16_t>& samples) {
    return static_cast<double>(*std::max_element(samples.begin(), samples.end()));
  };
  const std::string text = "In four hundred meters, turn left onto Main Street.";
  const auto usual = spoken({text}), fast = spoken({text, "--rate", "1"}), slow = spoken({text, "--rate", "0"}),
             quiet = spoken({text, "--volume", "0.5"}), twice = spoken({text, text});
  const auto length = static_cast<double>(usual.size());
  EXPECT_NEAR(length / kSamplesPerSecond, 3.0, 0.5);
  EXPECT_LT(static_cast<double>(fast.size()), 0.7 * length);
  EXPECT_GT(static_cast<double>(slow.size()), 1.5 * length);
  EXPECT_NEAR(peak(quiet) / peak(usual), 0.5, 0.1);
  EXPECT_EQ(twice.size(), 2 * usual.size());
}

TEST_F(Say, ASignalEndsItCleanly) {
  const std::string pipe = folder.path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  standIn("echo started > " + pipe + "; exec sleep 1000");
  const pid_t tool = startTool({"say", "x", "--to", "wav:" + folder.path("a.wav")},
                               {"/dev/null", folder.path("out"), folder.path("err")});
  std::string line;
  std::getline(std::ifstream(pipe) >> std::ws, line);
  EXPECT_EQ(line, "started");
  ::kill(tool, SIGTERM);
  EXPECT_EQ(waitForTool(tool).exitCode, 128 + SIGTERM);
}

TEST_F(Say, ATripSpeaksItsStartItsTurnsAndItsEndWhereTheyAre) {
  if (!hasEngine) GTEST_SKIP() << "espeak-ng is not installed: run scripts/setup";
  const std::string wav = folder.path("trip.wav");
  const ToolRun run = folder.run({"trip", kDrive, "--json", "--speak", "wav:" + wav});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  std::vector<json> fixes;
  for (const std::string& line : linesOf(run.out)) fixes.push_back(json::parse(line));
  fixes.pop_back();  // the summary

  // What each fix is worth saying: the first, the last, and where the course has turned within a few significant fixes.
  const auto secondOfDay = [](const json& fix) {
    const std::string time = fix["time"];
    return std::stod(time.substr(11, 2)) * 3600 + std::stod(time.substr(14, 2)) * 60 + std::stod(time.substr(17, 6));
  };
  const double start = secondOfDay(fixes.front()), length = secondOfDay(fixes.back()) - start;
  const auto samples = samplesOf(wav);
  const auto stretches = stretchesOf(samples);
  ASSERT_GT(stretches.size(), 5u);
  EXPECT_LT(stretches.front().begin, 0.2);
  EXPECT_NEAR(stretches.back().begin, length, 0.2);
  std::ofstream report(ZRCORE_REPORTS "/trip-wav.md");
  report << "Duration " << static_cast<double>(samples.size()) / kSamplesPerSecond << " s, of the recording " << length
         << " s.\n\n| prompt starts at s | ends at s | peak | fix | course turned by |\n|---|---|---|---|---|\n";
  for (const Stretch& stretch : stretches) {
    const auto after = std::find_if(fixes.begin(), fixes.end(),
                                    [&](const json& fix) { return secondOfDay(fix) - start > stretch.begin + 0.001; });
    const json& cause = *std::prev(after);
    EXPECT_LT(stretch.begin - (secondOfDay(cause) - start), 0.2) << "a prompt begins with the fix that caused it";
    double turned = 0.0;
    int seen = 0;
    for (auto before = std::prev(after); seen < 6; --before) {
      if ((*before)["significant"] == true) {
        ++seen;
        const double change = std::remainder(
            cause["smoothCourseDegrees"].get<double>() - (*before)["smoothCourseDegrees"].get<double>(), 360.0);
        if (std::fabs(change) > std::fabs(turned)) turned = change;
      }
      if (before == fixes.begin()) break;
    }
    const bool isEnd = &stretch == &stretches.front() || &stretch == &stretches.back();
    EXPECT_TRUE(isEnd || std::fabs(turned) > 40.0) << stretch.begin;
    EXPECT_GT(stretch.peak, 5000);
    report << "| " << stretch.begin << " | " << stretch.end << " | " << stretch.peak << " | " << cause["index"] << " | "
           << (isEnd ? "-" : std::to_string(std::lround(turned))) << " |\n";
  }
}

TEST_F(Say, ATripWithoutAnEngineIsReplayedAndNamesTheDoctorOnce) {
  ::setenv("PATH", "/nonexistent", 1);
  const ToolRun run = folder.run({"trip", kDrive, "--quiet", "--speak", "wav:" + folder.path("a.wav")});
  EXPECT_EQ(run.exitCode, 0);
  const auto lines = linesOf(run.err);
  EXPECT_EQ(std::count_if(lines.begin(), lines.end(), [](const auto& line) { return line.starts_with("zrcore:"); }), 2);
  EXPECT_THAT(run.err, HasSubstr("espeak-ng cannot be started"));
  EXPECT_THAT(run.err, testing::ContainsRegex("--speak: 0 of [0-9]+ prompts were heard; 'zrcore doctor' tells"));
  EXPECT_FALSE(std::filesystem::exists(folder.path("a.wav")));
  EXPECT_EQ(folder.run({"trip", kDrive, "--quiet", "--speak", "sound"}).exitCode, 0);
}

TEST_F(Say, WatchingSpeaksOnePromptAfterTheOther) {
  if (!hasEngine) GTEST_SKIP() << "espeak-ng is not installed: run scripts/setup";
  // Along a street, to the left, along another one; without times, so that the fixes are due at once.
  std::string text = "lat,lon,accuracy,speed,course\n";
  for (int i = 0; i < 40; ++i) text += "52.5," + std::to_string(13.4 + i * 1e-4) + ",5,14,90\n";
  for (int i = 0; i < 40; ++i) text += std::to_string(52.5 + i * 1e-4) + ",13.404,5,14,0\n";
  const std::string wav = folder.path("watched.wav");
  const ToolRun run = folder.run(
      {"watch", "file:" + folder.file("corner.csv", text), "--quiet", "--filter", "measured", "--speak", "wav:" + wav});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  const auto samples = samplesOf(wav);
  const double seconds = static_cast<double>(samples.size()) / kSamplesPerSecond;
  EXPECT_THAT(seconds, testing::AllOf(testing::Gt(2.0), testing::Lt(6.0))) << "start, one turn, end";
}

}  // namespace
