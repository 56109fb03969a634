// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_WATCH_WATCHRUN_H
#define ZRCORE_HOSTS_ZRCORE_WATCH_WATCHRUN_H

#include <zrcore/sound/SoundTarget.h>

#include <optional>
#include <string>

/// What the command line of `zrcore watch` says.
struct WatchArguments {
  std::string source = "auto";
  std::optional<std::string> recordFile;
  std::string filter = "measured";    ///< or "documented"
  std::optional<double> forSeconds;   ///< nullopt: until it is interrupted
  std::optional<SoundTarget> speech;  ///< nullopt: nothing is spoken
  bool leavesOutEstimates = false;
  bool repairsWeekRollover = false;
  bool json = false;
  bool quiet = false;
  bool force = false;
};

/// Shows and records what the location service says.
/// @return the tool's exit code
int runWatch(const WatchArguments& arguments);

#endif
