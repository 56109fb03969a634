// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_ENDS_FAULTYRUN_H
#define ZRCORE_TESTS_ENDS_FAULTYRUN_H

#include <string>
#include <vector>

#include "RunTool.h"

/// Something that the system may refuse a program.
struct Refusal {
  const char* name;
  std::vector<int> calls;  ///< numbers of system calls; none: memory
  int error = 0;
};

/// Runs the tool, and refuses it the `which`-th of such requests that it makes from `main` on, counted from 1; 0: none.
/// What it starts in turn is refused nothing.
/// @param requests  how many it has made; of memory 0 when a signal has ended it
ToolRun runRefusing(const Refusal& refusal, long which, const std::vector<std::string>& arguments,
                    const ToolFolder& folder, long& requests);

#endif
