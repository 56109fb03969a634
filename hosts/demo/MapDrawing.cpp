// SPDX-License-Identifier: Apache-2.0
#include "MapDrawing.h"

#include <trip/drawing/Theme.h>

#include <algorithm>
#include <cmath>
#include <span>

#include "ViewThinning.h"

namespace demo {

using trip::theme::rgb;

const trip::MapColors kDarkMap{.ground = rgb(0x1b2026),
                               .grid = rgb(0x2a3139),
                               .ink = rgb(0xe6ebf0),
                               .quiet = rgb(0x93a1ae),
                               .route = rgb(0x36414c),
                               .raw = rgb(0x52677a),
                               .smoothed = rgb(0x62a8ff),
                               .jump = rgb(0xff8a3c),
                               .place = rgb(0x6fd39a),
                               .halo = {0.106, 0.125, 0.149, 0.9}};

namespace {

constexpr std::size_t kMostPoints = 3000;  // of a track; what cairo strokes well within a frame
constexpr std::size_t kPiece = 16;         // points
constexpr double kLongestScaleBar = 140.0;
constexpr double kTextSize = 12.5;
constexpr trip::ScaleBarLooks kScaleBar{
    .inset = 16.5, .tick = 5.0, .labelRise = 10.0, .width = 1.5, .haloWidth = 4.0, .textSize = kTextSize};
constexpr double kSignificantRadius = 2.2, kJumpRadius = 5.0, kMarkRadius = 6.5;  // pixels
constexpr double kMarkCell = 20.0;
constexpr double kEdgeWidth = 9.0;  // of a track over a base map, whose colours may be the track's

/// Lines through round places of the plane, so that they go with the map.
void drawGrid(trip::Canvas& canvas, const trip::MapTransform& view, double cellPixels, trip::Color color) {
  const trip::Area& panel = view.panel();
  const trip::DiagramPoint corner = view({0.0, 0.0});
  const auto first = [cellPixels](double start, double through) {
    return start + std::fmod(std::fmod(through - start, cellPixels) + cellPixels, cellPixels);
  };
  for (double x = first(panel.x, corner.x); x < panel.right(); x += cellPixels) {
    canvas.line(std::floor(x) + 0.5, panel.y, std::floor(x) + 0.5, panel.bottom(), color, 1.0);
  }
  for (double y = first(panel.y, corner.y); y < panel.bottom(); y += cellPixels) {
    canvas.line(panel.x, std::floor(y) + 0.5, panel.right(), std::floor(y) + 0.5, color, 1.0);
  }
}

/// In pieces: cairo takes long over one path that crosses itself often.
void drawStrokes(trip::Canvas& canvas, const std::vector<trip::DiagramPoint>& points, trip::Color color, double width) {
  for (std::size_t begin = 0; begin < points.size();) {
    const std::size_t end = std::min(begin + kPiece, points.size());
    const auto first = points.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto last = points.begin() + static_cast<std::ptrdiff_t>(end);
    canvas.strokes({first, last}, color, width);
    const bool goesOn = last != points.end() && !last->startsStroke;
    begin = goesOn ? end - 1 : end;
  }
}

/// What of the route is not covered by the track. Where nothing was lost, that begins with the newest fix.
std::span<const TrackPoint> uncovered(const MapContent& content) {
  const auto& heard = content.track.raw();
  const std::span<const TrackPoint> route(content.route);
  const bool hasAll = !heard.empty() && heard.size() == heard.back().index + 1 && heard.size() <= route.size();
  return hasAll ? route.subspan(heard.size() - 1) : route;
}

void drawTrack(trip::Canvas& canvas, const trip::MapTransform& view, const MapContent& content,
               const trip::MapColors& colors) {
  const TripTrack& track = content.track;
  const auto drawWide = [&](std::span<const TrackPoint> points, trip::Color color) {
    const auto strokes = visibleTrack(points, view, kMostPoints).strokes;
    if (!content.tiles.empty()) drawStrokes(canvas, strokes, colors.ground, kEdgeWidth);
    drawStrokes(canvas, strokes, color, 5.0);
  };
  drawWide(uncovered(content), colors.route);
  drawWide(track.raw(), colors.raw);
  drawStrokes(canvas, visibleTrack(track.smoothed(), view, kMostPoints).strokes, colors.smoothed, 2.2);
  for (const auto& mark : visibleMarks(track.significant(), view, kMarkCell)) {
    canvas.disc(mark.x, mark.y, kSignificantRadius, colors.ground, colors.smoothed, 1.5);
  }
  for (const auto& jump : visibleMarks(track.jumps(), view, kMarkCell)) {
    canvas.cross(jump.x, jump.y, kJumpRadius, colors.jump, 2.5);
  }
}

/// What the lines and crosses mean, at the top left.
void drawLegend(trip::Canvas& canvas, const trip::MapTransform& view, const MapContent& content,
                const trip::MapColors& colors) {
  constexpr double kLine = 24.0, kRow = 20.0;
  const double left = view.panel().x + 16.0;
  double y = view.panel().y + 22.0;
  const auto label = [&](const char* text) {
    canvas.text(left + kLine + 8.0, y + 4.5, text,
                {.size = kTextSize, .color = colors.quiet, .halo = true, .haloColor = colors.halo});
    y += kRow;
  };
  if (content.track.raw().size() < content.route.size()) {
    canvas.line(left, y, left + kLine, y, colors.route, 5.0);
    label("to come");
  }
  canvas.line(left, y, left + kLine, y, colors.raw, 5.0);
  label("raw");
  canvas.line(left, y, left + kLine, y, colors.smoothed, 2.2);
  label("smoothed");
  canvas.disc(left + kLine / 2, y, kSignificantRadius, colors.ground, colors.smoothed, 1.5);
  label("significant");
  if (content.track.jumps().empty()) return;
  canvas.cross(left + kLine / 2, y, kJumpRadius, colors.jump, 2.5);
  label("jump");
}

}  // namespace

void drawMap(trip::CairoCanvas& canvas, const trip::MapTransform& view, const MapContent& content,
             const trip::MapColors& colors) {
  const double barMeters = trip::scaleBarMeters(view, std::min(kLongestScaleBar, view.panel().width / 2));
  canvas.fill(view.panel(), colors.ground, 0.0);
  drawGrid(canvas, view, std::max(view.pixels(barMeters), 24.0), colors.grid);
  for (const auto& [picture, whole, shown] : content.tiles) canvas.picture(*picture, whole, shown);
  drawTrack(canvas, view, content, colors);
  trip::drawPlaces(canvas, view, content.places, colors, kMarkRadius, kTextSize);
  if (content.snapped) {
    const trip::DiagramPoint at = trip::nearestCopy(view, *content.snapped);
    canvas.disc(at.x, at.y, kMarkRadius + 3.0, {0.0, 0.0, 0.0, 0.0}, colors.quiet, 1.5);
  }
  if (!content.track.raw().empty()) {
    const trip::DiagramPoint newest = view(content.track.raw().back().at);
    canvas.disc(newest.x, newest.y, kMarkRadius, colors.smoothed, colors.ground, 2.5);
  }
  drawLegend(canvas, view, content, colors);
  trip::drawScaleBar(canvas, view, barMeters, colors, kScaleBar);
}

}  // namespace demo
