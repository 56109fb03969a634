/// @file
/// Additions to the geometry: right where the documented functions are fixed as they are. Readable as C11 and C++20.
#ifndef ZRCORE_ZRGEOMETRYADDITIONS_H
#define ZRCORE_ZRGEOMETRYADDITIONS_H

#include <ZRCore/ZRGeometry.h>

ZR_EXTERN_C_BEGIN

/// Great-circle distance between two coordinates, in metres.
ZR_EXPORT double ZRGreatCircleDistance(CLLocationCoordinate2D from, CLLocationCoordinate2D to) ZR_NOEXCEPT;

ZR_EXTERN_C_END

#endif
