// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_PLACELIST_H
#define ZRCORE_HOSTS_DEMO_PLACELIST_H

#include <trip/drawing/PlaceMark.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace demo {

/// The places of a geocoder's answer, as they are listed. All texts are UTF-8.
struct PlaceList {
  struct Entry {
    std::string primary, secondary, singleLine;  ///< the address's three texts; empty where it has none
    std::optional<trip::PlaceMark> mark;         ///< nothing for a place without a position
  };

  std::string name;  ///< of the file, without folders
  std::vector<Entry> entries;
  std::uint64_t faultCount = 0;  ///< how much could not be used
  std::string firstFault;        ///< the first of it, a line

  /// "6 places · 1 fault: result 3 …"
  std::string summary() const;
};

/// Reads the answer at `path`. What is damaged in it is among the faults.
/// @throws place::FileError when the file cannot be read
PlaceList loadPlaces(const std::string& path);

}  // namespace demo

#endif
