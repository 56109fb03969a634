// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LOCATION_LOCATIONFILTER_H
#define ZRCORE_LOCATION_LOCATIONFILTER_H

#include <ZRCore/ZRLocation.h>
#include <ZRCore/ZRLocationBatchFilter.h>

#include "LocationFilterState.h"

/// Judges and smooths a stream of fixes, one at a time, in constant time and memory. One thread.
class LocationFilter {
 public:
  /// Finds the receiver settled after three fixes in a row with an accuracy in (0, 100] metres, unsettled after three
  /// worse ones. An accuracy that is not above 0 changes nothing and breaks no run.
  void updateStability(double horizontalAccuracyMeters);

  /// What gives an implausible jump away: the fix's speed alone, as documented, or also the speed at which the way from
  /// the last guidance location would have been made. The second is an addition: reflected signals move the place, and
  /// not the speed, which receivers take from the Doppler shift.
  enum class JumpSigns { ownSpeed, ownSpeedAndPlace };

  /// What the rules read of a fix.
  struct Reading {
    CLLocationCoordinate2D coordinate{};
    NSDate timestamp{};
    double speed = 0.0;     // metres per second
    bool isMarked = false;  // as a jump, by whoever made the record
  };

  /// Marks implausible jumps and significant movement, computes smoothed course and speed.
  ZRFilteredFix judged(const Reading& fix, JumpSigns signs);

  /// The same for a record: reads and writes its own fields, never what it was constructed with.
  void updateDynamicProperties(ZRLocation& record, JumpSigns signs = JumpSigns::ownSpeed);

  /// Reports `courseDegrees` as the smoothed course until a record lies `distanceMeters` or more from the last guidance
  /// location; without one there is no lock, but course and distance are overwritten all the same.
  void lockSmoothCourse(double courseDegrees, double distanceMeters);

  bool isStable() const { return state_.__gpsStable; }
  const LocationFilterState& state() const { return state_; }

 private:
  bool isImplausibleJump(const Reading& fix, JumpSigns signs) const;
  bool liesTooFarAway(const Reading& fix) const;
  void chooseGuidanceLocation(const Reading& fix, bool isJump);
  bool isSignificant(const geometry::KnownPlace& place, bool isJump);
  double smoothCourse(const geometry::KnownPlace& place);
  double smoothSpeed(double speed, bool isJump);

  LocationFilterState state_;
};

#endif
