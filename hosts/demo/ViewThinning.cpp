// SPDX-License-Identifier: Apache-2.0
#include "ViewThinning.h"

#include <cmath>
#include <optional>

namespace demo {

using trip::DiagramPoint;

namespace {

constexpr double kAround = 16.0;    // pixels around the view, so that the ends of thick lines stay outside
constexpr double kCoarsest = 32.0;  // pixels

trip::Area grown(const trip::Area& area) {
  return {area.x - kAround, area.y - kAround, area.width + 2 * kAround, area.height + 2 * kAround};
}

bool contains(const trip::Area& box, DiagramPoint point) {
  return point.x >= box.x && point.x <= box.right() && point.y >= box.y && point.y <= box.bottom();
}

double squaredDistance(DiagramPoint a, DiagramPoint b) { return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y); }

/// A stretch of which `from` and `to` (0 to 1) lie on the edge of a box, or inside it.
struct Clip {
  double from = 0.0, to = 1.0;
};

/// Liang and Barsky 1984: the part of the stretch inside the box; nothing when it passes by.
std::optional<Clip> clipped(DiagramPoint a, DiagramPoint b, const trip::Area& box) {
  Clip clip;
  const auto cut = [&clip](double toEdge, double step) {  // keeps where step * t <= toEdge
    if (step == 0.0) return toEdge >= 0.0;
    const double t = toEdge / step;
    if (step < 0.0) {
      clip.from = std::fmax(clip.from, t);
    } else {
      clip.to = std::fmin(clip.to, t);
    }
    return clip.from <= clip.to;
  };
  const double dx = b.x - a.x, dy = b.y - a.y;
  const bool isVisible =
      cut(a.x - box.x, -dx) && cut(box.right() - a.x, dx) && cut(a.y - box.y, -dy) && cut(box.bottom() - a.y, dy);
  return isVisible ? std::optional(clip) : std::nullopt;
}

DiagramPoint between(DiagramPoint a, DiagramPoint b, double t) {
  return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
}

/// Puts strokes together and leaves out points that lie nearer than the tolerance to their predecessor.
class Strokes {
 public:
  explicit Strokes(double tolerance) : squaredTolerance_(tolerance * tolerance) {}

  void begin(DiagramPoint point) {
    end();
    points_.push_back({point.x, point.y, true});
    isOpen_ = true;
  }
  void lineTo(DiagramPoint point) {
    if (squaredDistance(point, points_.back()) >= squaredTolerance_) {
      points_.push_back(point);
      left_.reset();
    } else {
      left_ = point;
    }
  }
  /// A stroke ends where it ends, however near that is.
  void end() {
    if (left_) points_.push_back(*left_);
    left_.reset();
    isOpen_ = false;
  }
  bool isOpen() const { return isOpen_; }
  std::vector<DiagramPoint>& points() { return points_; }

 private:
  double squaredTolerance_;
  bool isOpen_ = false;
  std::optional<DiagramPoint> left_;
  std::vector<DiagramPoint> points_;
};

std::vector<DiagramPoint> strokesWithin(std::span<const TrackPoint> track, const trip::MapTransform& view,
                                        double tolerance, std::size_t maxPoints) {
  const trip::Area box = grown(view.panel());
  Strokes strokes(tolerance);
  DiagramPoint previous{};
  bool previousIsInside = false;
  for (const TrackPoint& point : track) {
    const DiagramPoint pixel = view(point.at);
    const bool isInside = contains(box, pixel);
    if (point.startsStroke || &point == track.data()) {
      strokes.end();
      if (isInside) strokes.begin(pixel);
    } else if (isInside && previousIsInside) {
      strokes.lineTo(pixel);
    } else if (const auto clip = clipped(previous, pixel, box)) {
      if (!strokes.isOpen()) strokes.begin(between(previous, pixel, clip->from));
      strokes.lineTo(isInside ? pixel : between(previous, pixel, clip->to));
      if (!isInside) strokes.end();
    } else {
      strokes.end();
    }
    previous = pixel;
    previousIsInside = isInside;
    if (strokes.points().size() > maxPoints) break;
  }
  strokes.end();
  return std::move(strokes.points());
}

}  // namespace

VisibleTrack visibleTrack(std::span<const TrackPoint> track, const trip::MapTransform& view, std::size_t maxPoints) {
  VisibleTrack visible;
  for (;;) {
    visible.strokes = strokesWithin(track, view, visible.tolerancePixels, maxPoints);
    if (visible.strokes.size() <= maxPoints || visible.tolerancePixels >= kCoarsest) return visible;
    visible.tolerancePixels *= 2.0;
  }
}

std::vector<DiagramPoint> visibleMarks(const std::vector<TrackPoint>& marks, const trip::MapTransform& view,
                                       double cellPixels) {
  const trip::Area box = grown(view.panel());
  const auto columns = static_cast<std::size_t>(box.width / cellPixels) + 1;
  const auto rows = static_cast<std::size_t>(box.height / cellPixels) + 1;
  std::vector<bool> isTaken(columns * rows, false);
  std::vector<DiagramPoint> pixels;
  for (const TrackPoint& mark : marks) {
    const DiagramPoint pixel = view(mark.at);
    if (!contains(box, pixel)) continue;
    const auto column = static_cast<std::size_t>((pixel.x - box.x) / cellPixels);
    const auto row = static_cast<std::size_t>((pixel.y - box.y) / cellPixels);
    if (isTaken[row * columns + column]) continue;
    isTaken[row * columns + column] = true;
    pixels.push_back(pixel);
  }
  return pixels;
}

}  // namespace demo
