// SPDX-License-Identifier: Apache-2.0
/// @file
/// The geometric vocabulary of the kit: coordinates, the flat Mercator plane of map points, rectangles in it.
/// Readable as C11 and C++20.
///
/// Every function here is a pure leaf computation on doubles: it never fails, allocates or locks, and may be called
/// from any thread. Results are promised to the last bit, on every processor, by every compiler and with every C
/// library: sine, logarithm and their kin are correctly rounded. The rounding mode must be to nearest, the processor's
/// subnormal numbers switched on. An argument may be any double; where nothing else is said, infinities and NaN are
/// computed through. "Clamped" means max with the lower bound first, then min with the upper, so that a NaN counts as
/// the lower bound.
#ifndef ZRCORE_ZRGEOMETRY_H
#define ZRCORE_ZRGEOMETRY_H

#include <stdbool.h>
#include <stdint.h>

#include <ZRCore/ZRExport.h>

ZR_EXTERN_C_BEGIN

// ---- Values ---------------------------------------------------------------------------------------------------------

/// A place on the Earth, in degrees. Both fields exactly 0 stand for "not set" in the address and place model.
typedef struct CLLocationCoordinate2D {
  double latitude;   ///< positive to the north
  double longitude;  ///< positive to the east
} CLLocationCoordinate2D;

/// An extent in degrees.
typedef struct ZRCoordinateSpan {
  double latitudeDelta;
  double longitudeDelta;
} ZRCoordinateSpan;

/// An area given by its middle and its full extent, in degrees.
typedef struct ZRCoordinateRegion {
  CLLocationCoordinate2D center;
  ZRCoordinateSpan span;
} ZRCoordinateRegion;

/// A place in the flat projected world (spherical Mercator). Unit: map points, 2^26 = 67108864 to a side.
typedef struct ZRMapPoint {
  double x;  ///< grows eastwards from the antimeridian
  double y;  ///< grows southwards from the northern edge of the projected world
} ZRMapPoint;

/// An extent in map points.
typedef struct ZRMapSize {
  double width;
  double height;
} ZRMapSize;

/// A rectangle in the plane of map points. A negative width or height is allowed; "standardised" means that such a
/// side is turned round, so that the origin is the smallest x and y.
typedef struct ZRMapRect {
  ZRMapPoint origin;
  ZRMapSize size;
} ZRMapRect;

/// A plain pair. From `mercatorTransform`: projected metres, x east and y north of latitude 0, longitude 0.
typedef struct ZRDoublePoint {
  double x;
  double y;
} ZRDoublePoint;

/// Four doubles in the order in which `ZRBoundingBoxMake` was given them. Their meaning is the caller's.
typedef struct ZRBoundingBox {
  double a;
  double b;
  double c;
  double d;
} ZRBoundingBox;

/// One side of a rectangle, as the platform numbers them.
typedef uint32_t CGRectEdge;
enum { CGRectMinXEdge = 0, CGRectMinYEdge = 1, CGRectMaxXEdge = 2, CGRectMaxYEdge = 3 };

// ---- Constants ------------------------------------------------------------------------------------------------------

/// Radius of the sphere that stands for the Earth, metres: the semi-major axis of WGS 84.
ZR_EXPORT extern const double EarthRadius;
/// The limits of the projected world, degrees. The latitudes are those at which the Mercator plane becomes a square.
ZR_EXPORT extern const double minLat;
ZR_EXPORT extern const double maxLat;
ZR_EXPORT extern const double minLon;
ZR_EXPORT extern const double maxLon;
/// The whole plane: 67108864 map points wide and high.
ZR_EXPORT extern const ZRMapSize ZRMapSizeWorld;
ZR_EXPORT extern const ZRMapRect ZRMapRectWorld;
/// No rectangle, region, span, coordinate: every field is positive infinity, the sizes too.
ZR_EXPORT extern const ZRMapRect ZRMapRectNull;
ZR_EXPORT extern const ZRCoordinateRegion ZRCoordinateRegionNull;
ZR_EXPORT extern const ZRCoordinateSpan ZRCoordinateSpanNull;
ZR_EXPORT extern const CLLocationCoordinate2D ZRCoordinateNull;
/// A coordinate that fails `CLLocationCoordinate2DIsValid`: latitude -180, longitude -180.
ZR_EXPORT extern const CLLocationCoordinate2D kCLLocationCoordinate2DInvalid;
/// Miles per metre.
ZR_EXPORT extern const double ZRMetersToMileRatio;
/// The deepest zoom level of the kit's maps, and the side of a map tile in pixels.
ZR_EXPORT extern const int32_t maxZoom;
ZR_EXPORT extern const int32_t tileSize;
/// The framework's version: 1.0.
ZR_EXPORT extern const double ZRCoreVersionNumber;
/// "@(#)PROGRAM:ZRCore  PROJECT:ZRCore-1", a newline and a zero byte.
ZR_EXPORT extern const unsigned char ZRCoreVersionString[];

