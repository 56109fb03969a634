// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_CANVAS_H
#define ZRCORE_HOSTS_TRIP_CANVAS_H

#include <cairo.h>

#include <memory>
#include <string>
#include <vector>

#include "CourseFold.h"

namespace trip {

struct Color {
  double red, green, blue;
  double alpha = 1.0;
};

/// A rectangle on the picture in pixels, y downwards.
struct Area {
  double x, y, width, height;

  double right() const { return x + width; }
  double bottom() const { return y + height; }
  double centerX() const { return x + width / 2; }
  double centerY() const { return y + height / 2; }
};

enum class Align { left, center, right };

struct TextStyle {
  double size = 15.0;
  Color color{0.0, 0.0, 0.0};
  Align align = Align::left;
  bool bold = false;
  bool halo = false;  ///< around the letters, for text on lines
  Color haloColor{1.0, 1.0, 1.0, 0.9};
};

/// The few things that the pictures of a trip are drawn with, in pixels.
class Canvas {
 public:
  /// Draws on `surface`, which must outlive the canvas.
  explicit Canvas(cairo_surface_t* surface);
  /// Draws with `context`, which somebody else made for a surface, and holds it.
  explicit Canvas(cairo_t* context);

  void fill(const Area& area, Color color, double cornerRadius = 0.0);
  void frame(const Area& area, Color color, double cornerRadius);
  void line(double fromX, double fromY, double toX, double toY, Color color, double width);
  /// Lines through the points; a stroke of a single point is a dot, twice as wide.
  void strokes(const std::vector<DiagramPoint>& points, Color color, double width);
  void disc(double x, double y, double radius, Color inside, Color rim, double rimWidth);
  void cross(double x, double y, double radius, Color color, double width);
  void triangle(double x, double y, double radius, Color color);  ///< points up
  /// `y` is the baseline.
  void text(double x, double y, const std::string& text, const TextStyle& style);
  double textWidth(const std::string& text, const TextStyle& style);

  /// Until `unclip`, nothing outside of `area` is drawn.
  void clip(const Area& area, double cornerRadius);
  void unclip();

 private:
  void setLines();
  void rectangle(const Area& area, double cornerRadius);
  void setColor(Color color);
  void setFont(const TextStyle& style);

  struct Destroy {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
  };
  std::unique_ptr<cairo_t, Destroy> context_;
};

}  // namespace trip

#endif
