// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_CAIROCANVAS_H
#define ZRCORE_HOSTS_TRIP_DRAWING_CAIROCANVAS_H

#include <cairo.h>

#include <memory>

#include "CairoPicture.h"
#include "Canvas.h"

namespace trip {

/// Draws with cairo: on pictures of pixels, and in windows.
class CairoCanvas final : public Canvas {
 public:
  /// Draws on `surface`, which must outlive the canvas.
  explicit CairoCanvas(cairo_surface_t* surface);
  /// Draws with `context`, which somebody else made for a surface, and holds it.
  explicit CairoCanvas(cairo_t* context);

  void fill(const Area& area, Color color, double cornerRadius) override;
  void frame(const Area& area, Color color, double cornerRadius) override;
  void line(double fromX, double fromY, double toX, double toY, Color color, double width) override;
  void strokes(const std::vector<DiagramPoint>& points, Color color, double width) override;
  void disc(double x, double y, double radius, Color inside, Color rim, double rimWidth) override;
  void shape(const std::vector<DiagramPoint>& corners, Color color) override;
  void text(double x, double y, const std::string& text, const TextStyle& style) override;
  double textWidth(const std::string& text, const TextStyle& style) override;
  void clip(const Area& area, double cornerRadius) override;
  void unclip() override;

  /// All of `picture` in `whole`, of which `shown` is seen.
  void picture(const CairoPicture& picture, const Area& whole, const Area& shown);

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
