// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TRACKPOINT_H
#define ZRCORE_HOSTS_DEMO_TRACKPOINT_H

#include <ZRCore/ZRGeometry.hpp>

#include <cstdint>

namespace demo {

/// A place on a track in the map plane.
struct TrackPoint {
  ZRMapPoint at;
  std::uint64_t index = 0;    ///< number of the fix; grows along the track
  bool startsStroke = false;  ///< whether something is missing before it, so that no line leads to it
};

}  // namespace demo

#endif
