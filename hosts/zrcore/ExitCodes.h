// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_EXITCODES_H
#define ZRCORE_HOSTS_ZRCORE_EXITCODES_H

/// What the tool's exit codes mean, for all subcommands. A run that a signal ended gives 128 + the signal's number.
enum ExitCode : int {
  kExitDone = 0,
  kExitDataFault = 1,       ///< the data could not be used, wholly or in part
  kExitUsage = 2,           ///< the command line must be changed
  kExitServiceMissing = 3,  ///< the system does not give what the work needs
};

#endif
