// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_MAPDRAWING_H
#define ZRCORE_HOSTS_DEMO_MAPDRAWING_H

#include <trip/drawing/CairoCanvas.h>
#include <trip/drawing/MapParts.h>

#include <optional>
#include <vector>

#include "TripTrack.h"
#include "tiles/MapTile.h"

namespace demo {

/// The colours of a window by night.
extern const trip::MapColors kDarkMap;

/// What a map shows.
struct MapContent {
  const std::vector<TrackPoint>& route;  ///< where the trip will lead; empty when nobody knows
  const TripTrack& track;
  const std::vector<trip::PlaceMark>& places;
  std::optional<CLLocationCoordinate2D> snapped;  ///< where the snapping client was put last
  std::vector<MapTile> tiles = {};                ///< of the base map; empty when there is none
};

/// Draws all of it: grid, base map, tracks, marks, places, the newest fix, the scale bar.
void drawMap(trip::CairoCanvas& canvas, const trip::MapTransform& view, const MapContent& content,
             const trip::MapColors& colors);

}  // namespace demo

#endif
