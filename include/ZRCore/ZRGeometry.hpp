// SPDX-License-Identifier: Apache-2.0
/// @file
/// The part of the geometry that needs C++: an overload and the helpers on coordinates.
#ifndef ZRCORE_ZRGEOMETRY_HPP
#define ZRCORE_ZRGEOMETRY_HPP

#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeometry.h>

/// Straight distance in the plane, in the unit of its arguments.
inline double distanceBetweenPoints(ZRDoublePoint a, ZRDoublePoint b) noexcept {
  return distanceBetweenPoints(ZRMapPoint{a.x, a.y}, ZRMapPoint{b.x, b.y});
}

/// Small helpers on coordinates in degrees. Pure, any thread; infinities and NaN are computed through.
class ZR_EXPORT ZRCoordinateUtils {
 public:
  ZRCoordinateUtils() = delete;

  /// Initial great-circle bearing.
  /// @return  degrees clockwise from north, in [0, 360]: 360 itself comes out for a course a hair west of north,
  ///          because the angle is rounded to single precision before the full turn is added. 0 between equal
  ///          coordinates.
  static float bearingFromTo(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept;

  /// Fast distance by a table of the lengths of a degree (`metersPerDegreeLat`, `metersPerDegreeLng`, read as they are
  /// at the time of the call).
  /// @return  metres. Good for nearby places only; longitudes are not wrapped, so that places on either side of the
  ///          antimeridian come out a world apart. A mean latitude of 90 or more continues the table's last interval.
  static double approximateDistanceFromTo(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept;

  /// A coordinate on the straight line in degrees.
  /// Longitudes are not wrapped: half-way between 179 and -179 degrees is 0, the other side of the Earth.
  /// @param percent  a fraction, despite its name: 0 gives `from`, 1 gives `to`. Not clamped.
  static CLLocationCoordinate2D interpolateFromToPercent(CLLocationCoordinate2D from, CLLocationCoordinate2D to,
                                                         float percent) noexcept;

  /// The place on the segment from `start` to `end` that is closest to `coord`, measured in plain degrees. An end of
  /// the segment is returned exactly; a segment without length gives `start`. Longitudes are not wrapped: a segment
  /// from 179 to -179 degrees goes the long way round.
  static CLLocationCoordinate2D closestCoordToCoordAlongLineWithStartingCoordAndEndingCoord(
      CLLocationCoordinate2D coord, CLLocationCoordinate2D start, CLLocationCoordinate2D end) noexcept;

  /// True when both fields are equal, without tolerance.
  static bool coordIsEqualTo(CLLocationCoordinate2D a, CLLocationCoordinate2D b) noexcept;
};

#endif
