// SPDX-License-Identifier: Apache-2.0
#include "TripDrawing.h"

#include <trip/OutputText.h>
#include <trip/SummaryHints.h>
#include <trip/Words.h>

#include <array>
#include <cstdio>
#include <memory>
#include <new>
#include <stdexcept>

#include "CairoCanvas.h"
#include "Diagrams.h"
#include "MapPanel.h"
#include "SvgCanvas.h"
#include "Theme.h"

namespace trip {

namespace {

constexpr double kInner = theme::kWidth - 2 * theme::kMargin;
constexpr double kGutter = 44.0;  // left of the diagrams, for their labels
constexpr Area kMap{theme::kMargin, 148.0, kInner, 604.0};
constexpr Area kCourses{theme::kMargin + kGutter, 806.0, kInner - kGutter, 132.0};
constexpr Area kSpeeds{theme::kMargin + kGutter, 990.0, kInner - kGutter, 132.0};

std::string whenText(const TripSummary& summary) {
  if (!summary.firstSecondsSince1970 || !summary.lastSecondsSince1970) return "no times";
  const std::string first = timeText(*summary.firstSecondsSince1970), last = timeText(*summary.lastSecondsSince1970);
  if (first.size() < 19 || last.size() < 19) return first + " \u2013 " + last;  // far years are plain seconds
  const bool isOneDay = first.substr(0, 10) == last.substr(0, 10);
  return first.substr(0, 10) + " " + first.substr(11, 8) + " \u2013 " + (isOneDay ? "" : last.substr(0, 10) + " ") +
         last.substr(11, 8) + " UTC";
}

std::string factsText(const TripSummary& summary) {
  std::string text = whenText(summary);
  const auto add = [&text](const std::string& fact) { text += "   \u00b7   " + fact; };
  if (const auto duration = durationSeconds(summary)) add(durationText(*duration));
  add(measuredLengthText(summary.distanceMeters) + " raw, " + measuredLengthText(summary.significantDistanceMeters) +
      " smoothed");
  add(countText(summary.fixes, "fix", "fixes"));
  if (!summary.filter.empty()) add("filter: " + asUtf8(summary.filter));
  return text;
}

/// Without its middle when it is too wide.
std::string shortened(Canvas& canvas, const std::string& text, const TextStyle& style, double width) {
  std::size_t head = text.size() / 2, tail = head;
  std::string result = text;
  const auto isInsideCharacter = [&text](std::size_t i) {
    return i < text.size() && (static_cast<unsigned char>(text[i]) & 0xc0) == 0x80;
  };
  while (head > 0 && canvas.textWidth(result, style) > width) {
    do --head;
    while (head > 0 && isInsideCharacter(head));
    do ++tail;
    while (isInsideCharacter(tail));
    result = text.substr(0, head) + "\u2026" + (tail < text.size() ? text.substr(tail) : "");
  }
  return result;
}

/// Drawn from the right edge leftwards.
void drawLegend(Canvas& canvas, double right, double y, std::uint64_t jumps) {
  constexpr double kSwatch = 34.0, kGap = 30.0;
  const TextStyle style{.size = theme::kHeadingSize, .color = theme::kInk, .align = Align::right};
  const auto label = [&](const std::string& text) {  // gives the right end of the swatch
    canvas.text(right, y, text, style);
    right -= canvas.textWidth(text, style) + 10.0;
    return right;
  };
  if (jumps > 0) {
    const double x = label("jump (" + std::to_string(jumps) + ")") - 7.0;
    canvas.cross(x, y - 6.0, theme::kMarkRadius - 1.0, theme::kJump, 3.0);
    right = x - 7.0 - kGap;
  }
  for (const auto& [text, color, width] : {std::tuple{"smoothed", theme::kSmoothed, theme::kSmoothedTrackWidth},
                                           std::tuple{"raw", theme::kRaw, theme::kRawTrackWidth}}) {
    const double end = label(text);
    canvas.line(end - kSwatch, y - 6.0, end, y - 6.0, color, width);
    right = end - kSwatch - kGap;
  }
}

std::string sourceText(const TripSummary& summary) {
  return summary.source == "-" ? "standard input" : asUtf8(summary.source);
}

void drawTrip(Canvas& canvas, const TripPicture& picture, const TripSummary& summary) {
  canvas.fill({0.0, 0.0, theme::kWidth, theme::kHeight}, theme::kPaper);
  const TextStyle title{.size = theme::kTitleSize, .color = theme::kInk, .bold = true};
  canvas.text(theme::kMargin, 78.0, shortened(canvas, sourceText(summary), title, kInner - 440.0), title);
  canvas.text(theme::kMargin, 118.0, factsText(summary), {.size = theme::kHeadingSize, .color = theme::kQuiet});
  drawLegend(canvas, theme::kWidth - theme::kMargin, 78.0, picture.jumps().count());

  const TripAxis axis(picture.span());
  drawMap(canvas, kMap, picture);
  drawCourses(canvas, kCourses, axis, picture);
  drawSpeeds(canvas, kSpeeds, axis, picture, missingSpeedHint(summary));
  if (!picture.envelope().isEmpty) drawAxisLabels(canvas, kSpeeds, axis);
}

struct DestroySurface {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, DestroySurface>;

cairo_status_t append(void* text, const unsigned char* bytes, unsigned length) noexcept {
  try {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), length);
    return CAIRO_STATUS_SUCCESS;
  } catch (const std::exception&) {  // which must not cross cairo
    return CAIRO_STATUS_NO_MEMORY;
  }
}

void requireSuccess(cairo_status_t status) {
  if (status == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
  if (status != CAIRO_STATUS_SUCCESS) {
    throw std::runtime_error(std::string("drawing: ") + cairo_status_to_string(status));
  }
}

}  // namespace

std::string drawPng(const TripPicture& picture, const TripSummary& summary) {
  const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(theme::kWidth),
                                                   static_cast<int>(theme::kHeight)));
  CairoCanvas canvas(surface.get());
  drawTrip(canvas, picture, summary);
  std::string png;
  requireSuccess(cairo_surface_write_to_png_stream(surface.get(), append, &png));
  return png;
}

std::string drawSvg(const TripPicture& picture, const TripSummary& summary) {
  SvgCanvas canvas(theme::kWidth, theme::kHeight, sourceText(summary));
  drawTrip(canvas, picture, summary);
  return canvas.document();
}

}  // namespace trip
