// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_CHILDPROCESS_H
#define ZRCORE_TESTS_SUPPORT_CHILDPROCESS_H

#include <sys/types.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// A program that a test starts, reads and ends.
class ChildProcess {
 public:
  using Arguments = std::vector<std::string>;
  using Environment = std::map<std::string, std::string>;

  /// Starts it. What it says on its standard error stream goes to `log`.
  explicit ChildProcess(const Arguments& arguments, const Environment& added = {},
                        const std::string& log = "/dev/null");
  /// Ends it, politely at first, and waits.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// -1 once its end has been waited for, and where it could not be started.
  pid_t pid() const { return pid_; }
  /// Sends it a signal. Use this: kill() takes a pid of -1 for all processes of the machine.
  void send(int signal) const;
  /// The next line of its standard output; absent at the end, or when none comes in time.
  std::optional<std::string> readLine(std::chrono::milliseconds patience);
  /// Waits for its end. @return its exit code; absent when a signal ended it, or when it goes on.
  std::optional<int> exitCode(std::chrono::milliseconds patience);

  /// Runs a program to its end. @return what it wrote; absent when it failed or could not be started.
  static std::optional<std::string> output(const Arguments& arguments, const Environment& added = {});
  /// Whether there is a program of that name.
  static bool exists(const std::string& program);

 private:
  pid_t pid_ = -1;
  int out_ = -1;
  std::string buffer_;
};

#endif
