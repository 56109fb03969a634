// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_TILESOURCE_H
#define ZRCORE_HOSTS_DEMO_TILES_TILESOURCE_H

#include <ZRCore/NSURLSession.h>

#include <functional>
#include <memory>
#include <string>

#include "TileGrid.h"
#include "TileTemplate.h"

namespace demo {

/// Where tiles come from.
struct TileSource {
  std::string name;  ///< for people: a server's or a file's
  TileTemplate addresses;
  TileZooms zooms;
  std::string attribution;  ///< shown with the map; never empty
  ZRHTTPHeaders headers;    ///< of each request
  std::shared_ptr<NSURLSession> session;
  /// Whether the session can answer without asking anybody else.
  std::function<bool(const NSURL&)> isAtHand;
  /// What the session has kept for the address is no tile.
  std::function<void(const NSURL&)> forget;
};

}  // namespace demo

#endif
