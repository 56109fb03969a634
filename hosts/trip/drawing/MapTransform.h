// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_MAPTRANSFORM_H
#define ZRCORE_HOSTS_TRIP_DRAWING_MAPTRANSFORM_H

#include <ZRCore/ZRGeometry.h>

#include "Canvas.h"
#include "Envelope.h"

namespace trip {

/// The scale, in pixels to a map point, at which all of `envelope` and at least 60 m fit into an area of pixels.
double fittingScale(const Envelope& envelope, double width, double height);

/// From the map plane to the pixels of a panel: north up, at the same scale both ways.
class MapTransform {
 public:
  /// @param center             what lies in the middle of the panel; x may go on past the world's edges
  /// @param pixelsPerMapPoint  > 0
  MapTransform(ZRMapPoint center, double pixelsPerMapPoint, const Area& panel);

  DiagramPoint operator()(ZRMapPoint point) const {
    return {panel_.centerX() + (point.x - center_.x) * scale_, panel_.centerY() + (point.y - center_.y) * scale_};
  }
  ZRMapPoint mapPoint(DiagramPoint pixel) const {
    return {center_.x + (pixel.x - panel_.centerX()) / scale_, center_.y + (pixel.y - panel_.centerY()) / scale_};
  }

  // Lengths along the ground, true at the centre.
  double pixels(double meters) const { return meters / metersPerMapPoint_ * scale_; }
  double meters(double pixels) const { return pixels / scale_ * metersPerMapPoint_; }

  const Area& panel() const { return panel_; }
  double pixelsPerMapPoint() const { return scale_; }
  double centerLatitude() const;  ///< degrees
  /// How much the true scale differs between the middle and the edges of the panel: 0.02 is two percent.
  double scaleSpread() const;

 private:
  Area panel_;
  ZRMapPoint center_;
  double scale_;
  double metersPerMapPoint_;
};

/// The length of a scale bar: a round number of metres of which the map shows at most `longestPixels`.
double scaleBarMeters(const MapTransform& transform, double longestPixels);

/// "200 m"; "500 km at 46.9° N" where the scale differs over the map, so that the bar is true at one latitude only.
std::string scaleBarLabel(const MapTransform& transform, double lengthMeters);

}  // namespace trip

#endif
