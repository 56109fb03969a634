// SPDX-License-Identifier: Apache-2.0
#include "MapParts.h"

#include <trip/OutputText.h>

#include <cmath>
#include <utility>

#include "Theme.h"

namespace trip {

const MapColors kLightMap{.ground = theme::kPanel,
                          .grid = theme::kGrid,
                          .ink = theme::kInk,
                          .quiet = theme::kQuiet,
                          .route = theme::rgb(0xd3dde6),
                          .raw = theme::kRaw,
                          .smoothed = theme::kSmoothed,
                          .jump = theme::kJump,
                          .place = theme::kPlace,
                          .halo = {1.0, 1.0, 1.0, 0.9}};

DiagramPoint nearestCopy(const MapTransform& view, CLLocationCoordinate2D coordinate) {
  const double world = ZRMapSizeWorld.width * view.pixelsPerMapPoint();
  DiagramPoint at = view(ZRMapPointForCoordinate(coordinate));
  at.x += world * std::round((view.panel().centerX() - at.x) / world);
  return at;
}

void drawScaleBar(Canvas& canvas, const MapTransform& view, double meters, const MapColors& colors,
                  const ScaleBarLooks& looks) {
  const double left = view.panel().x + looks.inset, right = left + std::round(view.pixels(meters));
  const double y = view.panel().bottom() - looks.inset;
  for (const auto& [color, width] : {std::pair(colors.halo, looks.haloWidth), std::pair(colors.ink, looks.width)}) {
    if (width <= 0.0) continue;
    canvas.line(left, y, right, y, color, width);
    canvas.line(left, y - looks.tick, left, y, color, width);
    canvas.line(right, y - looks.tick, right, y, color, width);
  }
  canvas.text(left, y - looks.labelRise, scaleBarLabel(view, meters),
              {.size = looks.textSize, .color = colors.ink, .halo = true, .haloColor = colors.halo});
}

void drawPlaces(Canvas& canvas, const MapTransform& view, const std::vector<PlaceMark>& places, const MapColors& colors,
                double radius, double textSize) {
  const double beside = radius + 6.0;
  const Area& panel = view.panel();
  const TextStyle right{.size = textSize, .color = colors.place, .bold = true, .halo = true, .haloColor = colors.halo};
  TextStyle left = right;
  left.align = Align::right;
  for (const auto& [coordinate, title] : places) {
    const DiagramPoint at = nearestCopy(view, coordinate);
    if (at.x < panel.x || at.x > panel.right() || at.y < panel.y || at.y > panel.bottom()) continue;
    canvas.disc(at.x, at.y, radius, colors.place, colors.ground, 2.0);
    const std::string text = asUtf8(title);
    const bool fits = at.x + beside + canvas.textWidth(text, right) < panel.right();
    canvas.text(fits ? at.x + beside : at.x - beside, at.y + 5.0, text, fits ? right : left);
  }
}

}  // namespace trip
