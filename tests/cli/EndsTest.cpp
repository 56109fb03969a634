// SPDX-License-Identifier: Apache-2.0
// How the tool ends where the system gives it less than it needs.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <future>

#include "ChildProcess.h"
#include "HTTPTestServer.h"
#include "RunTool.h"

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// Runs the tool with one of the system's limits (prlimit(1)). @return exit code -1 for a signal
ToolRun runLimited(const ToolFolder& folder, const std::string& limit, std::vector<std::string> arguments) {
  const std::string err = folder.path(".limited");
  std::filesystem::remove(err);
  arguments.insert(arguments.begin(), {"prlimit", limit, "--core=0", ZRCORE_TOOL});
  ChildProcess tool(arguments, {}, err);
  ToolRun run;
  while (const auto line = tool.readLine(std::chrono::seconds(60))) run.out += *line + '\n';
  run.exitCode = tool.exitCode(std::chrono::seconds(60)).value_or(-1);
  run.err = textOfFile(err);
  return run;
}

TEST(Ends, WithTooLittleMemoryItSaysWhatToDoAndIsNeverAborted) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer itself needs more address space than these limits leave";
#endif
  std::string flood = "[";
  while (flood.size() < 60'000'000) flood += R"({"formatted":"x","a":{"b":[1,2,3]}},)";
  flood += "1]";
  const ToolFolder folder;
  const std::string file = folder.file("flood.json", flood);
  HTTPTestServer server;
  server.on("/long/mapconfig", HTTPTestServer::answering(200, flood));
  server.on("/text/mapconfig", HTTPTestServer::answering(200, "[\"" + std::string(8'000'000, 'x') + "\"]"));
  server.on("/many/mapconfig", HTTPTestServer::answering(200, flood.substr(0, 8'000'000)));
  const auto config = [&](const std::string& base) { return std::vector<std::string>{"config", "--key", "k", base}; };
  const struct {
    std::vector<std::string> arguments;
    std::vector<int> megabytes;
  } rows[] = {
      {{"place", file}, {60, 90}},
      {config("--base=" + server.url("/long")), {60, 110, 200}},
      {config("--base=" + server.url("/text")), {60, 66}},
      {config("--base=" + server.url("/many")), {60, 66, 80}},
      {{"config", "--key", "k", "--base", "http://127.0.0.1:1", "--fallback", file}, {60, 130, 250}},
  };
  for (const auto& row : rows) {
    for (const int megabytes : row.megabytes) {
      SCOPED_TRACE(row.arguments[0] + " " + row.arguments.back() + " in " + std::to_string(megabytes) + " MB");
      const ToolRun run = runLimited(folder, "--as=" + std::to_string(megabytes) + "000000", row.arguments);
      EXPECT_EQ(run.exitCode, 3) << run.err;
      EXPECT_THAT(run.err, Not(HasSubstr("bad_alloc")));
      EXPECT_THAT(linesOf(run.err).back(), AnyOf(HasSubstr("memory"), HasSubstr("longer than is read")));
    }
  }
}

TEST(Ends, WithTooFewDescriptorsItSaysWhatToDo) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer's look for leaks takes descriptors of its own";
#endif
  const ToolFolder folder;
  const std::vector<std::string> runs[] = {
      {"trip", kDrive, "--out", folder.path("out")},
      {"place", ZRCORE_SAMPLES "/places/photon/house.json"},
      {"config", "--key", "k", "--base", "http://127.0.0.1:1"},
      {"say", "hello", "--to", "wav:" + folder.path("say.wav")},
      {"watch", "file:" + kDrive, "--record", folder.path("watch.gpx")},
      {"doctor"},
  };
  for (const auto& arguments : runs) {
    for (const char* limit : {"--nofile=10", "--nofile=16", "--nofile=20"}) {
      SCOPED_TRACE(arguments[0] + " " + limit);
      const ToolRun run = runLimited(folder, limit, arguments);
      EXPECT_EQ(run.exitCode, 3);
      EXPECT_THAT(run.err, HasSubstr("ulimit -n"));
      EXPECT_EQ(linesOf(run.err).size(), 1u);
    }
  }
  for (const char* name : {"out", "say.wav", "watch.gpx"}) EXPECT_FALSE(std::filesystem::exists(folder.path(name)));
}

