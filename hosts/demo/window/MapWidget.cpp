// SPDX-License-Identifier: Apache-2.0
#include "MapWidget.h"

#include <trip/drawing/CairoCanvas.h>

#include <cmath>
#include <utility>

namespace demo {

namespace {

constexpr double kArrowPixels = 64.0;
constexpr double kWheelStep = 0.18;  // of a zoom: the natural logarithm of the factor for one notch
constexpr double kDoubleClickFactor = 2.0;

}  // namespace

MapWidget::MapWidget(GtkDrawingArea* area, Content content) : area_(area), content_(std::move(content)) {
  gtk_drawing_area_set_draw_func(
      area_,
      [](GtkDrawingArea*, cairo_t* context, int, int, gpointer self) {
        const auto& map = *static_cast<const MapWidget*>(self);
        trip::CairoCanvas canvas(context);
        const bool isDark = adw_style_manager_get_dark(adw_style_manager_get_default());
        const trip::MapTransform view = map.view_.transform();
        drawMap(canvas, view, map.content_(view), isDark ? kDarkMap : trip::kLightMap);
      },
      this, nullptr);
  connect<void(GtkDrawingArea*, int, int)>(area_, "resize", [this](GtkDrawingArea*, int width, int height) {
    view_.resize(width, height);
    if (isUntouched_) view_.fit(fitted_);
  });
  // The style outlives the window, hence a signal that ends with the area.
  g_signal_connect_object(adw_style_manager_get_default(), "notify::dark", G_CALLBACK(gtk_widget_queue_draw), area_,
                          G_CONNECT_SWAPPED);
  listenToDrags();
  listenToZooms();
  listenToKeys();
}

void MapWidget::change(const std::function<void(MapView&)>& wish) {
  wish(view_);
  isUntouched_ = false;
  redraw();
}

void MapWidget::follow(ZRMapPoint newest) {
  view_.keepInView(newest);
  redraw();
}

void MapWidget::fit(const trip::Envelope& envelope) {
  fitted_ = envelope;
  isUntouched_ = true;
  view_.fit(envelope);
  redraw();
}

void MapWidget::listenToDrags() {
  GtkGesture* const drag = gtk_gesture_drag_new();
  connect<void(GtkGestureDrag*, double, double)>(drag, "drag-begin", [this](GtkGestureDrag*, double, double) {
    dragX_ = dragY_ = 0.0;
    gtk_widget_grab_focus(GTK_WIDGET(area_));
  });
  connect<void(GtkGestureDrag*, double, double)>(drag, "drag-update", [this](GtkGestureDrag*, double x, double y) {
    change([&](MapView& view) { view.panBy(x - dragX_, y - dragY_); });
    dragX_ = x;
    dragY_ = y;
  });
  gtk_widget_add_controller(GTK_WIDGET(area_), GTK_EVENT_CONTROLLER(drag));

  GtkGesture* const click = gtk_gesture_click_new();
  connect<void(GtkGestureClick*, int, double, double)>(
      click, "pressed", [this](GtkGestureClick*, int presses, double x, double y) {
        if (presses == 2) change([&](MapView& view) { view.zoomAt(x, y, kDoubleClickFactor); });
      });
  gtk_widget_add_controller(GTK_WIDGET(area_), GTK_EVENT_CONTROLLER(click));
}

void MapWidget::listenToZooms() {
  GtkEventController* const motion = gtk_event_controller_motion_new();
  connect<void(GtkEventControllerMotion*, double, double)>(motion, "motion",
                                                           [this](GtkEventControllerMotion*, double x, double y) {
                                                             pointerX_ = x;
                                                             pointerY_ = y;
                                                           });
  gtk_widget_add_controller(GTK_WIDGET(area_), motion);

  GtkEventController* const wheel = gtk_event_controller_scroll_new(GTK_EVENT_CONTROLLER_SCROLL_VERTICAL);
  connect<gboolean(GtkEventControllerScroll*, double, double)>(
      wheel, "scroll", [this](GtkEventControllerScroll*, double, double dy) -> gboolean {
        change([&](MapView& view) { view.zoomAt(pointerX_, pointerY_, std::exp(-kWheelStep * dy)); });
        return GDK_EVENT_STOP;
      });
  gtk_widget_add_controller(GTK_WIDGET(area_), wheel);

  GtkGesture* const pinch = gtk_gesture_zoom_new();
  connect<void(GtkGesture*, GdkEventSequence*)>(pinch, "begin",
                                                [this](GtkGesture*, GdkEventSequence*) { pinch_ = 1.0; });
  connect<void(GtkGestureZoom*, double)>(pinch, "scale-changed", [this](GtkGestureZoom* zoom, double scale) {
    double x = pointerX_, y = pointerY_;
    gtk_gesture_get_bounding_box_center(GTK_GESTURE(zoom), &x, &y);
    change([&](MapView& view) { view.zoomAt(x, y, scale / pinch_); });
    pinch_ = scale;
  });
  gtk_widget_add_controller(GTK_WIDGET(area_), GTK_EVENT_CONTROLLER(pinch));
}

void MapWidget::listenToKeys() {
  GtkEventController* const keys = gtk_event_controller_key_new();
  connect<gboolean(GtkEventControllerKey*, guint, guint, GdkModifierType)>(
      keys, "key-pressed", [this](GtkEventControllerKey*, guint key, guint, GdkModifierType held) -> gboolean {
        if ((held & (GDK_CONTROL_MASK | GDK_ALT_MASK)) != 0) return GDK_EVENT_PROPAGATE;
        const auto pan = [this](double dx, double dy) {
          change([&](MapView& view) { view.panBy(dx, dy); });
          return GDK_EVENT_STOP;
        };
        switch (key) {
          case GDK_KEY_Left:
            return pan(kArrowPixels, 0.0);
          case GDK_KEY_Right:
            return pan(-kArrowPixels, 0.0);
          case GDK_KEY_Up:
            return pan(0.0, kArrowPixels);
          case GDK_KEY_Down:
            return pan(0.0, -kArrowPixels);
          default:
            return GDK_EVENT_PROPAGATE;
        }
      });
  gtk_widget_add_controller(GTK_WIDGET(area_), keys);
}

}  // namespace demo
