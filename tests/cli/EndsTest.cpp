// SPDX-License-Identifier: Apache-2.0
// How the tool ends where the system gives it less than it needs.
#include <gmock/gmock.h>

#include <chrono>

#include "ChildProcess.h"
#include "HTTPTestServer.h"
#include "RunTool.h"

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

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
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
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

}  // namespace
