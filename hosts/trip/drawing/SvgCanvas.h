// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_SVGCANVAS_H
#define ZRCORE_HOSTS_TRIP_DRAWING_SVGCANVAS_H

#include <memory>
#include <string>

#include "CairoCanvas.h"

namespace trip {

/// Writes an SVG 1.1 document in which text is text: it can be searched, read aloud and edited, which cairo's own SVG
/// surface, with its outlines of letters, does not offer. Texts are laid out by the widths that they have with cairo.
class SvgCanvas final : public Canvas {
 public:
  /// @param title  what the document is called
  SvgCanvas(double width, double height, const std::string& title);

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

  /// The whole document. Every `clip` must have been taken back.
  std::string document() const { return text_ + "</svg>\n"; }

 private:
  void begin(const char* element) { (text_ += '<') += element; }
  void end() { text_ += "/>\n"; }
  void number(const char* attribute, double value);
  void color(const char* attribute, Color color);
  void stroke(Color color, double width);
  void rectangle(const Area& area, double cornerRadius);

  std::string text_;
  int clips_ = 0;
  struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };
  std::unique_ptr<cairo_surface_t, Destroy> nothing_;
  CairoCanvas ruler_;
};

}  // namespace trip

#endif
