// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_TRIPPICTURE_H
#define ZRCORE_HOSTS_TRIP_DRAWING_TRIPPICTURE_H

#include <ZRCore/ZRGeometry.h>
#include <trip/SmoothedTrack.h>
#include <trip/TimeGaps.h>
#include <trip/TripRow.h>

#include "EndlessPlane.h"
#include "Envelope.h"
#include "LineSimplifier.h"
#include "MarkThinner.h"
#include "PlaceMark.h"
#include "SeriesThinner.h"

namespace trip {

/// What the diagrams of a trip lie over.
struct TripSpan {
  std::uint64_t lastIndex = 0;
  std::optional<double> leastSeconds, greatestSeconds;  ///< since 1970; of the fixes that have a time
};

/// What a picture of a trip shows, in bounded memory: the tracks in the Mercator plane and the values over time. No
/// line leads over a gap in time, nor over values that are missing.
class TripPicture {
 public:
  TripPicture();
  void add(const TripRow& row);
  void setPlaces(std::vector<PlaceMark> places) { places_ = std::move(places); }

  const LineSimplifier& rawTrack() const { return rawTrack_; }
  const LineSimplifier& smoothedTrack() const { return smoothedTrack_; }
  const MarkThinner& jumps() const { return jumps_; }
  const std::vector<PlaceMark>& places() const { return places_; }
  const Envelope& envelope() const { return envelope_; }  ///< of all fixes; places do not widen it
  const TripSpan& span() const { return span_; }

  const SeriesThinner& rawCourse() const { return rawCourse_; }  ///< degrees
  /// Degrees. It begins with the first significant movement: the course of a receiver that has not left its first place
  /// is 0.0, which would be north.
  const SeriesThinner& smoothedCourse() const { return smoothedCourse_; }
  const SeriesThinner& rawSpeed() const { return rawSpeed_; }            ///< metres per second
  const SeriesThinner& smoothedSpeed() const { return smoothedSpeed_; }  ///< metres per second

  /// Everything that grows with the trip, counted in kept points.
  std::size_t retainedPoints() const;

 private:
  void addToTracks(const TripRow& row, bool followsGap);
  void addToSeries(const TripRow& row, bool followsGap);
  void widenSpan(const TripRow& row);

  LineSimplifier rawTrack_, smoothedTrack_;
  MarkThinner jumps_;
  std::vector<PlaceMark> places_;
  Envelope envelope_;
  SeriesThinner rawCourse_, smoothedCourse_, rawSpeed_, smoothedSpeed_;
  SmoothedTrack smoothedFixes_;
  bool smoothedIsInterrupted_ = false;
  bool hasMoved_ = false;
  EndlessPlane plane_;
  TimeGaps gaps_;
  TripSpan span_;
};

}  // namespace trip

#endif
