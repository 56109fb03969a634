// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_TRIPPICTURE_H
#define ZRCORE_HOSTS_TRIP_TRIPPICTURE_H

#include <ZRCore/ZRGeometry.h>

#include "EndlessPlane.h"
#include "Envelope.h"
#include "LineSimplifier.h"
#include "MarkThinner.h"
#include "PlaceMark.h"
#include "SeriesThinner.h"
#include "SmoothedTrack.h"
#include "TripRow.h"

namespace trip {

/// What a picture of a trip shows, in bounded memory: the tracks in the Mercator plane and the values over time.
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

  const SeriesThinner& rawCourse() const { return rawCourse_; }            ///< degrees
  const SeriesThinner& smoothedCourse() const { return smoothedCourse_; }  ///< degrees
  const SeriesThinner& rawSpeed() const { return rawSpeed_; }              ///< metres per second
  const SeriesThinner& smoothedSpeed() const { return smoothedSpeed_; }    ///< metres per second

  /// Everything that grows with the trip, counted in kept points.
  std::size_t retainedPoints() const;

 private:
  bool followsSilence(const TripRow& row);

  LineSimplifier rawTrack_, smoothedTrack_;
  MarkThinner jumps_;
  std::vector<PlaceMark> places_;
  Envelope envelope_;
  SeriesThinner rawCourse_, smoothedCourse_, rawSpeed_, smoothedSpeed_;
  SmoothedTrack smoothedFixes_;
  EndlessPlane plane_;
  std::optional<double> lastSeconds_;
  std::optional<double> usualInterval_;  ///< seconds
};

}  // namespace trip

#endif
