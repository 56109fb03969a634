// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_MAPDRAWING_H
#define ZRCORE_HOSTS_DEMO_MAPDRAWING_H

#include <trip/drawing/Canvas.h>
#include <trip/drawing/MapParts.h>

#include <optional>
#include <vector>

#include "TripTrack.h"

namespace demo {

/// The colours of a window by night.
extern const trip::MapColors kDarkMap;

/// What a map shows.
struct MapContent {
  const std::vector<TrackPoint>& route;  ///< where the trip will lead; empty when nobody knows
  const TripTrack& track;
  const std::vector<trip::PlaceMark>& places;
  std::optional<CLLocationCoordinate2D> snapped;  ///< where the snapping client was put last
};

/// Draws all of it: grid, tracks, marks, places, the newest fix, the scale bar.
void drawMap(trip::Canvas& canvas, const trip::MapTransform& view, const MapContent& content,
             const trip::MapColors& colors);

}  // namespace demo

#endif
