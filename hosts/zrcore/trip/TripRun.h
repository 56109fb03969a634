// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_TRIP_TRIPRUN_H
#define ZRCORE_HOSTS_ZRCORE_TRIP_TRIPRUN_H

#include <trip/replay/TimeWindow.h>
#include <zrcore/sound/SoundTarget.h>

#include <optional>
#include <string>

/// What the command line of `zrcore trip` says.
struct TripArguments {
  std::string file;  ///< "-": standard input
  std::optional<std::string> outputFolder;
  std::string filter = "measured";  ///< or "documented"
  std::optional<double> rate;       ///< recorded seconds per second; nullopt: as fast as possible
  std::optional<trip::TimeBound> from, to;
  std::optional<double> assumedAccuracyMeters;
  bool derivesSpeed = false;
  bool leavesOutEstimates = false;
  bool repairsWeekRollover = false;
  std::optional<std::string> routeFile;   ///< "-": standard input
  std::optional<std::string> placesFile;  ///< "-": standard input; marked in the pictures
  std::optional<SoundTarget> speech;      ///< nullopt: in silence
  bool json = false;
  bool quiet = false;
  bool force = false;
};

/// Replays a recording and shows and writes what comes of it.
/// @return the tool's exit code
int runTrip(const TripArguments& arguments);

#endif