/// Metres per degree of latitude, and metres per degree of longitude at the whole latitudes 0 to 90. The library reads
/// both when it computes an approximate distance and never writes them; a host that does must not compute on another
/// thread meanwhile.
ZR_EXPORT extern double metersPerDegreeLat;
ZR_EXPORT extern double metersPerDegreeLng[91];

// ---- Making values --------------------------------------------------------------------------------------------------

/// Each of these returns its arguments as given, without any normalisation.
ZR_EXPORT CLLocationCoordinate2D CLLocationCoordinate2DMake(double latitude, double longitude) ZR_NOEXCEPT;
ZR_EXPORT ZRDoublePoint ZRDoublePointMake(double x, double y) ZR_NOEXCEPT;
ZR_EXPORT ZRBoundingBox ZRBoundingBoxMake(double a, double b, double c, double d) ZR_NOEXCEPT;
ZR_EXPORT ZRCoordinateSpan ZRCoordinateSpanMake(double latitudeDelta, double longitudeDelta) ZR_NOEXCEPT;
ZR_EXPORT ZRCoordinateRegion ZRCoordinateRegionMake(CLLocationCoordinate2D center, ZRCoordinateSpan span) ZR_NOEXCEPT;

/// True when the latitude lies in [-90, 90] and the longitude in [-180, 180]. NaN is not valid.
ZR_EXPORT bool CLLocationCoordinate2DIsValid(CLLocationCoordinate2D coordinate) ZR_NOEXCEPT;

/// True when both deltas equal 0. Minus zero counts as zero; NaN does not.
ZR_EXPORT bool ZRCoordinateSpanIsZero(ZRCoordinateSpan span) ZR_NOEXCEPT;

// ---- Projection -----------------------------------------------------------------------------------------------------

/// Spherical Mercator (EPSG:3857) of a coordinate in degrees, nothing clamped.
/// @return metres. Latitude -90 gives y = -infinity; latitude +90 stays finite (about 2.4e8), because the tangent of
///         the double next to a quarter turn is. Beyond the poles y is NaN or a mirror image.
ZR_EXPORT ZRDoublePoint mercatorTransform(double latitude, double longitude) ZR_NOEXCEPT;

/// The inverse of `mercatorTransform`.
/// @param x, y  metres
/// @return      degrees; the latitude within [-90, 90], the longitude not wrapped
ZR_EXPORT CLLocationCoordinate2D mercatorInverseTransform(double x, double y) ZR_NOEXCEPT;

/// The map point of a coordinate.
/// @param coordinate  degrees, clamped to +-85.05112878 and +-180
/// @return            map points, in [0, 67108864] up to rounding
ZR_EXPORT ZRMapPoint ZRMapPointForCoordinate(CLLocationCoordinate2D coordinate) ZR_NOEXCEPT;

/// The coordinate of a map point.
/// @param mapPoint  x is clamped to [0, 67108863]: one map point short of the world's width, so that the
///                  eastern edge comes out just below 180 degrees. y is not clamped.
/// @return          degrees, always within +-85.05112878 and [-180, 180)
ZR_EXPORT CLLocationCoordinate2D ZRCoordinateForMapPoint(ZRMapPoint mapPoint) ZR_NOEXCEPT;

// ---- Scale ----------------------------------------------------------------------------------------------------------

/// Metres per map point by this kit's own scale law. It falls from 0.597 at the equator to 0 at the northern limit of
/// the world (just below 0 there, as that limit is rounded up) and grows to twice its equatorial value in the south.
/// The kit's maps and routes share this law and must go on agreeing. `ZRGroundResolutionAtLatitude` of the additions
/// has the true size of a map point.
/// @param latitude  degrees, clamped to +-85.05112878
ZR_EXPORT double ZRMetersPerMapPointAtLatitude(double latitude) ZR_NOEXCEPT;

