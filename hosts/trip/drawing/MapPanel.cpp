// SPDX-License-Identifier: Apache-2.0
#include "MapPanel.h"

#include <algorithm>
#include <cmath>

#include "Axis.h"
#include "MapParts.h"
#include "Theme.h"

namespace trip {

namespace {

constexpr double kPaddingX = 96.0, kPaddingY = 44.0;  // room for "start", "end" and the coordinates at the edges
constexpr double kLongestScaleBar = 220.0;            // pixels
constexpr ScaleBarLooks kScaleBar{
    .inset = 26.0, .tick = 6.0, .labelRise = 14.0, .width = 2.0, .haloWidth = 0.0, .textSize = theme::kLabelSize};
constexpr int kMostMeridians = 8, kMostParallels = 4;

/// The whole envelope in the middle of the panel.
MapTransform fitInto(const Area& panel, const Envelope& envelope) {
  const double scale = fittingScale(envelope, panel.width - 2 * kPaddingX, panel.height - 2 * kPaddingY);
  return {envelope.center(), scale, panel};
}

std::vector<DiagramPoint> fitted(const std::vector<StrokePoint>& track, const MapTransform& fit) {
  std::vector<DiagramPoint> points;
  points.reserve(track.size());
  for (const StrokePoint& point : track) {
    const DiagramPoint at = fit(point.at);
    points.push_back({at.x, at.y, point.startsStroke});
  }
  return points;
}

/// Meridians and parallels of round degrees, labelled at the lower and the left edge.
void drawGraticule(Canvas& canvas, const MapTransform& fit) {
  constexpr double kDegreesOfWorld = 360.0, kScaleBarHeight = 66.0;
  const Area& panel = fit.panel();
  const TextStyle style{.size = theme::kCoordinateSize, .color = theme::kQuiet, .halo = true};
  const ZRMapPoint least = fit.mapPoint({panel.x, panel.y}), greatest = fit.mapPoint({panel.right(), panel.bottom()});
  const double perDegree = ZRMapSizeWorld.width / kDegreesOfWorld;
  for (const Tick& meridian :
       longitudeTicks(least.x / perDegree - 180.0, greatest.x / perDegree - 180.0, kMostMeridians)) {
    const double x = fit({(meridian.value + 180.0) * perDegree, 0.0}).x;
    canvas.line(x, panel.y, x, panel.bottom(), theme::kGrid, 1.0);
    if (x + 5.0 + canvas.textWidth(meridian.label, style) > panel.right()) continue;
    canvas.text(x + 5.0, panel.bottom() - 8.0, meridian.label, style);
  }
  const double north = ZRCoordinateForMapPoint(least).latitude, south = ZRCoordinateForMapPoint(greatest).latitude;
  for (const Tick& parallel : latitudeTicks(south, north, kMostParallels)) {
    const double y = fit(ZRMapPointForCoordinate({parallel.value, 0.0})).y;
    canvas.line(panel.x, y, panel.right(), y, theme::kGrid, 1.0);
    if (y < panel.y + 20.0 || y > panel.bottom() - kScaleBarHeight) continue;
    canvas.text(panel.x + 8.0, y - 5.0, parallel.label, style);
  }
}

void drawNorthArrow(Canvas& canvas, const Area& panel) {
  const double x = panel.right() - 34.0, y = panel.y + 34.0;
  canvas.arrow(x, y, 12.0, theme::kQuiet);
  canvas.text(x, y + 31.0, "N",
              {.size = theme::kLabelSize, .color = theme::kQuiet, .align = Align::center, .bold = true});
}

void drawEnds(Canvas& canvas, DiagramPoint start, DiagramPoint end) {
  // The labels point away from each other, so that they stay readable on a round trip.
  const bool startIsLeft = start.x <= end.x;
  const TextStyle left{
      .size = theme::kLabelSize, .color = theme::kInk, .align = Align::right, .bold = true, .halo = true};
  const TextStyle right{.size = theme::kLabelSize, .color = theme::kInk, .bold = true, .halo = true};
  canvas.disc(start.x, start.y, theme::kMarkRadius, theme::kPaper, theme::kInk, 2.5);
  canvas.disc(end.x, end.y, theme::kMarkRadius - 1.0, theme::kInk, theme::kPaper, 2.0);
  canvas.text(start.x + (startIsLeft ? -14.0 : 14.0), start.y + 5.0, "start", startIsLeft ? left : right);
  canvas.text(end.x + (startIsLeft ? 14.0 : -14.0), end.y + 5.0, "end", startIsLeft ? right : left);
}

}  // namespace

void drawMap(Canvas& canvas, const Area& panel, const TripPicture& picture) {
  canvas.fill(panel, theme::kPanel, theme::kCorner);
  if (picture.envelope().isEmpty) {
    canvas.text(panel.centerX(), panel.centerY(), "no fixes",
                {.size = theme::kTitleSize, .color = theme::kQuiet, .align = Align::center});
  } else {
    const MapTransform fit = fitInto(panel, picture.envelope());
    const double barMeters = scaleBarMeters(fit, kLongestScaleBar);
    const auto raw = fitted(picture.rawTrack().points(), fit);
    canvas.clip(panel, theme::kCorner);
    drawGraticule(canvas, fit);
    canvas.strokes(raw, theme::kRaw, theme::kRawTrackWidth);
    canvas.strokes(fitted(picture.smoothedTrack().points(), fit), theme::kSmoothed, theme::kSmoothedTrackWidth);
    for (const ZRMapPoint& jump : picture.jumps().marks()) {
      canvas.cross(fit(jump).x, fit(jump).y, theme::kMarkRadius - 1.0, theme::kJump, 3.0);
    }
    drawPlaces(canvas, fit, picture.places(), kLightMap, theme::kMarkRadius, theme::kLabelSize);
    drawEnds(canvas, raw.front(), raw.back());
    drawScaleBar(canvas, fit, barMeters, kLightMap, kScaleBar);
    drawNorthArrow(canvas, panel);
    canvas.unclip();
  }
  canvas.frame(panel, theme::kPanelEdge, theme::kCorner);
}

}  // namespace trip
