// SPDX-License-Identifier: Apache-2.0
/// @file
/// The location filter without the location service: flat records in, flat records out.
#ifndef ZRCORE_ZRLOCATIONBATCHFILTER_H
#define ZRCORE_ZRLOCATIONBATCHFILTER_H

#include <ZRCore/CLLocation.h>
#include <ZRCore/ZRExport.h>

#include <cstddef>
#include <memory>

/// What the location filter finds of one fix. The fields are those of ZRLocation under these names.
struct ZRFilteredFix {
  double smoothSpeed = 0.0;           ///< metres per second; negative or NaN: the fix's own, which is unknown
  double smoothCourse = 0.0;          ///< degrees clockwise from north, [0, 360]
  bool exceedsMovementLimit = false;  ///< whether the fix is an implausible jump
  bool significantChange = false;     ///< whether the fix lies far enough from the last such one to count as movement
};

/// A location filter of one's own, for replays, servers and tests: the rules and the results, to the last bit, of
/// `ZRLocationManager::smoothLocationsWithLocations`, with a state that nothing else in the process shares, and without
/// an object for each fix. One filter a trip. An addition. One thread at a time; different filters are independent.
class ZR_EXPORT ZRLocationBatchFilter {
 public:
  /// @param filtersMeasuredValues  whether accuracy and speed of the fixes are judged, as with
  ///        `ZRLocationManager::setFiltersMeasuredValues(true)`. Without it they count as 0.0: the receiver never
  ///        settles, nothing is a jump, speeds are smoothed to 0.0.
  explicit ZRLocationBatchFilter(bool filtersMeasuredValues = false);
  ~ZRLocationBatchFilter();
  ZRLocationBatchFilter(ZRLocationBatchFilter&& other) noexcept;
  /// A filter that has been moved from may be assigned to or destroyed, nothing else.
  ZRLocationBatchFilter& operator=(ZRLocationBatchFilter&& other) noexcept;

  /// Filters `count` fixes, oldest first, each in constant time and without allocating. Calls continue one another: the
  /// results do not depend on where a trip is cut into calls.
  /// @param fixes    degrees, metres, metres per second, as ZRPositionFix says. Any values, NaN and infinite ones too.
  /// @param results  room for `count` records, which must not overlap the fixes. Null only if `count` is 0.
  void filter(const ZRPositionFix* fixes, ZRFilteredFix* results, std::size_t count);

  /// Whether the filter finds the receiver settled: after three fixes in a row with an accuracy in (0, 100] metres.
  bool receiverIsStable() const;
  /// As `ZRLocationManager::lockSmoothCourseToCourseUntilMoved`.
  void lockSmoothCourseToCourseUntilMoved(double courseDegrees, double distanceMeters);
  /// Forgets all that it has seen: the next fix is a trip's first.
  void reset();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

#endif
