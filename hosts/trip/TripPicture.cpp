// SPDX-License-Identifier: Apache-2.0
#include "TripPicture.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "OutputText.h"

namespace trip {

namespace {
// More than a picture can show: a panel is some 1500 pixels wide.
constexpr std::size_t kTrackPoints = 6000;
constexpr std::size_t kSeriesBuckets = 1000;
constexpr std::size_t kMarks = 500;
constexpr double kFirstTolerance = 0.25;  // map points, about a hand's breadth

std::optional<double> finite(std::optional<double> value) {
  return value && std::isfinite(*value) ? value : std::nullopt;
}

void addValue(SeriesThinner& series, const TripRow& row, std::optional<double> value) {
  if (const auto known = finite(value)) {
    series.add(row.index, finite(row.secondsSince1970), *known);
  } else {
    series.interrupt();
  }
}
}  // namespace

TripPicture::TripPicture()
    : rawTrack_(kTrackPoints, kFirstTolerance),
      smoothedTrack_(kTrackPoints, kFirstTolerance),
      jumps_(kMarks),
      rawCourse_(kSeriesBuckets, SeriesThinner::Keep::newest),
      smoothedCourse_(kSeriesBuckets, SeriesThinner::Keep::newest),
      rawSpeed_(kSeriesBuckets, SeriesThinner::Keep::extremes),
      smoothedSpeed_(kSeriesBuckets, SeriesThinner::Keep::extremes) {}

void TripPicture::add(const TripRow& row) {
  const ZRMapPoint point = plane_.place(row.coordinate);
  envelope_.add(point);
  rawTrack_.add(point);
  if (smoothedFixes_.takes(row)) smoothedTrack_.add(point);
  if (row.jump) jumps_.add(point);

  if (followsSilence(row)) {
    for (SeriesThinner* series : {&rawCourse_, &smoothedCourse_, &rawSpeed_, &smoothedSpeed_}) series->interrupt();
  }
  addValue(rawCourse_, row, row.courseDegrees);
  addValue(smoothedCourse_, row, row.smoothCourseDegrees);
  addValue(rawSpeed_, row, row.speedMetersPerSecond);
  addValue(smoothedSpeed_, row, knownSmoothSpeed(row));
}

std::size_t TripPicture::retainedPoints() const {
  std::size_t count = rawTrack_.points().size() + smoothedTrack_.points().size() + jumps_.marks().size();
  for (const SeriesThinner* series : {&rawCourse_, &smoothedCourse_, &rawSpeed_, &smoothedSpeed_}) {
    count += 2 * series->bucketCount();
  }
  return count;
}

/// Whether fixes are missing before this one: a pause far longer than this recording's own rhythm, and than any hiccup.
bool TripPicture::followsSilence(const TripRow& row) {
  const auto seconds = finite(row.secondsSince1970);
  if (!seconds) return false;
  const auto last = std::exchange(lastSeconds_, seconds);
  if (!last) return false;
  const double interval = *seconds - *last;
  const bool isSilence = usualInterval_ && interval > std::max(10.0, 5.0 * *usualInterval_);
  if (!isSilence && interval >= 0.0)
    usualInterval_ = usualInterval_ ? 0.9 * *usualInterval_ + 0.1 * interval : interval;
  return isSilence;
}

}  // namespace trip
