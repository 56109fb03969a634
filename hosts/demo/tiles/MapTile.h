// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_MAPTILE_H
#define ZRCORE_HOSTS_DEMO_TILES_MAPTILE_H

#include <trip/drawing/CairoPicture.h>
#include <trip/drawing/Canvas.h>

#include <memory>

namespace demo {

/// A picture of the base map to draw: the whole of it fills `whole`, and of that `shown` is seen.
struct MapTile {
  std::shared_ptr<const trip::CairoPicture> picture;
  trip::Area whole, shown;
};

}  // namespace demo

#endif
