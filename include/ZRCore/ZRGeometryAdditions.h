// SPDX-License-Identifier: Apache-2.0
/// @file
/// Additions to the geometry: right where the documented functions are fixed as they are. Readable as C11 and C++20.
/// Pure leaf computations, any thread.
#ifndef ZRCORE_ZRGEOMETRYADDITIONS_H
#define ZRCORE_ZRGEOMETRYADDITIONS_H

#include <ZRCore/ZRGeometry.h>

#ifdef __cplusplus
#include <algorithm>
#include <concepts>
#include <span>
#endif

ZR_EXTERN_C_BEGIN

/// Whether the operations on rectangles take `rect` for none: the x or the y of its origin is infinite, of either sign.
/// Its size does not matter, and NaN is not null. `ZRMapRectNull` is one.
ZR_EXPORT bool ZRMapRectIsNull(ZRMapRect rect) ZR_NOEXCEPT;

/// Whether all fields compare equal, without tolerance: -0 equals 0, NaN equals nothing, infinity equals itself (so the
/// null values equal themselves). Rectangles are not standardised first. (C++ has `==` for the same types below.)
ZR_EXPORT bool ZRMapPointEqualToPoint(ZRMapPoint a, ZRMapPoint b) ZR_NOEXCEPT;
ZR_EXPORT bool ZRMapRectEqualToRect(ZRMapRect a, ZRMapRect b) ZR_NOEXCEPT;
ZR_EXPORT bool ZRCoordinateRegionEqualToRegion(ZRCoordinateRegion a, ZRCoordinateRegion b) ZR_NOEXCEPT;

/// Great-circle distance between two coordinates.
/// @param from, to  degrees, not clamped
/// @return          metres, >= 0, exactly 0 between equal coordinates; NaN for a field that is NaN or infinite
/// Source: haversine (Sinnott 1984) on the sphere of `EarthRadius`; within 0.7 % of the ellipsoid.
ZR_EXPORT double ZRGreatCircleDistance(CLLocationCoordinate2D from, CLLocationCoordinate2D to) ZR_NOEXCEPT;

/// The true length of a map point on the ground, by the cosine law of the Mercator projection: the same in both
/// hemispheres, unlike `ZRMetersPerMapPointAtLatitude`.
/// @param latitude  degrees, clamped to +-85.05112878 (NaN counts as the southern limit)
/// @return          metres per map point, from 0.0515 at the limits to 0.5972 at the equator
/// Source: Snyder, Map Projections: A Working Manual (1987), scale factor of the spherical Mercator, 1 / cos(latitude).
ZR_EXPORT double ZRGroundResolutionAtLatitude(double latitude) ZR_NOEXCEPT;

/// Where one arrives by leaving a place on a great circle.
/// @param origin          degrees
/// @param bearingDegrees  initial course, clockwise from north, any number of turns; at a pole it counts from the
///                        origin's meridian
/// @param distanceMeters  along the great circle; a negative one goes backwards, one of any length goes on round
/// @return                degrees, latitude in [-90, 90], longitude in [-180, 180]; NaN for an argument that is NaN or
///                        infinite
/// Source: the direct problem on the sphere of `EarthRadius`, with arctangents instead of an arcsine so that it stays
/// accurate near the poles.
ZR_EXPORT CLLocationCoordinate2D ZRDestinationCoordinate(CLLocationCoordinate2D origin, double bearingDegrees,
                                                         double distanceMeters) ZR_NOEXCEPT;

/// @name Batches
/// One call for `count` elements. Each result has the bits of the single call's, but for the fast forms. Input and
/// output must not overlap; with a count of 0 they may be null.
/// @{

/// `ZRMapPointForCoordinate` of each.
ZR_EXPORT void ZRMapPointsForCoordinates(const CLLocationCoordinate2D* coordinates, ZRMapPoint* mapPoints,
                                         uint64_t count) ZR_NOEXCEPT;

/// `ZRCoordinateForMapPoint` of each.
ZR_EXPORT void ZRCoordinatesForMapPoints(const ZRMapPoint* mapPoints, CLLocationCoordinate2D* coordinates,
                                         uint64_t count) ZR_NOEXCEPT;

/// `ZRGreatCircleDistance` from one place to each of `count`: metres.
ZR_EXPORT void ZRGreatCircleDistancesFrom(CLLocationCoordinate2D from, const CLLocationCoordinate2D* to, double* meters,
                                          uint64_t count) ZR_NOEXCEPT;

/// `ZRGreatCircleDistance` of each place of a line of `count` to the next: count - 1 distances in metres.
ZR_EXPORT void ZRGreatCircleDistancesAlong(const CLLocationCoordinate2D* line, uint64_t count,
                                           double* meters) ZR_NOEXCEPT;

/// `ZRCoordinateUtils::bearingFromTo` of each place of a line of `count` to the next: count - 1 bearings in degrees,
/// clockwise from north, in [0, 360].
ZR_EXPORT void ZRBearingsAlong(const CLLocationCoordinate2D* line, uint64_t count, float* degrees) ZR_NOEXCEPT;

