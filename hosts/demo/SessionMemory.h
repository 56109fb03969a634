// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_SESSIONMEMORY_H
#define ZRCORE_HOSTS_DEMO_SESSIONMEMORY_H

#include <ZRCore/ZRUserDefaults.h>

#include <string>

#include "tiles/TileWish.h"

namespace demo {

/// What the demonstration takes up again at its next start, in the user's settings. A file is remembered by its path;
/// an empty one is the sample.
class SessionMemory {
 public:
  struct Trip {
    std::string file;
    double positionSeconds = 0.0;
  };

  /// `settings` must outlive the memory.
  explicit SessionMemory(ZRUserDefaults& settings) : settings_(settings) {}

  /// What has been kept; the sample from its start where nothing was, or nothing that can be read.
  Trip trip() const;
  std::string places() const;
  TileWish baseMap() const;

  void keepTrip(const Trip& trip);
  void keepPlaces(const std::string& file);
  void keepBaseMap(const TileWish& wish);
  /// Brings it to the store before it returns: for the end of the program.
  void store() { settings_.synchronize(); }

 private:
  ZRUserDefaults& settings_;
};

}  // namespace demo

#endif
