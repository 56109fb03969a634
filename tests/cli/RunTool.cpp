// SPDX-License-Identifier: Apache-2.0
#include "RunTool.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <iterator>
#include <sstream>

ToolPipe::ToolPipe() {
  std::array<int, 2> ends{};
  EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
  readEnd_ = ends[0];
  writeEnd_ = ends[1];
}

ToolPipe::~ToolPipe() {
  ::close(readEnd_);
  if (writeEnd_ >= 0) ::close(writeEnd_);
}

std::string ToolPipe::path() const { return "/dev/fd/" + std::to_string(writeEnd_); }

std::string ToolPipe::readLine() {
  if (writeEnd_ >= 0) ::close(writeEnd_);  // so that the tool's end is the only one
  writeEnd_ = -1;
  std::string line;
  for (char c = 0; ::read(readEnd_, &c, 1) == 1 && c != '\n';) line += c;
  return line;
}

pid_t startTool(const std::vector<std::string>& arguments, const ToolStreams& streams) {
  std::vector<std::string> words{ZRCORE_TOOL};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (auto& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, streams.in.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, streams.out.c_str(), kWrite, 0600);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, streams.err.c_str(), kWrite, 0600);
  pid_t process = -1;
  EXPECT_EQ(::posix_spawn(&process, ZRCORE_TOOL, &actions, nullptr, argv.data(), environ), 0);
  posix_spawn_file_actions_destroy(&actions);
  return process;
}

ToolRun waitForTool(pid_t process) {
  int status = 0;
  rusage usage{};
  EXPECT_EQ(::wait4(process, &status, 0, &usage), process);
  ToolRun run;
  if (WIFEXITED(status)) run.exitCode = WEXITSTATUS(status);
  run.peakKilobytes = usage.ru_maxrss;
  return run;
}

ToolFolder::ToolFolder() {
  std::string name = testing::TempDir() + "zrcoreXXXXXX";
  folder_ = ::mkdtemp(name.data());
}

ToolFolder::~ToolFolder() { std::filesystem::remove_all(folder_); }

std::string ToolFolder::file(const std::string& name, const std::string& content) const {
  std::ofstream(path(name), std::ios::binary) << content;
  return path(name);
}

ToolRun ToolFolder::run(const std::vector<std::string>& arguments, const std::string& in) const {
  const ToolStreams streams{in, path(".out"), path(".err")};
  ToolRun run = waitForTool(startTool(arguments, streams));
  run.out = textOfFile(streams.out);
  run.err = textOfFile(streams.err);
  return run;
}

std::string textOfFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}
