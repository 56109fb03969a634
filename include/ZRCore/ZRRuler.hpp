// SPDX-License-Identifier: Apache-2.0
/// @file
/// Short distances, quickly: a ruler made for the neighbourhood of one latitude.
#ifndef ZRCORE_ZRRULER_HPP
#define ZRCORE_ZRRULER_HPP

#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeometry.h>

#include <cmath>
#include <cstddef>
#include <cstdint>

/// Measures on the ellipsoid of WGS 84 near one latitude. An addition: for the distances of routes, lanes and turns,
/// computed by the million; `ZRGreatCircleDistance` is for any distance, on the sphere.
///
/// Within 0.1 degree of its latitude, which is between -80 and 80, distances of up to 1 km are within 1e-5 m of the
/// geodesic's length, and of up to 10 km within 1e-3 m. Farther from its latitude and between farther places it gets
/// worse without a warning. Longitudes go the short way round.
///
/// A plain value without allocations. Any thread. NaN and infinite arguments give NaN, in what depends on them.
///
/// Source: Gauss' mid-latitude formulas with the spherical terms of third order (Torge and Mueller, Geodesy, 2012,
/// section 6.3), radii of curvature as power series about the ruler's latitude.
class ZR_EXPORT ZRRuler {
 public:
  /// @param latitude  degrees; at best that of the middle of what will be measured
  explicit ZRRuler(double latitude) noexcept;

  /// Metres, >= 0.
  double distance(CLLocationCoordinate2D from, CLLocationCoordinate2D to) const noexcept {
    const Way way = wayBetween(from, to);
    return std::sqrt(way.east * way.east + way.north * way.north);
  }

  /// The direction in the middle of the way, which is that of the way back but for a half turn: degrees clockwise from
  /// north, in [0, 360]. 0 between equal places.
  double bearing(CLLocationCoordinate2D from, CLLocationCoordinate2D to) const noexcept;

  /// The place at a distance (metres) in a direction, as `bearing` tells it: degrees; the longitude in [-180, 180].
  CLLocationCoordinate2D destination(CLLocationCoordinate2D from, double bearingDegrees,
                                     double distanceMeters) const noexcept;

  /// Where a line comes closest.
  struct NearestPoint {
    CLLocationCoordinate2D coordinate;  ///< degrees; NaN of a line without points
    double distanceMeters;              ///< from the place; NaN of a line without points
    std::uint64_t segment;              ///< the number of the point of the line before it
    double fraction;                    ///< how far between that point and the next, in [0, 1]
  };
  /// @param line  `count` points, of segments that are straight in the ruler's plane; may be null when `count` is 0. A
  ///              first point that is NaN or infinite gives NaN; later ones are passed over with their segments
  NearestPoint nearestPoint(CLLocationCoordinate2D place, const CLLocationCoordinate2D* line,
                            std::uint64_t count) const noexcept;

 private:
  /// In metres.
  struct Way {
    double east, north;
  };
  /// In metres a degree.
  struct Scale {
    double east, north;
  };

  Scale scaleAt(double latitude) const noexcept {
    const double d = latitude - latitude_;
    return {(east_[2] * d + east_[1]) * d + east_[0], (north_[2] * d + north_[1]) * d + north_[0]};
  }

  Way wayBetween(CLLocationCoordinate2D from, CLLocationCoordinate2D to) const noexcept {
    double eastDegrees = to.longitude - from.longitude;
    if (!(std::fabs(eastDegrees) <= 180.0)) [[unlikely]]
      eastDegrees = std::remainder(eastDegrees, 360.0);
    return wayOf(0.5 * (from.latitude + to.latitude), to.latitude - from.latitude, eastDegrees);
  }

  /// sin(s/2) cos(a) = sin(dLat/2) cos(dLon/2) and sin(s/2) sin(a) = cos(lat) sin(dLon/2), both to the third order,
  /// with the ruler's latitude in the terms of that order.
  Way wayOf(double middle, double northDegrees, double eastDegrees) const noexcept {
    const Scale scale = scaleAt(middle);
    const double east = scale.east * eastDegrees, north = scale.north * northDegrees;
    const double square = east * east;
    return {east + east * (arc_ * (north * north) - bend_ * square), north - north * (rise_ * square)};
  }

  double latitude_;
  double east_[3], north_[3];  // of the series in degrees
  double arc_, bend_, rise_;   // 1 / (24 R^2), times tan^2(lat), times 2 + 3 tan^2(lat)
};

#endif