/// Metres per pixel of 256-pixel tiles, by the same law. "Latitute" is part of the interface.
/// @param latitude  degrees, clamped to +-85.05112878
/// @param zoom      level; each halves the result. Meaningful from 0 to `maxZoom`, not checked.
ZR_EXPORT double ZRMetersPerMapPointAtLatituteAndZoom(double latitude, int32_t zoom) ZR_NOEXCEPT;

/// The reciprocal of `ZRMetersPerMapPointAtLatitude`: huge, and of either sign, at the northern limit.
ZR_EXPORT double ZRMapPointsPerMeterAtLatitude(double latitude) ZR_NOEXCEPT;

/// Great-circle distance between two map points.
/// @param a, b  map points, taken to coordinates as `ZRCoordinateForMapPoint` does
/// @return      metres, >= 0 and always finite; exactly 0 when a equals b
/// Source: haversine (Sinnott 1984) on the sphere of `EarthRadius`; within 0.7 % of the ellipsoid.
ZR_EXPORT double ZRMetersBetweenMapPoints(ZRMapPoint a, ZRMapPoint b) ZR_NOEXCEPT;

/// Degrees to radians.
ZR_EXPORT double degreesToRads(double degrees) ZR_NOEXCEPT;

/// Degrees of latitude per metre, and metres per degree of latitude: constants. In these four names "Lat" and "Lon"
/// tell the direction along which the other coordinate changes; they are part of the interface.
ZR_EXPORT double degreesPerMeterAtLon(void) ZR_NOEXCEPT;
ZR_EXPORT double metersPerDegreeAtLon(void) ZR_NOEXCEPT;
/// Degrees of longitude per metre, and metres per degree of longitude, along a parallel.
/// @param latitude  degrees, not clamped. At a pole the first is huge (about 1.5e11) and the second nearly 0.
ZR_EXPORT double degreesPerMeterAtLat(double latitude) ZR_NOEXCEPT;
ZR_EXPORT double metersPerDegreeAtLat(double latitude) ZR_NOEXCEPT;

/// The region round a coordinate.
/// @param center              degrees, clamped to the projected world
/// @param latitudinalMeters   full extent north to south, metres, not checked: a negative one gives a negative span
/// @param longitudinalMeters  full extent west to east, metres, likewise
ZR_EXPORT ZRCoordinateRegion ZRCoordinateRegionMakeWithDistance(CLLocationCoordinate2D center, double latitudinalMeters,
                                                                double longitudinalMeters) ZR_NOEXCEPT;

/// The region spanned by two coordinates, of which the first counts as the north-west corner: the center always lies
/// south and east of it, wherever the second one is. Callers that do not know the order must sort first.
ZR_EXPORT ZRCoordinateRegion ZRCoordinateRegionMakeWithCoordinates(CLLocationCoordinate2D first,
                                                                   CLLocationCoordinate2D second) ZR_NOEXCEPT;

// ---- Map rectangles -------------------------------------------------------------------------------------------------
//
// A rectangle is "null-origin" when the x or the y of its origin is infinite, of either sign; its size does not matter.

/// The smallest rectangle that holds both.
/// @return  b as it is when a is null-origin, the null rectangle when b is too; else a as it is when b is null-origin;
///          else standardised, with a size >= 0. A NaN edge of a carries over, one of b is passed over.
ZR_EXPORT ZRMapRect ZRMapRectUnion(ZRMapRect a, ZRMapRect b) ZR_NOEXCEPT;

/// What both have in common, standardised. Rectangles that only touch have a common rectangle without width or height.
/// @return  the null rectangle when they are apart, when either is null-origin, or has a NaN edge
ZR_EXPORT ZRMapRect ZRMapRectIntersection(ZRMapRect a, ZRMapRect b) ZR_NOEXCEPT;

/// The rectangle made smaller by dx and dy in all: by HALF of them on each side, unlike the platform's own inset. Not
/// standardised; a size below 0 is kept. A null-origin rectangle gives the null rectangle.
ZR_EXPORT ZRMapRect ZRMapRectInset(ZRMapRect rect, double dx, double dy) ZR_NOEXCEPT;

/// The rectangle moved, not standardised. A null-origin rectangle gives the null rectangle.
ZR_EXPORT ZRMapRect ZRMapRectOffset(ZRMapRect rect, double dx, double dy) ZR_NOEXCEPT;

