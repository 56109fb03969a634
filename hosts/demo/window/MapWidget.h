// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_MAPWIDGET_H
#define ZRCORE_HOSTS_DEMO_WINDOW_MAPWIDGET_H

#include <demo/MapDrawing.h>
#include <demo/MapView.h>

#include "Gtk.h"

namespace demo {

/// A map under the pointer, the fingers and the keys: drags pan, the wheel and two fingers zoom, arrows pan.
class MapWidget {
 public:
  using Content = std::function<MapContent(const trip::MapTransform& view)>;

  /// @param area     outlives the widget
  /// @param content  asked at each drawing
  MapWidget(GtkDrawingArea* area, Content content);
  MapWidget(const MapWidget&) = delete;
  MapWidget& operator=(const MapWidget&) = delete;

  const MapView& view() const { return view_; }
  /// Changes the view, as a person wishes, and draws it.
  void change(const std::function<void(MapView&)>& wish);
  void redraw() { gtk_widget_queue_draw(GTK_WIDGET(area_)); }
  /// Draws anew, around `newest` if the view follows it.
  void follow(ZRMapPoint newest);

  /// Shows the whole of `envelope`, also when the widget gets its size only later.
  void fit(const trip::Envelope& envelope);
  bool isFitted() const { return !fitted_.isEmpty; }

 private:
  void listenToDrags();
  void listenToZooms();
  void listenToKeys();

  GtkDrawingArea* area_;
  Content content_;
  MapView view_;
  trip::Envelope fitted_;  ///< kept in view while nobody has moved the map
  bool isUntouched_ = true;
  double pointerX_ = 0.0, pointerY_ = 0.0;
  double dragX_ = 0.0, dragY_ = 0.0, pinch_ = 1.0;
};

}  // namespace demo

#endif
