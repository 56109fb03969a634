// SPDX-License-Identifier: Apache-2.0
#include "ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

namespace {

std::vector<std::string> environmentWith(const ChildProcess::Environment& added) {
  std::vector<std::string> all;
  for (char** entry = environ; *entry; ++entry) {
    const std::string text = *entry;
    if (!added.contains(text.substr(0, text.find('=')))) all.push_back(text);
  }
  for (const auto& [name, value] : added) all.push_back(name + '=' + value);
  return all;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

int millisecondsUntil(Clock::time_point deadline) {
  const auto left = std::chrono::duration_cast<milliseconds>(deadline - Clock::now()).count();
  return static_cast<int>(left > 0 ? left : 0);
}

}  // namespace

ChildProcess::ChildProcess(const Arguments& arguments, const Environment& added, const std::string& log) {
  int ends[2] = {-1, -1};
  if (pipe2(ends, O_CLOEXEC) != 0) return;
  out_ = ends[0];
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
  Arguments texts = arguments;
  std::vector<std::string> variables = environmentWith(added);
  if (posix_spawnp(&pid_, texts[0].c_str(), &actions, nullptr, pointersTo(texts).data(),
                   pointersTo(variables).data()) != 0) {
    pid_ = -1;
  }
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
}

ChildProcess::~ChildProcess() {
  if (pid_ > 0) {
    send(SIGTERM);
    exitCode(milliseconds(5000));
  }
  if (pid_ > 0) {
    send(SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  if (out_ >= 0) close(out_);
}

void ChildProcess::send(int signal) const {
  if (pid_ > 0) kill(pid_, signal);
}

std::optional<std::string> ChildProcess::readLine(milliseconds patience) {
  const auto deadline = Clock::now() + patience;
  for (;;) {
    if (const auto end = buffer_.find('\n'); end != std::string::npos) {
      std::string line = buffer_.substr(0, end);
      buffer_.erase(0, end + 1);
      return line;
    }
    pollfd waited{out_, POLLIN, 0};
    if (poll(&waited, 1, millisecondsUntil(deadline)) <= 0) return std::nullopt;
    char bytes[65536];
    const ssize_t count = read(out_, bytes, sizeof bytes);
    if (count <= 0) return std::nullopt;
    buffer_.append(bytes, static_cast<std::size_t>(count));
  }
}

std::optional<int> ChildProcess::exitCode(milliseconds patience) {
  if (pid_ <= 0) return std::nullopt;
  const int end = static_cast<int>(syscall(SYS_pidfd_open, pid_, 0));
  pollfd waited{end, POLLIN, 0};
  const bool hasEnded = poll(&waited, 1, static_cast<int>(patience.count())) > 0;
  close(end);
  if (!hasEnded) return std::nullopt;
  int status = 0;
  waitpid(pid_, &status, 0);
  pid_ = -1;
  return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
}

std::optional<std::string> ChildProcess::output(const Arguments& arguments, const Environment& added) {
  ChildProcess program(arguments, added);
  std::string all;
  while (const auto line = program.readLine(milliseconds(20000))) all += *line + '\n';
  all += program.buffer_;
  return program.exitCode(milliseconds(20000)) == 0 ? std::optional(all) : std::nullopt;
}

bool ChildProcess::exists(const std::string& program) {
  std::istringstream folders(std::getenv("PATH") ? std::getenv("PATH") : "");
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0) return true;
  }
  return false;
}
