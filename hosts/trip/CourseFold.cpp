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
      const double step = point.y - last.y;
      if (std::fabs(step) > kTurn / 2) {
        const double edge = step < 0.0 ? kTurn : 0.0;  // where the line leaves
        const double toEdge = std::fabs(edge - last.y);
        const double x = last.x + (point.x - last.x) * toEdge / (kTurn - std::fabs(step));
        folded.push_back({x, edge, false});
        folded.push_back({x, kTurn - edge, true});
      }
    }
    folded.push_back(point);
  }
  return folded;
}

}  // namespace trip
