// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_TILESERVER_H
#define ZRCORE_HOSTS_DEMO_TILES_TILESERVER_H

#include <ZRCore/ZRPlatform.h>

#include <filesystem>
#include <string>

#include "TileSource.h"

namespace demo {

/// The tiles of a server of the web, kept in `folder`; where that cannot be, the log says why, and nothing is kept.
/// @param userAgent  who asks, as servers of tiles want to know
/// @throws TileSourceError  when `address` is no address of tiles
TileSource tileServer(const std::string& address, const std::string& userAgent, const std::filesystem::path& folder,
                      const ZRPlatform& platform);

}  // namespace demo

#endif
