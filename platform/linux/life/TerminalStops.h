// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_TERMINALSTOPS_H
#define ZRCORE_LINUX_TERMINALSTOPS_H

#include <functional>
#include <memory>

#include "loop/Loop.h"

/// The terminal's stop key (SIGTSTP) and SIGCONT, as events of the loop. One object a process: signals have one owner.
class TerminalStops {
 public:
  /// @param stopping   called before the process stops
  /// @param continued  called after it goes on
  TerminalStops(Loop& loop, std::function<void()> stopping, std::function<void()> continued);
  TerminalStops(const TerminalStops&) = delete;
  TerminalStops& operator=(const TerminalStops&) = delete;
  ~TerminalStops();  // the signals do what they did before

 private:
  void read();

  Loop& loop_;
  std::function<void()> stopping_, continued_;
  std::unique_ptr<Loop::Wait> readable_, stop_;
};

#endif
