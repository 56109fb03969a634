// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_PLACE_PLACERUN_H
#define ZRCORE_HOSTS_ZRCORE_PLACE_PLACERUN_H

#include <ZRCore/ZRGeoAddressDialects.h>

#include <optional>
#include <string>
#include <vector>

/// What the command line of `zrcore place` says.
struct PlaceArguments {
  std::vector<std::string> files;              ///< "-": standard input
  std::optional<ZRGeoAddressDialect> dialect;  ///< nullopt: told by content
  bool json = false;
  bool tambrel = false;
  bool geoJson = false;
  bool verbose = false;
};

/// Reads the files and shows the places in them.
/// @return the tool's exit code
int runPlace(const PlaceArguments& arguments);

#endif
