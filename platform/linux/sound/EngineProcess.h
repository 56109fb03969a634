// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_ENGINEPROCESS_H
#define ZRCORE_LINUX_SOUND_ENGINEPROCESS_H

#include <owners/FileDescriptor.h>
#include <platform/Callback.h>
#include <sys/types.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "loop/Loop.h"

/// A program that is given a text on its standard input and whose standard output is read on the loop. It runs in a
/// process group of its own, without a sound server; dropping this object kills the group.
class EngineProcess {
 public:
  struct Events {
    Callback<std::string_view> output;
    /// It has ended, and all output has been reported. `fault` is empty after a success; otherwise it says in words how
    /// it ended and what it said last. The object may be dropped here, as in `output`.
    Callback<const std::string&> ended;
  };

  /// Starts `command`, whose first word is looked for on the path. No shell takes part.
  /// @return null, and `fault` in words, when it cannot be started.
  static std::unique_ptr<EngineProcess> start(Loop& loop, const std::vector<std::string>& command, std::string input,
                                              Events events, std::string& fault);
  EngineProcess(const EngineProcess&) = delete;
  EngineProcess& operator=(const EngineProcess&) = delete;
  ~EngineProcess();

  /// While paused nothing is read, so that the program has to wait.
  void setPaused(bool isPaused);
  pid_t processId() const { return processId_; }

 private:
  EngineProcess(Loop& loop, std::string input, Events events);
  std::string spawn(const std::vector<std::string>& command);
  void writeInput();
  void readOutput();
  void endIfDone();
  std::string complaint() const;

  Loop& loop_;
  std::string input_;
  Events events_;
  pid_t processId_ = -1;
  FileDescriptor process_, stdin_, stdout_, stderr_;
  std::unique_ptr<Loop::Wait> processWait_, inputWait_, outputWait_;
  std::string exitFault_;
  bool hasExited_ = false;
};

#endif
