// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_CANVAS_H
#define ZRCORE_HOSTS_TRIP_DRAWING_CANVAS_H

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

/// The few things that the pictures of a trip are drawn with, in pixels. The ends of lines are round.
class Canvas {
 public:
  static constexpr double kHaloWidth = 4.0;

  virtual ~Canvas() = default;

  virtual void fill(const Area& area, Color color, double cornerRadius = 0.0) = 0;
  /// A line of one pixel along the inner side of the edge.
  virtual void frame(const Area& area, Color color, double cornerRadius) = 0;
  virtual void line(double fromX, double fromY, double toX, double toY, Color color, double width) = 0;
  /// Lines through the points; a stroke of a single point is a dot, twice as wide.
  virtual void strokes(const std::vector<DiagramPoint>& points, Color color, double width) = 0;
  virtual void disc(double x, double y, double radius, Color inside, Color rim, double rimWidth) = 0;
  /// A closed shape without a rim.
  virtual void shape(const std::vector<DiagramPoint>& corners, Color color) = 0;
  /// `y` is the baseline; `text` is UTF-8.
  virtual void text(double x, double y, const std::string& text, const TextStyle& style) = 0;
  virtual double textWidth(const std::string& text, const TextStyle& style) = 0;

  /// Until `unclip`, nothing outside of `area` is drawn.
  virtual void clip(const Area& area, double cornerRadius) = 0;
  virtual void unclip() = 0;

  void cross(double x, double y, double radius, Color color, double width) {
    line(x - radius, y - radius, x + radius, y + radius, color, width);
    line(x - radius, y + radius, x + radius, y - radius, color, width);
  }
  /// An arrow's head that points up.
  void arrow(double x, double y, double radius, Color color) {
    shape({{x, y - radius}, {x + 0.75 * radius, y + radius}, {x, y + 0.5 * radius}, {x - 0.75 * radius, y + radius}},
          color);
  }
};

/// Whether the point with this number is the whole of its stroke.
inline bool isAlone(const std::vector<DiagramPoint>& points, std::size_t i) {
  return (i == 0 || points[i].startsStroke) && (i + 1 == points.size() || points[i + 1].startsStroke);
}

}  // namespace trip

#endif
