// SPDX-License-Identifier: Apache-2.0
/// @file
/// Additions to the geometry: right where the documented functions are fixed as they are. Readable as C11 and C++20.
/// Pure leaf computations, any thread.
#ifndef ZRCORE_ZRGEOMETRYADDITIONS_H
#define ZRCORE_ZRGEOMETRYADDITIONS_H

#include <ZRCore/ZRGeometry.h>

ZR_EXTERN_C_BEGIN

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

ZR_EXTERN_C_END

#endif
