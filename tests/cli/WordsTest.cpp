// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "RunTool.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

class Words : public testing::Test {
 protected:
  /// No line of it acts on a terminal, or holds more than 200 bytes of what was put into it.
  static void expectHarmless(const std::string& text) {
    for (const char* hostile : {"\x1b", "\u202e", "\u009b", "\r"}) EXPECT_THAT(text, Not(HasSubstr(hostile)));
    for (const std::string& line : linesOf(text)) EXPECT_LE(std::count(line.begin(), line.end(), 'Q'), 200) << line;
  }

  ToolFolder folder;
};

TEST_F(Words, ASlipIsToldInOneLineWithTheNameThatWasMeant) {
  const struct {
    std::vector<std::string> arguments;
    const char* line;
  } rows[] = {
      {{"tirp", "x"}, "'tirp' is no command; did you mean 'trip'?"},
      {{"help", "plce"}, "'plce' is no command; did you mean 'place'?"},
      {{"frobnicate"}, "'frobnicate' is no command; 'zrcore help' lists them"},
      {{"trip", kDrive, "--flter", "measured"}, "'--flter' is no option of 'zrcore trip'; did you mean '--filter'?"},
      {{"trip", "--flter=measured"}, "'--flter' is no option of 'zrcore trip'; did you mean '--filter'?"},
      {{"trip", kDrive, "--assume"}, "'--assume' is no option of 'zrcore trip'; did you mean '--assume-accuracy'?"},
      {{"--versoin"}, "'--versoin' is no option of 'zrcore'; did you mean '--version'?"},
      {{"--qqq", "trip", "x"}, "'--qqq' is no option of 'zrcore'; 'zrcore help trip' says more"},
      {{"ago", "2016-03-01T12:00:00Z", "x"}, "'x' is one argument too many; 'zrcore help ago' says more"},
      {{"trip"}, "FILE is required; 'zrcore help trip' says more"},
      {{}, "give a command; 'zrcore help' lists them"},
      {{"trip", kDrive, "--out", ""}, "--out: the name is empty; 'zrcore help trip' says more"},
      {{"config", "--key", "\xff"}, "--key: '\\xFF' is not UTF-8, and so no key"},
      {{"config", "--key", "k", "--type", "2147483648"},
       "--type: '2147483648' is no whole number from -2147483648 to 2147483647; 'zrcore help config' says more"},
  };
  for (const auto& row : rows) {
    const ToolRun run = folder.run(row.arguments);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, std::string("zrcore: ") + row.line + "\n");
    EXPECT_EQ(run.out, "");
  }
}

TEST_F(Words, HelpIsThereForTheToolAndForEachCommandAndTellsAllExitCodes) {
  const std::string all = folder.run({"help"}).out;
  for (const char* command : {"trip", "place", "config", "url", "ago", "say", "watch", "doctor"}) {
    EXPECT_THAT(all, HasSubstr(std::string("\n  ") + command + " "));
    const ToolRun help = folder.run({"help", command});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.out, folder.run({command, "--help"}).out);
    EXPECT_THAT(help.out, testing::ContainsRegex("Exit codes:(.|\n)*\n  3  "));
  }
}

TEST_F(Words, AnAddressThatCannotBeMadeNamesTheWordAtFault) {
  const struct {
    std::vector<std::string> words;
    const char* blamed;
  } rows[] = {
      {{"http://a b", "p"}, "the base 'http://a b'"},      {{"http://a", "p q"}, "the path 'p q'"},
      {{"http://a", "p", "k=1", "l=100%"}, "'l=100%'"},    {{"http://a", "p", "\xff=1"}, "'\\xFF=1' is not UTF-8"},
      {{"http://a#b", "p#q"}, "make no address together"},
  };
  for (const auto& row : rows) {
    auto arguments = row.words;
    arguments.insert(arguments.begin(), "url");
    const ToolRun run = folder.run(arguments);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.err, HasSubstr(row.blamed));
    EXPECT_EQ(linesOf(run.err).size(), 1u);
  }
}

TEST_F(Words, WhateverComesFromOutsideIsCutAndEscapedInEachMessage) {
  const std::string hostile = "\x1b[2J\u202e\u009b\r" + std::string(5000, 'Q');
  const std::string file = folder.file("hostile.csv", "time,lat,lon\n" + hostile + "," + hostile + ",7\n");
  const std::string keys = json({{hostile, 1}, {"zip", {1}}, {"error", hostile}}).dump();
  const std::string answer =
      folder.file("a.json", "[" + keys + ",{\"city\":\"x\",\"" + std::string(300, 'Q') + "\":1}]");
  const std::vector<std::vector<std::string>> runs{
      {hostile},
      {"help", hostile},
      {"trip", hostile},
      {"trip", file},
      {"trip", kDrive, "--" + hostile},
      {"trip", kDrive, hostile},
      {"trip", kDrive, "--rate", hostile},
      {"trip", kDrive, "--filter", hostile},
      {"trip", kDrive, "--from", hostile},
      {"trip", kDrive, "--out", hostile},
      {"trip", kDrive, "--speak", hostile},
      {"place", answer, "--verbose"},
      {"place", folder.file("cut.json", "[\"" + hostile)},
      {"place", folder.file("odd.json", "[" + hostile + "]")},
      {"place", hostile},
      {"watch", hostile},
      {"watch", "gpsd:" + folder.path(hostile), "--for", "0.1"},
      {"watch", "file:" + hostile, "--record", folder.path("r.gpx")},
      {"watch", "file:" + file, "--record", hostile},
      {"say", "x", "--voice", hostile},
      {"say", "x", "--to", "wav:" + hostile},
      {"config", "--key", hostile + "\xff"},
      {"config", "--key", "k", "--base", hostile},
      {"config", "--key", "k", "--base", "http://" + std::string(5000, 'Q') + ":1", "--fallback", answer},
      {"config", "--key", "k", "--fallback", hostile},
      {"config", "--key", "k", "--type", hostile},
      {"url", hostile, "x"},
      {"url", "http://a", "b", hostile},
      {"ago", hostile},
  };
  for (const auto& arguments : runs) {
    const ToolRun run = folder.run(arguments);
    SCOPED_TRACE(testing::PrintToString(arguments).substr(0, 200));
    EXPECT_THAT(run.exitCode, testing::AnyOf(1, 2, 3));
    EXPECT_THAT(run.err, testing::StartsWith("zrcore: "));
    expectHarmless(run.err);
  }
}

TEST_F(Words, ResultsKeepAllOfATextButWhatATerminalWouldObey) {
  const std::string city = "Q\u202e\u009b\t\x7f\x1b";
  const std::string answer =
      folder.file("a.json", json({{"city", city + std::string(300, 'x')}, {"state", "s"}}).dump());
  const ToolRun lines = folder.run({"place", answer}), document = folder.run({"place", answer, "--json"});
  expectHarmless(lines.out);
  EXPECT_THAT(lines.out, HasSubstr(std::string(300, 'x')));
  expectHarmless(document.out);
  EXPECT_EQ(json::parse(document.out)[0]["city"], city + std::string(300, 'x'));

  const std::string recording = folder.path("Q\u202e\u009b.csv");
  std::filesystem::copy(kDrive, recording);
  const ToolRun trip = folder.run({"trip", recording, "--json"});
  expectHarmless(trip.out);
  EXPECT_EQ(json::parse(linesOf(trip.out).back())["summary"]["source"], "Q\u202e\u009b.csv");
}

}  // namespace
