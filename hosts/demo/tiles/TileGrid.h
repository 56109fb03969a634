// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_TILEGRID_H
#define ZRCORE_HOSTS_DEMO_TILES_TILEGRID_H

#include <trip/drawing/MapTransform.h>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace demo {

/// A square of the map plane: at zoom z the world is 2^z tiles wide and high, counted from the north-west.
struct Tile {
  int zoom = 0;  ///< 0 to `maxZoom`
  std::int32_t column = 0, row = 0;

  /// The tile that holds it, `levels` (0 to `zoom`) further out.
  Tile ancestor(int levels) const { return {zoom - levels, column >> levels, row >> levels}; }
  auto operator<=>(const Tile&) const = default;
};

/// The levels of which there are tiles.
struct TileZooms {
  int least = 0, most = maxZoom;
};

/// A tile and the pixels that it covers in a view. Their edges are whole, so that no seam shows between neighbours.
struct PlacedTile {
  Tile tile;
  trip::Area area;
};

/// More than a screen of 5120 by 2880 pixels takes.
inline constexpr std::size_t kMostTilesInView = 512;

/// The tiles that a view needs, from the middle outwards, of the level in which a tile is nearest to `tileSize` pixels
/// wide; of the nearest one that there is, if there is none of that level. The same tile comes more than once where the
/// view shows the world more than once.
/// @return none when there would be more than kMostTilesInView: the view is too far out for these levels.
std::vector<PlacedTile> tilesInView(const trip::MapTransform& view, const TileZooms& zooms);

/// A picture to draw: the whole of it fills `whole`, and of that `shown` is seen.
struct TileLayer {
  Tile picture;
  trip::Area whole, shown;
};

/// What is drawn for `tiles` from the pictures that are there: for a tile without one the nearest ancestor that has
/// one, and over it those of its four children that have one.
std::vector<TileLayer> layersOf(const std::vector<PlacedTile>& tiles, const std::function<bool(const Tile&)>& isThere);

}  // namespace demo

#endif
