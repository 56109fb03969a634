// SPDX-License-Identifier: Apache-2.0
#include "Diagrams.h"

#include <trip/Words.h>

#include <algorithm>
#include <cmath>

#include "Axis.h"
#include "Theme.h"

namespace trip {

namespace {

constexpr int kMaxTimeTicks = 12;
constexpr double kImpossibleKmh = 1e6;  // whatever a recording claims, the axis stays finite

std::vector<Tick> ticksOf(const TripAxis& axis) {
  return axis.isTime() ? timeTicks(axis.from(), axis.to(), kMaxTimeTicks)
                       : countTicks(axis.from(), axis.to(), kMaxTimeTicks);
}

double pixelX(const TripAxis& axis, const Area& plot, double value) {
  return plot.x + (value - axis.from()) / (axis.to() - axis.from()) * plot.width;
}

/// The points of a series, x in pixels, y still in the series' unit.
std::vector<DiagramPoint> alongAxis(const SeriesThinner& series, const TripAxis& axis, const Area& plot) {
  std::vector<DiagramPoint> points;
  bool isInterrupted = false;
  for (const SeriesPoint& point : series.points()) {
    isInterrupted = isInterrupted || point.startsStroke;
    const auto value = axis.valueOf(point);
    if (!value) continue;
    points.push_back({pixelX(axis, plot, *value), point.value, isInterrupted});
    isInterrupted = false;
  }
  return points;
}

/// The vertical axis: maps `top` (in the unit of the values) to the upper edge and 0 to the lower one.
std::vector<DiagramPoint> toPixels(std::vector<DiagramPoint> points, const Area& plot, double top) {
  for (DiagramPoint& point : points) point.y = plot.bottom() - point.y / top * plot.height;
  return points;
}

void drawGround(Canvas& canvas, const Area& plot, const TripAxis& axis, const std::string& heading,
                const std::vector<Tick>& levels, double top) {
  canvas.text(plot.x, plot.y - 12.0, heading, {.size = theme::kHeadingSize, .color = theme::kInk, .bold = true});
  canvas.fill(plot, theme::kPanel);
  for (const Tick& tick : ticksOf(axis)) {
    const double x = pixelX(axis, plot, tick.value);
    canvas.line(x, plot.y, x, plot.bottom(), theme::kGrid, 1.0);
  }
  canvas.frame(plot, theme::kPanelEdge, 0.0);
  for (const Tick& level : levels) {
    const double y = plot.bottom() - level.value / top * plot.height;
    canvas.line(plot.x, y, plot.right(), y, theme::kGrid, 1.0);
    canvas.text(plot.x - 12.0, y + 5.0, level.label,
                {.size = theme::kLabelSize, .color = theme::kQuiet, .align = Align::right});
  }
}

void drawSeries(Canvas& canvas, const Area& plot, const std::vector<DiagramPoint>& raw,
                const std::vector<DiagramPoint>& smoothed) {
  const Area withRim{plot.x, plot.y - 1.5, plot.width, plot.height + 3.0};  // a line along the edge keeps its width
  canvas.clip(withRim, 0.0);
  canvas.strokes(raw, theme::kRaw, theme::kRawSeriesWidth);
  canvas.strokes(smoothed, theme::kSmoothed, theme::kSmoothedSeriesWidth);
  canvas.unclip();
}

void drawNote(Canvas& canvas, const Area& plot, const std::string& note) {
  canvas.text(plot.centerX(), plot.centerY() + 6.0, note,
              {.size = theme::kHeadingSize, .color = theme::kQuiet, .align = Align::center});
}

std::vector<DiagramPoint> inKmh(std::vector<DiagramPoint> points) {
  for (DiagramPoint& point : points) point.y = std::min(*kilometersPerHour(point.y), kImpossibleKmh);
  return points;
}

double greatest(const std::vector<DiagramPoint>& points) {
  double value = 0.0;
  for (const DiagramPoint& point : points) value = std::max(value, point.y);
  return value;
}

}  // namespace

TripAxis::TripAxis(const TripSpan& span)
    : isTime_(span.leastSeconds.has_value()),
      from_(span.leastSeconds.value_or(0.0)),
      to_(span.greatestSeconds.value_or(static_cast<double>(span.lastIndex))) {
  if (to_ > from_) return;
  const double margin = std::max(30.0, std::fabs(from_) * 1e-9);  // a single instant, in the middle
  from_ -= isTime_ ? margin : 0.0;
  to_ += margin;
}

std::optional<double> TripAxis::valueOf(const SeriesPoint& point) const {
  return isTime_ ? point.seconds : std::optional(static_cast<double>(point.index));
}

void drawCourses(Canvas& canvas, const Area& plot, const TripAxis& axis, const TripPicture& picture) {
  constexpr double kTurn = 360.0;
  drawGround(canvas, plot, axis, "Course", {{0.0, "N"}, {90.0, "E"}, {180.0, "S"}, {270.0, "W"}, {kTurn, "N"}}, kTurn);
  const auto curve = [&](const SeriesThinner& series) {
    return toPixels(foldCourses(alongAxis(series, axis, plot)), plot, kTurn);
  };
  const auto raw = curve(picture.rawCourse()), smoothed = curve(picture.smoothedCourse());
  drawSeries(canvas, plot, raw, smoothed);
  if (raw.empty() && smoothed.empty()) {
    drawNote(canvas, plot, picture.envelope().isEmpty ? "no fixes" : "no courses, and no movement to tell one from");
  }
}

void drawSpeeds(Canvas& canvas, const Area& plot, const TripAxis& axis, const TripPicture& picture,
                const std::string& whyEmpty) {
  const auto raw = inKmh(alongAxis(picture.rawSpeed(), axis, plot));
  const auto smoothed = inKmh(alongAxis(picture.smoothedSpeed(), axis, plot));
  std::vector<double> rawValues;
  for (const DiagramPoint& point : raw) rawValues.push_back(point.y);
  const double top = speedAxisTop(std::move(rawValues), greatest(smoothed));

  drawGround(canvas, plot, axis, "Speed, km/h", countTicks(0.0, top, 4), top);
  drawSeries(canvas, plot, toPixels(raw, plot, top), toPixels(smoothed, plot, top));
  if (raw.empty()) drawNote(canvas, plot, picture.envelope().isEmpty ? "no fixes" : whyEmpty);
  if (const double peak = greatest(raw); peak > top) {
    canvas.text(plot.right(), plot.y - 12.0, "raw peak " + fixedText(peak, 0) + " km/h",
                {.size = theme::kLabelSize, .color = theme::kQuiet, .align = Align::right});
  }
}

void drawAxisLabels(Canvas& canvas, const Area& plot, const TripAxis& axis) {
  const TextStyle label{.size = theme::kLabelSize, .color = theme::kQuiet, .align = Align::center};
  for (const Tick& tick : ticksOf(axis)) {
    canvas.text(pixelX(axis, plot, tick.value), plot.bottom() + 24.0, tick.label, label);
  }
  canvas.text(plot.centerX(), plot.bottom() + 50.0, axis.isTime() ? "time, UTC" : "number of the fix", label);
}

double speedAxisTop(std::vector<double> rawKmh, double greatestSmoothedKmh) {
  constexpr double kLeastTop = 10.0;
  double needed = 0.0;
  if (!rawKmh.empty()) {
    std::sort(rawKmh.begin(), rawKmh.end());
    const double usual = rawKmh[(rawKmh.size() - 1) * 98 / 100];
    const double highest = rawKmh.back();
    needed = highest > 2.0 * usual && usual > 0.0 ? 1.15 * usual : highest;
  }
  needed = std::max({needed, greatestSmoothedKmh, kLeastTop});
  const double step = roundUp(needed / 4);
  return step * std::ceil(needed / step);
}

}  // namespace trip
