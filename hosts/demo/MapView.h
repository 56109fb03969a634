// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_MAPVIEW_H
#define ZRCORE_HOSTS_DEMO_MAPVIEW_H

#include <trip/drawing/Envelope.h>
#include <trip/drawing/MapTransform.h>

namespace demo {

/// Which part of the map plane a window shows. Pixels count from the window's upper left corner, y downwards.
class MapView {
 public:
  /// The whole world is no smaller than an icon, and a metre no larger than a hand.
  static constexpr double kLeastPixelsPerMapPoint = 64.0 / 67108864.0;
  static constexpr double kMostPixelsPerMapPoint = 64.0;

  /// The middle stays where it is. Sizes below one pixel count as one.
  void resize(double width, double height);

  trip::MapTransform transform() const;

  /// What lies under a pointer goes with it. Ends the following.
  void panBy(double dx, double dy);
  /// What lies under (x, y) stays there. A factor that is not a number above 0 does nothing.
  void zoomAt(double x, double y, double factor);
  void zoomAtCenter(double factor) { zoomAt(width_ / 2, height_ / 2, factor); }

  /// Shows all of `envelope` with room around it, and follows. An empty one changes nothing.
  void fit(const trip::Envelope& envelope);
  /// Brings `point` into the middle, at a scale at which its surroundings can be told. Ends the following.
  void show(ZRMapPoint point);

  /// Whether the view goes with the newest fix.
  bool follows() const { return follows_; }
  /// While following: brings `point` into the middle if it nears the edge.
  void keepInView(ZRMapPoint point);

 private:
  void setCenter(ZRMapPoint center);

  double width_ = 1.0, height_ = 1.0;
  ZRMapPoint center_{33554432.0, 33554432.0};
  double pixelsPerMapPoint_ = kLeastPixelsPerMapPoint;
  bool follows_ = true;
};

}  // namespace demo

#endif
