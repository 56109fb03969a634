// SPDX-License-Identifier: Apache-2.0
#include "TileGrid.h"

#include <algorithm>
#include <cmath>

namespace demo {

namespace {

int zoomFor(const trip::MapTransform& view, const TileZooms& zooms) {
  const double worldPixels = ZRMapSizeWorld.width * view.pixelsPerMapPoint();
  const double nearest = std::round(std::log2(worldPixels / tileSize));
  return static_cast<int>(std::clamp(nearest, double(zooms.least), double(zooms.most)));
}

/// What of the area of `tile` its ancestor `levels` further out would cover.
trip::Area ancestorArea(const PlacedTile& placed, int levels) {
  const auto& [tile, area] = placed;
  const Tile ancestor = tile.ancestor(levels);
  const double across = std::ldexp(1.0, levels);
  const double columns = tile.column - std::ldexp(ancestor.column, levels);
  const double rows = tile.row - std::ldexp(ancestor.row, levels);
  return {area.x - columns * area.width, area.y - rows * area.height, across * area.width, across * area.height};
}

PlacedTile child(const PlacedTile& placed, int right, int below) {
  const auto& [tile, area] = placed;
  const double middleX = std::round(area.centerX()), middleY = std::round(area.centerY());
  const double left = right ? middleX : area.x, top = below ? middleY : area.y;
  return {{tile.zoom + 1, 2 * tile.column + right, 2 * tile.row + below},
          {left, top, (right ? area.right() : middleX) - left, (below ? area.bottom() : middleY) - top}};
}

}  // namespace

std::vector<PlacedTile> tilesInView(const trip::MapTransform& view, const TileZooms& zooms) {
  const trip::Area& panel = view.panel();
  const int zoom = zoomFor(view, zooms);
  const double perWorld = std::ldexp(1.0, zoom);
  const double side = ZRMapSizeWorld.width / perWorld;  // map points
  const ZRMapPoint low = view.mapPoint({panel.x, panel.y}), high = view.mapPoint({panel.right(), panel.bottom()});
  const double left = std::floor(low.x / side), right = std::ceil(high.x / side);
  const double top = std::max(std::floor(low.y / side), 0.0), bottom = std::min(std::ceil(high.y / side), perWorld);
  std::vector<PlacedTile> tiles;
  const double count = std::max(right - left, 0.0) * std::max(bottom - top, 0.0);
  if (!(count <= double(kMostTilesInView))) return tiles;
  for (double row = top; row < bottom; ++row) {
    for (double column = left; column < right; ++column) {
      const auto from = view({column * side, row * side}), to = view({(column + 1) * side, (row + 1) * side});
      const double x = std::round(from.x), y = std::round(from.y);
      const double wrapped = column - perWorld * std::floor(column / perWorld);
      tiles.push_back({{zoom, static_cast<std::int32_t>(wrapped), static_cast<std::int32_t>(row)},
                       {x, y, std::round(to.x) - x, std::round(to.y) - y}});
    }
  }
  const auto fromMiddle = [&panel](const PlacedTile& placed) {
    return std::hypot(placed.area.centerX() - panel.centerX(), placed.area.centerY() - panel.centerY());
  };
  std::ranges::stable_sort(tiles, {}, fromMiddle);
  return tiles;
}

std::vector<TileLayer> layersOf(const std::vector<PlacedTile>& tiles, const std::function<bool(const Tile&)>& isThere) {
  std::vector<TileLayer> layers;
  for (const PlacedTile& placed : tiles) {
    const auto& [tile, area] = placed;
    int levels = 0;
    while (levels <= tile.zoom && !isThere(tile.ancestor(levels))) ++levels;
    if (levels <= tile.zoom) layers.push_back({tile.ancestor(levels), ancestorArea(placed, levels), area});
    if (levels == 0 || tile.zoom >= maxZoom) continue;
    for (const auto& [right, below] : {std::pair(0, 0), std::pair(1, 0), std::pair(0, 1), std::pair(1, 1)}) {
      const auto [picture, quarter] = child(placed, right, below);
      if (isThere(picture)) layers.push_back({picture, quarter, quarter});
    }
  }
  return layers;
}

}  // namespace demo
