// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_MAPPARTS_H
#define ZRCORE_HOSTS_TRIP_DRAWING_MAPPARTS_H

#include <vector>

#include "MapTransform.h"
#include "PlaceMark.h"

// What the map of a picture and the map of a window are both drawn with.

namespace trip {

/// The colours of a map. Raw and smoothed differ in lightness as well as in hue.
struct MapColors {
  Color ground, grid, ink, quiet, route, raw, smoothed, jump, place, halo;
};
/// Those of the picture, and of a window by day.
extern const MapColors kLightMap;

/// The place of the world's many copies, side by side, that is nearest to the middle of the view.
DiagramPoint nearestCopy(const MapTransform& view, CLLocationCoordinate2D coordinate);

struct ScaleBarLooks {
  double inset, tick, labelRise;      ///< pixels: from the left and the lower edge, of the ends, of the text
  double width, haloWidth, textSize;  ///< pixels
};
void drawScaleBar(Canvas& canvas, const MapTransform& view, double meters, const MapColors& colors,
                  const ScaleBarLooks& looks);

/// Marks the places that the view shows, each with its title on the side that has room for it.
void drawPlaces(Canvas& canvas, const MapTransform& view, const std::vector<PlaceMark>& places, const MapColors& colors,
                double radius, double textSize);

}  // namespace trip

#endif
