// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_BASEMAP_H
#define ZRCORE_HOSTS_DEMO_WINDOW_BASEMAP_H

#include <demo/tiles/TileLoader.h>
#include <demo/tiles/TileWish.h>

#include <functional>
#include <memory>

namespace demo {

/// The base map that a person wishes, by the platform in use; null when none is wished. A server's tiles are kept in
/// the user's folder for caches.
/// @param onChange  as a TileLoader has it
/// @throws TileSourceError
std::shared_ptr<TileLoader> openBaseMap(const TileWish& wish, std::function<void()> onChange);

}  // namespace demo

#endif