/// `ZRMapRectIntersectsRect` of one rectangle and each of `count`.
/// @param bits  (count + 63) / 64 words: bit i % 64 of word i / 64 tells of rects[i]; bits past the last are 0
ZR_EXPORT void ZRMapRectIntersectsRects(ZRMapRect rect, const ZRMapRect* rects, uint64_t count,
                                        uint64_t* bits) ZR_NOEXCEPT;

/// The smallest rectangle that holds all of `count`, standardised. Null-origin rectangles and NaN edges are passed
/// over.
/// @return  the null rectangle when there is no other. The size is rounded once: a chain of `ZRMapRectUnion` rounds it
///          at each step.
ZR_EXPORT ZRMapRect ZRMapRectUnionOfRects(const ZRMapRect* rects, uint64_t count) ZR_NOEXCEPT;

/// Their bits may differ between processors: the quick form of `ZRMapPointsForCoordinates`, for drawing.
/// @return  x and y within 1.2 * 2^-27 map points (5.4 nanometres of the projected equator) of the exact value
///          of the projection's formula, of which the single call may be 4.7 * 2^-27 off near the edge. Clamped as it
///          is.
ZR_EXPORT void ZRMapPointsForCoordinatesFast(const CLLocationCoordinate2D* coordinates, ZRMapPoint* mapPoints,
                                             uint64_t count) ZR_NOEXCEPT;

/// Their bits may differ between processors: the quick form of `ZRCoordinatesForMapPoints`, for drawing.
/// @return  degrees, within 4e-14 of the exact value of the formula. Clamped as the single call's.
ZR_EXPORT void ZRCoordinatesForMapPointsFast(const ZRMapPoint* mapPoints, CLLocationCoordinate2D* coordinates,
                                             uint64_t count) ZR_NOEXCEPT;
/// @}

ZR_EXTERN_C_END

#ifdef __cplusplus
/// `ZRMapPointEqualToPoint`, `ZRMapRectEqualToRect` and `ZRCoordinateRegionEqualToRegion` as operators. Templates, so
/// that an operator of the host's own for these types is preferred and not defined twice.
template <std::same_as<ZRMapPoint> Point>
bool operator==(const Point& a, const Point& b) noexcept {
  return ZRMapPointEqualToPoint(a, b);
}
template <std::same_as<ZRMapRect> Rect>
bool operator==(const Rect& a, const Rect& b) noexcept {
  return ZRMapRectEqualToRect(a, b);
}
template <std::same_as<ZRCoordinateRegion> Region>
bool operator==(const Region& a, const Region& b) noexcept {
  return ZRCoordinateRegionEqualToRegion(a, b);
}

/// `ZRMBR` of all points of a span.
inline ZRMapRect ZRMBR(std::span<const ZRMapPoint> points) noexcept { return ZRMBR(points.data(), points.size()); }

inline ZRMapRect ZRMapRectUnionOfRects(std::span<const ZRMapRect> rects) noexcept {
  return ZRMapRectUnionOfRects(rects.data(), rects.size());
}

/// The same for spans. As many elements are computed as both spans have room for.
inline void ZRMapPointsForCoordinates(std::span<const CLLocationCoordinate2D> coordinates,
                                      std::span<ZRMapPoint> mapPoints) noexcept {
  ZRMapPointsForCoordinates(coordinates.data(), mapPoints.data(), std::min(coordinates.size(), mapPoints.size()));
}
inline void ZRCoordinatesForMapPoints(std::span<const ZRMapPoint> mapPoints,
                                      std::span<CLLocationCoordinate2D> coordinates) noexcept {
  ZRCoordinatesForMapPoints(mapPoints.data(), coordinates.data(), std::min(mapPoints.size(), coordinates.size()));
}
inline void ZRMapPointsForCoordinatesFast(std::span<const CLLocationCoordinate2D> coordinates,
                                          std::span<ZRMapPoint> mapPoints) noexcept {
  ZRMapPointsForCoordinatesFast(coordinates.data(), mapPoints.data(), std::min(coordinates.size(), mapPoints.size()));
}
inline void ZRCoordinatesForMapPointsFast(std::span<const ZRMapPoint> mapPoints,
                                          std::span<CLLocationCoordinate2D> coordinates) noexcept {
  ZRCoordinatesForMapPointsFast(mapPoints.data(), coordinates.data(), std::min(mapPoints.size(), coordinates.size()));
}
inline void ZRGreatCircleDistancesFrom(CLLocationCoordinate2D from, std::span<const CLLocationCoordinate2D> to,
                                       std::span<double> meters) noexcept {
  ZRGreatCircleDistancesFrom(from, to.data(), meters.data(), std::min(to.size(), meters.size()));
}
/// `meters` has one element less than `line`.
inline void ZRGreatCircleDistancesAlong(std::span<const CLLocationCoordinate2D> line,
                                        std::span<double> meters) noexcept {
  ZRGreatCircleDistancesAlong(line.data(), std::min(line.size(), meters.size() + 1), meters.data());
}
/// `degrees` has one element less than `line`.
inline void ZRBearingsAlong(std::span<const CLLocationCoordinate2D> line, std::span<float> degrees) noexcept {
  ZRBearingsAlong(line.data(), std::min(line.size(), degrees.size() + 1), degrees.data());
}
#endif

#endif
