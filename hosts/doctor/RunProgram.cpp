// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <glib.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "Deadline.h"

namespace doctor {

ProgramRun runProgram(const std::string& program, const std::string& argument, const Deadline& deadline) {
  ProgramRun run;
  gchar* const found = g_find_program_in_path(program.c_str());
  if (found == nullptr) return run;
  std::string path = found, word = argument;
  g_free(found);
  run.isFound = true;

  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return run;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  std::array<char*, 3> arguments{path.data(), word.data(), nullptr};
  pid_t process = -1;
  const int failure = ::posix_spawn(&process, path.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  ::close(ends[1]);
  if (failure == 0) {
    constexpr std::size_t kMostOutput = 1 << 20;
    std::array<char, 4096> bytes;
    ssize_t count = 1;
    while (count > 0 && run.output.size() < kMostOutput && !run.isLate) {
      run.isLate = !deadline.wait(ends[0], POLLIN);
      if (!run.isLate) count = ::read(ends[0], bytes.data(), bytes.size());
      if (!run.isLate && count > 0) run.output.append(bytes.data(), static_cast<std::size_t>(count));
    }
    if (count > 0) ::kill(process, SIGKILL);  // late, or without end
    int status = 0;
    ::waitpid(process, &status, 0);
    if (WIFEXITED(status)) run.exitCode = WEXITSTATUS(status);
  }
  ::close(ends[0]);
  return run;
}

}  // namespace doctor
