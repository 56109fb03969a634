// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LOCATION_LOCATIONFILTERSTATE_H
#define ZRCORE_LOCATION_LOCATIONFILTERSTATE_H

#include <ZRCore/CLLocation.h>
#include <geometry/KnownPlace.h>

#include <array>
#include <cstddef>
#include <optional>

/// The last three entries, oldest first.
template <class Entry>
class ShortHistory {
 public:
  void append(const Entry& entry) {
    if (size_ == entries_.size()) {
      for (std::size_t i = 1; i < entries_.size(); ++i) entries_[i - 1] = entries_[i];
      --size_;
    }
    entries_[size_++] = entry;
  }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  const Entry& front() const { return entries_.front(); }
  const Entry& back() const { return entries_[size_ - 1]; }
  const Entry* begin() const { return entries_.data(); }
  const Entry* end() const { return entries_.data() + size_; }

 private:
  std::array<Entry, 3> entries_{};
  std::size_t size_ = 0;
};

/// What later fixes are compared with. A record's coordinate and timestamp never change, so that these stand for it.
struct AcceptedPlace {
  CLLocationCoordinate2D coordinate{};
  NSDate timestamp{};
};

/// What the location filter remembers from fix to fix. The names are the documented ones of class-level state; nothing
/// but this header and LocationStatics.h declares names with two leading underscores.
struct LocationFilterState {
  ShortHistory<geometry::KnownPlace> __significantLocations;
  ShortHistory<double> __previousSpeeds;
  unsigned __badLocationCount = 0;
  unsigned __goodLocationCount = 0;
  bool __gpsStable = false;
  unsigned __rejectCount = 0;
  std::optional<AcceptedPlace> __previousGuidanceLocation;
  std::optional<AcceptedPlace> __smoothCourseStartPoint;
  double __smoothCourseMinDistance = 0.0;
  double __smoothCourseLock = 0.0;
};

#endif
