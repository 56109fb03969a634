// SPDX-License-Identifier: Apache-2.0
#include "CourseFold.h"

#include <cmath>

namespace trip {

namespace {
constexpr double kTurn = 360.0;
}

std::vector<DiagramPoint> foldCourses(const std::vector<DiagramPoint>& courses) {
  std::vector<DiagramPoint> folded;
  for (DiagramPoint point : courses) {
    point.y = std::fmod(point.y, kTurn);
    if (point.y < 0.0) point.y += kTurn;
    if (!folded.empty() && !point.startsStroke) {
      const DiagramPoint last = folded.back();
      if (point.y == 0.0 && last.y > kTurn / 2) point.y = kTurn;  // north itself: no crossing, the near edge
      const double step = point.y - last.y;
      if (std::fabs(step) > kTurn / 2) {
        const double edge = step < 0.0 ? kTurn : 0.0;  // where the line leaves
        const double toEdge = std::fabs(edge - last.y), way = kTurn - std::fabs(step);
        const double x = way > 0.0 ? last.x + (point.x - last.x) * toEdge / way : last.x;
        folded.push_back({x, edge, false});
        folded.push_back({x, kTurn - edge, true});
      }
    }
    folded.push_back(point);
  }
  return folded;
}

}  // namespace trip
