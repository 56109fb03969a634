#include "MapPanel.h"

#include <ZRCore/ZRGeometryAdditions.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Axis.h"
#include "OutputText.h"
#include "Theme.h"

namespace trip {

namespace {

constexpr double kPaddingX = 70.0, kPaddingY = 44.0;  // at the sides, "start" and "end" need room
constexpr double kLeastMetersAcross = 60.0;           // closer up, a car park would look like a journey
constexpr double kLongestScaleBar = 220.0;            // pixels

/// From the map plane to pixels.
class Fit {
 public:
  Fit(const Envelope& envelope, const Area& panel)
      : panel_(panel),
        center_{(envelope.minX + envelope.maxX) / 2, (envelope.minY + envelope.maxY) / 2},
        metersPerMapPoint_(ZRGroundResolutionAtLatitude(latitude(center_.y))) {
    const double least = kLeastMetersAcross / metersPerMapPoint_;
    const double width = std::max(envelope.maxX - envelope.minX, least);
    const double height = std::max(envelope.maxY - envelope.minY, least);
    scale_ = std::min((panel.width - 2 * kPaddingX) / width, (panel.height - 2 * kPaddingY) / height);
  }

  DiagramPoint operator()(ZRMapPoint point) const {
    return {panel_.centerX() + (point.x - center_.x) * scale_, panel_.centerY() + (point.y - center_.y) * scale_};
  }
  double pixels(double meters) const { return meters / metersPerMapPoint_ * scale_; }
  double meters(double pixels) const { return pixels / scale_ * metersPerMapPoint_; }
  double centerLatitude() const { return latitude(center_.y); }
  /// How much the true scale differs between the middle and the edges of the map.
  double scaleSpread() const {
    const auto atPixel = [this](double y) {
      return ZRGroundResolutionAtLatitude(latitude(center_.y + (y - panel_.centerY()) / scale_));
    };
    return std::max(std::fabs(atPixel(panel_.y) / metersPerMapPoint_ - 1.0),
                    std::fabs(atPixel(panel_.bottom()) / metersPerMapPoint_ - 1.0));
  }

 private:
  static double latitude(double mapPointY) { return ZRCoordinateForMapPoint({0.0, mapPointY}).latitude; }

  Area panel_;
  ZRMapPoint center_;
  double metersPerMapPoint_;
  double scale_ = 1.0;
};

std::vector<DiagramPoint> fitted(const std::vector<ZRMapPoint>& track, const Fit& fit) {
  std::vector<DiagramPoint> points;
  points.reserve(track.size());
  for (const ZRMapPoint& point : track) points.push_back(fit(point));
  return points;
}

void drawGrid(Canvas& canvas, const Area& panel, double cell) {
  for (double x = panel.centerX() - cell * std::floor(panel.width / 2 / cell); x < panel.right(); x += cell) {
    canvas.line(x, panel.y, x, panel.bottom(), theme::kGrid, 1.0);
  }
  for (double y = panel.centerY() - cell * std::floor(panel.height / 2 / cell); y < panel.bottom(); y += cell) {
    canvas.line(panel.x, y, panel.right(), y, theme::kGrid, 1.0);
  }
}

void drawScaleBar(Canvas& canvas, const Area& panel, const Fit& fit, double lengthMeters) {
  const double left = panel.x + 26.0, y = panel.bottom() - 26.0, right = left + fit.pixels(lengthMeters);
  canvas.line(left, y, right, y, theme::kInk, 2.0);
  canvas.line(left, y - 6.0, left, y, theme::kInk, 2.0);
  canvas.line(right, y - 6.0, right, y, theme::kInk, 2.0);
  std::string label = lengthText(lengthMeters);
  if (fit.scaleSpread() > 0.02) {
    char place[32];
    std::snprintf(place, sizeof place, " at %.1f\u00b0 %c", std::fabs(fit.centerLatitude()),
                  fit.centerLatitude() < 0.0 ? 'S' : 'N');
    label += place;
  }
  canvas.text(left, y - 14.0, label, {.size = theme::kLabelSize, .color = theme::kInk, .halo = true});
}

void drawNorthArrow(Canvas& canvas, const Area& panel) {
  const double x = panel.right() - 34.0, y = panel.y + 34.0;
  canvas.triangle(x, y, 12.0, theme::kQuiet);
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

/// Marks the places that lie on the map, wherever around the world the track has gone.
void drawPlaces(Canvas& canvas, const Area& panel, const TripPicture& picture, const Fit& fit) {
  const TextStyle style{.size = theme::kLabelSize, .color = theme::kPlace, .bold = true, .halo = true};
  const double world = ZRMapSizeWorld.width;
  const double centerX = (picture.envelope().minX + picture.envelope().maxX) / 2;
  for (const auto& [coordinate, title] : picture.places()) {
    ZRMapPoint point = ZRMapPointForCoordinate(coordinate);
    point.x += world * std::round((centerX - point.x) / world);
    const DiagramPoint at = fit(point);
    if (at.x < panel.x || at.x > panel.right() || at.y < panel.y || at.y > panel.bottom()) continue;
    canvas.disc(at.x, at.y, theme::kMarkRadius, theme::kPlace, theme::kPaper, 2.0);
    canvas.text(at.x + 13.0, at.y + 5.0, asUtf8(title), style);
  }
}

}  // namespace

void drawMap(Canvas& canvas, const Area& panel, const TripPicture& picture) {
  canvas.fill(panel, theme::kPanel, theme::kCorner);
  if (picture.envelope().isEmpty) {
    canvas.text(panel.centerX(), panel.centerY(), "no fixes",
                {.size = theme::kTitleSize, .color = theme::kQuiet, .align = Align::center});
  } else {
    const Fit fit(picture.envelope(), panel);
    const double barMeters = roundDown(fit.meters(kLongestScaleBar));
    const auto raw = fitted(picture.rawTrack().points(), fit);
    canvas.clip(panel, theme::kCorner);
    drawGrid(canvas, panel, fit.pixels(barMeters));
    canvas.strokes(raw, theme::kRaw, theme::kRawTrackWidth);
    canvas.strokes(fitted(picture.smoothedTrack().points(), fit), theme::kSmoothed, theme::kSmoothedTrackWidth);
    for (const DiagramPoint& jump : fitted(picture.jumps().marks(), fit)) {
      canvas.cross(jump.x, jump.y, theme::kMarkRadius - 1.0, theme::kJump, 3.0);
    }
    drawPlaces(canvas, panel, picture, fit);
    drawEnds(canvas, raw.front(), raw.back());
    drawScaleBar(canvas, panel, fit, barMeters);
    drawNorthArrow(canvas, panel);
    canvas.unclip();
  }
  canvas.frame(panel, theme::kPanelEdge, theme::kCorner);
}

}  // namespace trip