/// Cuts a strip off one side. Both results are standardised.
/// @param rect       if null-origin, nothing is written at all
/// @param part       receives the strip; not null
/// @param remainder  receives the rest; not null
/// @param amount     breadth of the strip, map points; below 0 or NaN counts as 0, more than there is takes all
/// @param edge       the side to cut at; an unknown number counts as `CGRectMaxYEdge`
ZR_EXPORT void ZRMapRectDivide(ZRMapRect rect, ZRMapRect* part, ZRMapRect* remainder, double amount,
                               CGRectEdge edge) ZR_NOEXCEPT;

/// True when the point lies in the standardised rectangle or on any of its four edges.
ZR_EXPORT bool ZRMapRectContainsPoint(ZRMapRect rect, ZRMapPoint point) ZR_NOEXCEPT;

/// True when b lies within a, edges included, both standardised. A rectangle with x or y at +infinity counts as nothing
/// here: it lies within every rectangle and contains no other. A NaN edge gives false.
ZR_EXPORT bool ZRMapRectContainsRect(ZRMapRect a, ZRMapRect b) ZR_NOEXCEPT;

/// True when they have at least one point in common, touching edges included, both standardised. A rectangle with x or
/// y at +infinity meets nothing. A NaN edge gives false.
ZR_EXPORT bool ZRMapRectIntersectsRect(ZRMapRect a, ZRMapRect b) ZR_NOEXCEPT;

/// The point wrapped into the world, y as well as x, although the plane repeats from east to west only.
/// @return  map points in [0, 67108864]: the upper end is reached by a negative so tiny that adding the world's width
///          rounds to it. Infinite coordinates give NaN.
ZR_EXPORT ZRMapPoint ZRMapPointNormalized(ZRMapPoint point) ZR_NOEXCEPT;

/// True when the rectangle reaches over the antimeridian, either end of the world. The left side is compared after
/// wrapping, the right one as it stands.
ZR_EXPORT bool ZRMapRectSpans180thMeridian(ZRMapRect rect) ZR_NOEXCEPT;

/// The part of the rectangle beyond the antimeridian, moved to the other end of the world, or the null rectangle. Here
/// both sides are compared as they stand, so a rectangle wholly past the world's end has no remainder although
/// `ZRMapRectSpans180thMeridian` is true of it.
ZR_EXPORT ZRMapRect ZRMapRectRemainder(ZRMapRect rect) ZR_NOEXCEPT;

/// The region of a map rectangle; the null region for a null-origin one.
/// @return  the span is made of the ABSOLUTE values of the corners' coordinates, so it is smaller than the true extent
///          when the rectangle straddles the equator or the prime meridian. Callers rely on that.
ZR_EXPORT ZRCoordinateRegion ZRCoordinateRegionForMapRect(ZRMapRect rect) ZR_NOEXCEPT;

/// The map rectangle of a region, cut off at the edges of the projected world.
/// @return  the null rectangle when the center AND the span are infinite in one of their fields each
ZR_EXPORT ZRMapRect ZRMapRectForZRCoordinateRegion(ZRCoordinateRegion region) ZR_NOEXCEPT;

/// The region of `ZRCoordinateRegionMakeWithCoordinates` between the northern and the southern of two coordinates, with
/// their longitudes exchanged: the northern corner has the southern coordinate's longitude. Callers rely on that. At
/// equal latitudes b's longitude goes with the first corner.
ZR_EXPORT ZRCoordinateRegion ZRCoordinateRegionBetweenCoords(CLLocationCoordinate2D a,
                                                             CLLocationCoordinate2D b) ZR_NOEXCEPT;

/// The minimum bounding rectangle of a set of points.
/// @param points  `count` map points; may be null when count is 0. NaN coordinates are passed over.
/// @return        the null rectangle for no point; for one, a square of 2000 map points round it (a NaN stays);
///                for more, their bounds. The search starts at +-2^63: points farther out are not followed.
ZR_EXPORT ZRMapRect ZRMBR(const ZRMapPoint* points, uint64_t count) ZR_NOEXCEPT;

/// Straight distance in the plane, in the unit of its arguments. (`ZRGeometry.hpp` has it for `ZRDoublePoint` too.)
ZR_EXPORT double distanceBetweenPoints(ZRMapPoint a, ZRMapPoint b) ZR_NOEXCEPT;

ZR_EXTERN_C_END

#endif
