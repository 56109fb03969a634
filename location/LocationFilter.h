// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LOCATION_LOCATIONFILTER_H
#define ZRCORE_LOCATION_LOCATIONFILTER_H

#include <ZRCore/ZRLocation.h>

#include <memory>

#include "LocationFilterState.h"

/// Judges and smooths a stream of fixes, one at a time, in constant time and memory. It reads and writes the records'
/// own fields, never what they were constructed with. One thread.
class LocationFilter {
 public:
  /// Finds the receiver settled after three fixes in a row with an accuracy in (0, 100] metres, unsettled after three
  /// worse ones. An accuracy that is not above 0 changes nothing and breaks no run.
  void updateStability(const ZRLocation& location);

  /// What gives an implausible jump away: the record's own speed alone, as documented, or also the speed at which the
  /// way from the last guidance location would have been made. The second is an addition: reflected signals move the
  /// place, and not the speed, which receivers take from the Doppler shift.
  enum class JumpSigns { ownSpeed, ownSpeedAndPlace };

  /// Marks implausible jumps and significant movement, computes smoothed course and speed. The filter keeps the record:
  /// the next fixes are compared with it.
  void updateDynamicProperties(const std::shared_ptr<ZRLocation>& location, JumpSigns signs = JumpSigns::ownSpeed);

  /// Reports `courseDegrees` as the smoothed course until a record lies `distanceMeters` or more from the last guidance
  /// location; without one there is no lock, but course and distance are overwritten all the same.
  void lockSmoothCourse(double courseDegrees, double distanceMeters);

  bool isStable() const { return state_.__gpsStable; }
  const LocationFilterState& state() const { return state_; }

 private:
  void markImplausibleJump(ZRLocation& location, JumpSigns signs);
  bool liesTooFarAway(const ZRLocation& location) const;
  void chooseGuidanceLocation(const std::shared_ptr<ZRLocation>& location);
  void markSignificantMovement(const std::shared_ptr<ZRLocation>& location);
  void smoothCourse(ZRLocation& location);
  void smoothSpeed(ZRLocation& location);

  LocationFilterState state_;
};

#endif