/// What a command gives when a signal ends it while it waits, and what it must leave.
TEST(Ends, ASignalEndsEachCommandWithItsCodeAndWholeFiles) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "the sanitizer's runtime (g++ 12) can lose a signal that comes while the program first waits";
#endif
  HTTPTestServer server;
  const ToolFolder folder;
  const std::string fifo = folder.path("fifo"), record = folder.path("watch.gpx");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  const int feeder = ::open(fifo.c_str(), O_RDWR | O_CLOEXEC);
  std::promise<void> asked;
  server.onOthers([&asked](const HTTPTestServer::Request& request, HTTPTestServer::Connection& connection) {
    asked.set_value();
    HTTPTestServer::staySilent(request, connection);
  });
  const struct {
    std::vector<std::string> arguments;
    std::string firstLine;  ///< on the standard output, when it waits; empty: the server is asked
    bool catchesSignals;    ///< otherwise it holds nothing that would have to be completed or restored
  } rows[] = {
      {{"trip", fifo}, "time\t", true},
      {{"watch", "nmea:" + fifo, "--record", record}, "time\t", true},
      {{"config", "--key", "k", "--base", server.url("")}, "", false},
  };
  for (const auto& row : rows) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
      SCOPED_TRACE(row.arguments[0] + " " + std::to_string(signal));
      std::filesystem::remove(record);
      asked = {};
      ToolPipe reader;
      const pid_t tool = startTool(row.arguments, {"/dev/null", reader.path(), folder.path("err")});
      if (row.firstLine.empty()) {
        asked.get_future().wait();
      } else {
        constexpr std::string_view kFix = "$GPRMC,120000,A,5230.0,N,01324.0,E,10.0,90.0,090526,,\r\n";
        constexpr std::string_view kNext = "$GPRMC,120001,A,5230.1,N,01324.0,E,10.0,90.0,090526,,\r\n";
        for (const auto sentence : {kFix, kNext}) ASSERT_GT(::write(feeder, sentence.data(), sentence.size()), 0);
        EXPECT_THAT(reader.readLine(), StartsWith(row.firstLine));
      }
      ::kill(tool, signal);
      int status = 0;
      ASSERT_EQ(::waitpid(tool, &status, 0), tool);
      if (row.catchesSignals) {
        EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, 128 + signal);
      } else {
        EXPECT_EQ(WIFSIGNALED(status) ? WTERMSIG(status) : 0, signal);
      }
      if (row.arguments.back() != record) continue;
      EXPECT_TRUE(textOfFile(record).ends_with("</gpx>\n")) << textOfFile(record);
    }
  }
  ::close(feeder);
}

TEST(Ends, AFullStandardOutputAndTheLimitOfAFilesSizeAreToldByEachCommand) {
  const ToolFolder folder;
  const std::string packaged = folder.file("tile_config.json", R"({"mapconfig":{"1":{"geocode":{"sslurl":"c"}}}})");
  const std::string err = folder.path("err");
  const std::vector<std::string> shown[] = {
      {"place", ZRCORE_SAMPLES "/places/photon/house.json"},
      {"config", "--key", "k", "--base", "http://127.0.0.1:1", "--fallback", packaged},
      {"watch", "file:" + kDrive},
      {"doctor"},
  };
  for (const auto& arguments : shown) {
    SCOPED_TRACE(arguments[0]);
    EXPECT_EQ(waitForTool(startTool(arguments, {"/dev/null", "/dev/full", err})).exitCode, 3);
    EXPECT_THAT(textOfFile(err), HasSubstr("standard output: No space left"));
  }
  const std::string wav = folder.path("say.wav");
  const ToolRun said = runLimited(folder, "--fsize=4096", {"say", "Turn left now", "--to", "wav:" + wav});
  EXPECT_THAT(said.exitCode, AnyOf(3, 128 + SIGXFSZ)) << said.err;
  EXPECT_FALSE(std::filesystem::exists(wav)) << "half of what was said is nothing";
}

}  // namespace
