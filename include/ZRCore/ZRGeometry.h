/// @file
/// The geometric vocabulary of the kit: coordinates, the flat Mercator plane of map points, rectangles in it.
/// Readable as C11 and C++20.
#ifndef ZRCORE_ZRGEOMETRY_H
#define ZRCORE_ZRGEOMETRY_H

#include <stdbool.h>
#include <stdint.h>

#include <ZRCore/ZRExport.h>

ZR_EXTERN_C_BEGIN

/// A place on the Earth, in degrees.
typedef struct CLLocationCoordinate2D {
  double latitude;
  double longitude;
} CLLocationCoordinate2D;

ZR_EXPORT extern const double EarthRadius;

ZR_EXTERN_C_END

#endif
