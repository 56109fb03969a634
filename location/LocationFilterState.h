// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LOCATION_LOCATIONFILTERSTATE_H
#define ZRCORE_LOCATION_LOCATIONFILTERSTATE_H

#include <ZRCore/ZRLocation.h>

#include <memory>
#include <vector>

/// What the location filter remembers from fix to fix. The names are the documented ones of class-level state; nothing
/// but this header and LocationStatics.h declares names with two leading underscores.
struct LocationFilterState {
  LocationFilterState() {
    __significantLocations.reserve(4);
    __previousSpeeds.reserve(4);
  }

  std::vector<std::shared_ptr<ZRLocation>> __significantLocations;  // oldest first, at most 3 between fixes
  std::vector<double> __previousSpeeds;                             // oldest first, at most 3 between fixes
  unsigned __badLocationCount = 0;
  unsigned __goodLocationCount = 0;
  bool __gpsStable = false;
  unsigned __rejectCount = 0;
  std::shared_ptr<ZRLocation> __previousGuidanceLocation;
  std::shared_ptr<ZRLocation> __smoothCourseStartPoint;
  double __smoothCourseMinDistance = 0.0;
  double __smoothCourseLock = 0.0;
};

#endif
