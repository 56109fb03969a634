// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_COURSEFOLD_H
#define ZRCORE_HOSTS_TRIP_DRAWING_COURSEFOLD_H

#include <vector>

namespace trip {

/// A point of a diagram in the units of its axes.
struct DiagramPoint {
  double x;
  double y;
  bool startsStroke = false;
};

/// Courses for a diagram from 0 to 360 degrees: from one course to the next the line turns the shorter way, and where
/// that leads past north it leaves at one edge and comes back at the other instead of crossing the diagram.
/// @param courses  y in degrees, any value
/// @return         y in [0, 360]; no line leads over more than 180 degrees
std::vector<DiagramPoint> foldCourses(const std::vector<DiagramPoint>& courses);

}  // namespace trip

#endif
