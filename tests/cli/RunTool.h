// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_CLI_RUNTOOL_H
#define ZRCORE_TESTS_CLI_RUNTOOL_H

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

/// The command line tool as its users run it: the real program, in a process of its own.

inline const std::string kDrive = ZRCORE_SAMPLES "/drive.csv";

/// How a run ended, and what it left on its streams.
struct ToolRun {
  int exitCode = -1;  ///< -1: killed by a signal
  std::string out, err;
  long peakKilobytes = 0;
};

/// Files that the tool's standard streams are.
struct ToolStreams {
  std::string in = "/dev/null", out, err;
};

/// A pipe from the tool to the test.
class ToolPipe {
 public:
  ToolPipe();
  ToolPipe(const ToolPipe&) = delete;
  ToolPipe& operator=(const ToolPipe&) = delete;
  ~ToolPipe();

  /// The name under which the tool opens its end, as one of its streams.
  std::string path() const;
  /// The next line that the tool writes; empty at the end. Call it once the tool was started.
  std::string readLine();

 private:
  int readEnd_ = -1, writeEnd_ = -1;
};

/// Starts the tool; the caller waits for it.
pid_t startTool(const std::vector<std::string>& arguments, const ToolStreams& streams);

/// Waits for the end of a process; `out` and `err` stay empty.
ToolRun waitForTool(pid_t process);

/// A folder for the files of one test, removed at its end.
class ToolFolder {
 public:
  ToolFolder();
  ToolFolder(const ToolFolder&) = delete;
  ToolFolder& operator=(const ToolFolder&) = delete;
  ~ToolFolder();

  std::string path(const std::string& name) const { return (folder_ / name).string(); }
  /// Writes a file and returns its path.
  std::string file(const std::string& name, const std::string& content) const;

  /// Runs the tool to its end, its standard input read from a file.
  ToolRun run(const std::vector<std::string>& arguments, const std::string& in = "/dev/null") const;

 private:
  std::filesystem::path folder_;
};

std::string textOfFile(const std::filesystem::path& path);
std::vector<std::string> linesOf(const std::string& text);

#endif
