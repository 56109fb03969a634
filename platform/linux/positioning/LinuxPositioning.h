// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_LINUXPOSITIONING_H
#define ZRCORE_LINUX_LINUXPOSITIONING_H

#include <ZRCore/ZRPlatform.h>

#include <functional>
#include <memory>
#include <string>

#include "loop/GLibLoop.h"

/// The receivers of a Linux system.
struct PositioningOptions {
  std::string source = "auto";                            ///< as `policy::parsePositioningSource` reads it
  std::string desktopId = {};                             ///< by which GeoClue knows the application
  std::string systemBusAddress = {};                      ///< empty: the system's
  std::function<void(const std::string& line)> log = {};  ///< called on the loop's thread
  std::function<NSDate()> now = {};
  double silenceSeconds = 10;  ///< how long there may be no fix before clients get an error
  bool leavesOutEstimates = false, repairsWeekRollover = false;  ///< as in ZRLinuxOptions
};

std::shared_ptr<ZRPositioning> makeLinuxPositioning(const std::shared_ptr<GLibLoop>& loop, PositioningOptions options);

#endif
