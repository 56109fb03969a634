#ifndef ZRCORE_HOSTS_TRIP_TRIPPICTURE_H
#define ZRCORE_HOSTS_TRIP_TRIPPICTURE_H

#include <ZRCore/ZRGeometry.h>

#include "LineSimplifier.h"
#include "MarkThinner.h"
#include "PlaceMark.h"
#include "SeriesThinner.h"
#include "SmoothedTrack.h"
#include "TripRow.h"

namespace trip {

/// A rectangle around everything that was put into it; empty at first.
struct Envelope {
  double minX = 0.0, maxX = 0.0, minY = 0.0, maxY = 0.0;
  bool isEmpty = true;

  void add(ZRMapPoint point);
};

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
  ZRMapPoint place(CLLocationCoordinate2D coordinate);
  bool followsSilence(const TripRow& row);

  LineSimplifier rawTrack_, smoothedTrack_;
  MarkThinner jumps_;
  std::vector<PlaceMark> places_;
  Envelope envelope_;
  SeriesThinner rawCourse_, smoothedCourse_, rawSpeed_, smoothedSpeed_;
  SmoothedTrack smoothedFixes_;
  double worldsEast_ = 0.0;  ///< how many times the track went around the world, in map points
  std::optional<double> lastWorldX_;
  std::optional<double> lastSeconds_;
  std::optional<double> usualInterval_;  ///< seconds
};

}  // namespace trip

#endif
