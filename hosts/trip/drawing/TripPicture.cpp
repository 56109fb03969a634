// SPDX-License-Identifier: Apache-2.0
#include "TripPicture.h"

#include <trip/OutputText.h>

#include <algorithm>
#include <cmath>
#include <utility>

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
  const bool followsGap = gaps_.precede(row.secondsSince1970);
  addToTracks(row, followsGap);
  addToSeries(row, followsGap);
  widenSpan(row);
}

void TripPicture::addToTracks(const TripRow& row, bool followsGap) {
  const ZRMapPoint point = plane_.place(row.coordinate);
  envelope_.add(point);
  rawTrack_.add(point, followsGap);
  smoothedIsInterrupted_ = smoothedIsInterrupted_ || followsGap;
  if (smoothedFixes_.takes(row)) smoothedTrack_.add(point, std::exchange(smoothedIsInterrupted_, false));
  if (row.jump) jumps_.add(point);
}

void TripPicture::addToSeries(const TripRow& row, bool followsGap) {
  if (followsGap) {
    for (SeriesThinner* series : {&rawCourse_, &smoothedCourse_, &rawSpeed_, &smoothedSpeed_}) series->interrupt();
  }
  hasMoved_ = hasMoved_ || row.significant;
  addValue(rawCourse_, row, row.courseDegrees);
  if (hasMoved_) addValue(smoothedCourse_, row, row.smoothCourseDegrees);
  addValue(rawSpeed_, row, row.speedMetersPerSecond);
  addValue(smoothedSpeed_, row, knownSmoothSpeed(row));
}

void TripPicture::widenSpan(const TripRow& row) {
  span_.lastIndex = row.index;
  const auto seconds = finite(row.secondsSince1970);
  if (!seconds) return;
  span_.leastSeconds = std::min(span_.leastSeconds.value_or(*seconds), *seconds);
  span_.greatestSeconds = std::max(span_.greatestSeconds.value_or(*seconds), *seconds);
}

std::size_t TripPicture::retainedPoints() const {
  std::size_t count = rawTrack_.points().size() + smoothedTrack_.points().size() + jumps_.marks().size();
  for (const SeriesThinner* series : {&rawCourse_, &smoothedCourse_, &rawSpeed_, &smoothedSpeed_}) {
    count += 2 * series->bucketCount();
  }
  return count;
}

}  // namespace trip
