// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_EXITCODES_H
#define ZRCORE_HOSTS_ZRCORE_EXITCODES_H

#include <trip/outputs/OutputError.h>

#include "Interruption.h"

/// What the tool's exit codes mean, for all subcommands. A run that a signal ended gives 128 + the signal's number.
enum ExitCode : int {
  kExitDone = 0,
  kExitDataFault = 1,       ///< the data could not be used, wholly or in part
  kExitUsage = 2,           ///< the command line must be changed
  kExitServiceMissing = 3,  ///< the system does not give what the work needs
};

/// What a run gives that could not write: one whose path must be changed is not like one that lacks room or rights.
inline int exitCodeOf(const trip::OutputError& error) {
  if (interruption::signal() != 0) return interruption::exitCode();
  return error.isOfPath() ? kExitUsage : kExitServiceMissing;
}

#endif
