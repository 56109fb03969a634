// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_DIAGRAMS_H
#define ZRCORE_HOSTS_TRIP_DRAWING_DIAGRAMS_H

#include "Canvas.h"
#include "TripPicture.h"

namespace trip {

/// The horizontal axis that all diagrams of a trip share: the time, or the number of the fix when no fix has a time.
class TripAxis {
 public:
  explicit TripAxis(const TripSpan& span);

  bool isTime() const { return isTime_; }
  double from() const { return from_; }
  double to() const { return to_; }
  /// The value on this axis; nothing for a fix without a time among others with one.
  std::optional<double> valueOf(const SeriesPoint& point) const;

 private:
  bool isTime_ = false;
  double from_ = 0.0;
  double to_ = 1.0;
};

/// Course over time, from north through east, south and west to north.
void drawCourses(Canvas& canvas, const Area& plot, const TripAxis& axis, const TripPicture& picture);
/// Speed over time in km/h. Rare peaks far above the rest leave at the top and are given in words.
/// @param whyEmpty  what stands there when the recording has no speeds
void drawSpeeds(Canvas& canvas, const Area& plot, const TripAxis& axis, const TripPicture& picture,
                const std::string& whyEmpty);
/// The labels of the shared axis, under the lowest diagram.
void drawAxisLabels(Canvas& canvas, const Area& plot, const TripAxis& axis);

/// The top of a speed axis, a round number of km/h: above every smoothed speed, and above all but the rarest raw ones.
double speedAxisTop(std::vector<double> rawKmh, double greatestSmoothedKmh);

}  // namespace trip

#endif
