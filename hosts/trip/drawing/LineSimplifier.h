// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_LINESIMPLIFIER_H
#define ZRCORE_HOSTS_TRIP_DRAWING_LINESIMPLIFIER_H

#include <ZRCore/ZRGeometry.h>

#include <cstddef>
#include <vector>

namespace trip {

/// A place on a track in the map plane.
struct StrokePoint {
  ZRMapPoint at{};
  bool startsStroke = false;  ///< whether something is missing before it, so that no line leads to it
};

/// A line in the map plane that loses detail as it grows, so that it never holds more than a given number of points.
///
/// Whenever it is full, the points that are new since the last time are simplified (Ramer 1972, Douglas and Peucker
/// 1973). If that frees too few places, the tolerance is doubled and the whole line simplified with it, until half of
/// the places are free. The first and the newest point always stay, and so do the ends of strokes, as long as the gap
/// between them is longer than the tolerance.
class LineSimplifier {
 public:
  /// @param maxPoints       at least 4
  /// @param firstTolerance  map points, > 0: the tolerance of the first simplification
  LineSimplifier(std::size_t maxPoints, double firstTolerance);

  void add(ZRMapPoint point, bool startsStroke = false);

  const std::vector<StrokePoint>& points() const { return points_; }

  /// Map points: no point that was ever added lies further than this from the strokes through `points()`. Each
  /// tolerance was applied to a point at most once, so the bound is their sum; 0 while nothing was dropped.
  double errorBound() const { return errorBound_; }

 private:
  void makeRoom();
  void simplify(std::size_t first);
  void closeInvisibleGaps(std::size_t first);

  std::size_t maxPoints_;
  double tolerance_;
  double errorBound_ = 0.0;
  std::size_t settled_ = 0;  ///< the points up to this one have been simplified with the present tolerance
  std::vector<StrokePoint> points_;
};

/// The distance of `point` from the stretch between `from` and `to`, in map points.
double distanceFromStretch(ZRMapPoint point, ZRMapPoint from, ZRMapPoint to);

}  // namespace trip

#endif
