// SPDX-License-Identifier: Apache-2.0
#include "CairoCanvas.h"

#include <numbers>

namespace trip {

namespace {
constexpr double kPi = std::numbers::pi;
}

CairoCanvas::CairoCanvas(cairo_surface_t* surface) : context_(cairo_create(surface)) { setLines(); }

CairoCanvas::CairoCanvas(cairo_t* context) : context_(cairo_reference(context)) { setLines(); }

void CairoCanvas::setLines() {
  cairo_set_line_cap(context_.get(), CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(context_.get(), CAIRO_LINE_JOIN_ROUND);
}

void CairoCanvas::fill(const Area& area, Color color, double cornerRadius) {
  rectangle(area, cornerRadius);
  setColor(color);
  cairo_fill(context_.get());
}

void CairoCanvas::frame(const Area& area, Color color, double cornerRadius) {
  // Half a pixel inwards: a thin line between pixels would be smeared over two.
  rectangle({area.x + 0.5, area.y + 0.5, area.width - 1.0, area.height - 1.0}, cornerRadius);
  setColor(color);
  cairo_set_line_width(context_.get(), 1.0);
  cairo_stroke(context_.get());
}

void CairoCanvas::line(double fromX, double fromY, double toX, double toY, Color color, double width) {
  cairo_move_to(context_.get(), fromX, fromY);
  cairo_line_to(context_.get(), toX, toY);
  setColor(color);
  cairo_set_line_width(context_.get(), width);
  cairo_stroke(context_.get());
}

void CairoCanvas::strokes(const std::vector<DiagramPoint>& points, Color color, double width) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto [x, y, startsStroke] = points[i];
    if (i > 0 && !startsStroke) {
      cairo_line_to(context_.get(), x, y);
      continue;
    }
    if (isAlone(points, i)) {
      cairo_new_sub_path(context_.get());
      cairo_arc(context_.get(), x, y, width / 2, 0.0, 2 * kPi);
    } else {
      cairo_move_to(context_.get(), x, y);
    }
  }
  setColor(color);
  cairo_set_line_width(context_.get(), width);
  cairo_stroke(context_.get());
}

void CairoCanvas::disc(double x, double y, double radius, Color inside, Color rim, double rimWidth) {
  cairo_new_sub_path(context_.get());
  cairo_arc(context_.get(), x, y, radius, 0.0, 2 * kPi);
  setColor(inside);
  cairo_fill_preserve(context_.get());
  setColor(rim);
  cairo_set_line_width(context_.get(), rimWidth);
  cairo_stroke(context_.get());
}

void CairoCanvas::shape(const std::vector<DiagramPoint>& corners, Color color) {
  for (const DiagramPoint& corner : corners) cairo_line_to(context_.get(), corner.x, corner.y);
  cairo_close_path(context_.get());
  setColor(color);
  cairo_fill(context_.get());
}

void CairoCanvas::text(double x, double y, const std::string& text, const TextStyle& style) {
  const double width = style.align == Align::left ? 0.0 : textWidth(text, style);
  const double left = style.align == Align::center ? x - width / 2 : x - width;
  setFont(style);
  cairo_move_to(context_.get(), left, y);
  if (style.halo) {
    cairo_text_path(context_.get(), text.c_str());
    setColor(style.haloColor);
    cairo_set_line_width(context_.get(), kHaloWidth);
    cairo_stroke(context_.get());
    cairo_move_to(context_.get(), left, y);
  }
  setColor(style.color);
  cairo_show_text(context_.get(), text.c_str());
  cairo_new_path(context_.get());  // showing text leaves a current point behind
}

double CairoCanvas::textWidth(const std::string& text, const TextStyle& style) {
  setFont(style);
  cairo_text_extents_t extents;
  cairo_text_extents(context_.get(), text.c_str(), &extents);
  return extents.x_advance;
}

void CairoCanvas::clip(const Area& area, double cornerRadius) {
  cairo_save(context_.get());
  rectangle(area, cornerRadius);
  cairo_clip(context_.get());
}

void CairoCanvas::unclip() { cairo_restore(context_.get()); }

void CairoCanvas::picture(const CairoPicture& picture, const Area& whole, const Area& shown) {
  if (picture.width() == 0 || picture.height() == 0 || whole.width <= 0.0 || whole.height <= 0.0) return;
  cairo_t* const context = context_.get();
  cairo_save(context);
  rectangle(shown, 0.0);
  cairo_translate(context, whole.x, whole.y);
  cairo_scale(context, whole.width / picture.width(), whole.height / picture.height());
  cairo_set_source_surface(context, picture.surface(), 0.0, 0.0);
  cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);  // or its edges would be half transparent
  cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_BILINEAR);
  cairo_fill(context);
  cairo_restore(context);
}

void CairoCanvas::rectangle(const Area& area, double cornerRadius) {
  cairo_t* const context = context_.get();
  if (cornerRadius <= 0.0) return cairo_rectangle(context, area.x, area.y, area.width, area.height);
  cairo_new_sub_path(context);
  cairo_arc(context, area.right() - cornerRadius, area.y + cornerRadius, cornerRadius, -kPi / 2, 0.0);
  cairo_arc(context, area.right() - cornerRadius, area.bottom() - cornerRadius, cornerRadius, 0.0, kPi / 2);
  cairo_arc(context, area.x + cornerRadius, area.bottom() - cornerRadius, cornerRadius, kPi / 2, kPi);
  cairo_arc(context, area.x + cornerRadius, area.y + cornerRadius, cornerRadius, kPi, 3 * kPi / 2);
  cairo_close_path(context);
}

void CairoCanvas::setColor(Color color) {
  cairo_set_source_rgba(context_.get(), color.red, color.green, color.blue, color.alpha);
}

void CairoCanvas::setFont(const TextStyle& style) {
  cairo_select_font_face(context_.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                         style.bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(context_.get(), style.size);
}

}  // namespace trip
