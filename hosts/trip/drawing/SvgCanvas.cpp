// SPDX-License-Identifier: Apache-2.0
#include "SvgCanvas.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace trip {

namespace {

/// Hundredths of a pixel, in any locale. What a wild recording puts beyond all paper stays finite.
std::string numberText(double value) {
  constexpr double kFarAway = 1e6;
  const double hundredths = std::round(std::fmin(std::fmax(value, -kFarAway), kFarAway) * 100.0);
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), hundredths / 100.0).ptr;
  return {digits.data(), end};
}

std::string colorText(Color color) {
  const auto part = [](double value) { return static_cast<unsigned>(std::lround(value * 255.0)); };
  std::array<char, 8> text;
  std::snprintf(text.data(), text.size(), "#%02x%02x%02x", part(color.red), part(color.green), part(color.blue));
  return text.data();
}

/// UTF-8 as it may stand in a document. The characters that XML has no way to write are left out.
std::string xmlText(const std::string& text) {
  std::string written;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char byte = text[i];
    if (static_cast<unsigned char>(byte) < 0x20) continue;
    if (text.compare(i, 3, "\xef\xbf\xbe") == 0 || text.compare(i, 3, "\xef\xbf\xbf") == 0) {  // U+FFFE, U+FFFF
      i += 2;
    } else if (byte == '&') {
      written += "&amp;";
    } else if (byte == '<') {
      written += "&lt;";
    } else if (byte == '>') {
      written += "&gt;";
    } else {
      written += byte;
    }
  }
  return written;
}

}  // namespace

SvgCanvas::SvgCanvas(double width, double height, const std::string& title)
    : nothing_(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1)), ruler_(nothing_.get()) {
  text_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"";
  number("width", width);
  number("height", height);
  text_ += " viewBox=\"0 0 " + numberText(width) + ' ' + numberText(height) +
           "\" font-family=\"sans-serif\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n<title>" +
           xmlText(title) + "</title>\n";
}

void SvgCanvas::number(const char* attribute, double value) {
  ((((text_ += ' ') += attribute) += "=\"") += numberText(value)) += '"';
}

void SvgCanvas::color(const char* attribute, Color color) {
  ((((text_ += ' ') += attribute) += "=\"") += colorText(color)) += '"';
  if (color.alpha < 1.0) number((std::string(attribute) + "-opacity").c_str(), color.alpha);
}

void SvgCanvas::stroke(Color lineColor, double width) {
  color("stroke", lineColor);
  number("stroke-width", width);
}

void SvgCanvas::rectangle(const Area& area, double cornerRadius) {
  begin("rect");
  number("x", area.x);
  number("y", area.y);
  number("width", area.width);
  number("height", area.height);
  if (cornerRadius > 0.0) number("rx", cornerRadius);
}

void SvgCanvas::fill(const Area& area, Color inside, double cornerRadius) {
  rectangle(area, cornerRadius);
  color("fill", inside);
  end();
}

void SvgCanvas::frame(const Area& area, Color lineColor, double cornerRadius) {
  rectangle({area.x + 0.5, area.y + 0.5, area.width - 1.0, area.height - 1.0}, cornerRadius);
  text_ += " fill=\"none\"";
  stroke(lineColor, 1.0);
  end();
}

void SvgCanvas::line(double fromX, double fromY, double toX, double toY, Color lineColor, double width) {
  strokes({{fromX, fromY, true}, {toX, toY, false}}, lineColor, width);
}

void SvgCanvas::strokes(const std::vector<DiagramPoint>& points, Color lineColor, double width) {
  std::string path;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto [x, y, startsStroke] = points[i];
    if (isAlone(points, i)) {
      disc(x, y, width / 2, lineColor, lineColor, width);
    } else {
      path += (i == 0 || startsStroke ? 'M' : 'L') + numberText(x) + ' ' + numberText(y);
    }
  }
  if (path.empty()) return;
  begin("path");
  text_ += " d=\"" + path + "\" fill=\"none\"";
  stroke(lineColor, width);
  end();
}

void SvgCanvas::disc(double x, double y, double radius, Color inside, Color rim, double rimWidth) {
  begin("circle");
  number("cx", x);
  number("cy", y);
  number("r", radius);
  color("fill", inside);
  stroke(rim, rimWidth);
  end();
}

void SvgCanvas::shape(const std::vector<DiagramPoint>& corners, Color inside) {
  begin("polygon");
  text_ += " points=\"";
  for (const DiagramPoint& corner : corners) text_ += numberText(corner.x) + ',' + numberText(corner.y) + ' ';
  text_.back() = '"';
  color("fill", inside);
  end();
}

void SvgCanvas::text(double x, double y, const std::string& text, const TextStyle& style) {
  begin("text");
  number("x", x);
  number("y", y);
  number("font-size", style.size);
  color("fill", style.color);
  if (style.align == Align::center) text_ += " text-anchor=\"middle\"";
  if (style.align == Align::right) text_ += " text-anchor=\"end\"";
  if (style.bold) text_ += " font-weight=\"bold\"";
  if (style.halo) {
    stroke(style.haloColor, kHaloWidth);
    text_ += " paint-order=\"stroke\"";
  }
  text_ += " xml:space=\"preserve\">" + xmlText(text) + "</text>\n";
}

double SvgCanvas::textWidth(const std::string& text, const TextStyle& style) { return ruler_.textWidth(text, style); }

void SvgCanvas::clip(const Area& area, double cornerRadius) {
  const std::string name = "clip" + std::to_string(++clips_);
  text_ += "<clipPath id=\"" + name + "\">";
  rectangle(area, cornerRadius);
  text_ += "/></clipPath>\n<g clip-path=\"url(#" + name + ")\">\n";
}

void SvgCanvas::unclip() { text_ += "</g>\n"; }

}  // namespace trip
