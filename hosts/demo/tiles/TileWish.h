// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_TILEWISH_H
#define ZRCORE_HOSTS_DEMO_TILES_TILEWISH_H

#include <string>

namespace demo {

/// A person's choice of a base map.
struct TileWish {
  std::string tiles;        ///< an address with {z}, {x} and {y}, or an MBTiles file; empty: no base map
  std::string attribution;  ///< in place of what the source says itself; empty: that
};

}  // namespace demo

#endif
