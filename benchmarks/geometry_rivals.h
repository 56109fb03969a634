// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_BENCHMARKS_GEOMETRY_RIVALS_H
#define ZRCORE_BENCHMARKS_GEOMETRY_RIVALS_H

#include <ZRCore/ZRGeometry.h>

#include <cstddef>

/// What one would write down without much thought: the formula and nothing else.
namespace plain {
ZR_EXPORT ZRMapPoint mapPoint(CLLocationCoordinate2D coordinate) noexcept;
ZR_EXPORT CLLocationCoordinate2D coordinate(ZRMapPoint point) noexcept;
ZR_EXPORT double haversine(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept;
ZR_EXPORT float bearing(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept;
ZR_EXPORT ZRMapRect unionOf(ZRMapRect a, ZRMapRect b) noexcept;
ZR_EXPORT ZRMapRect intersectionOf(ZRMapRect a, ZRMapRect b) noexcept;
/// A loop over x, y, x, y, ...
ZR_EXPORT ZRMapRect bounds(const double* coordinates, std::size_t count) noexcept;
}  // namespace plain

/// The same formulas over arrays, on the vector functions of the C library and of SLEEF (`count` divisible by 4).
namespace libmvec {
ZR_EXPORT void mapPoints(const CLLocationCoordinate2D* from, ZRMapPoint* to, std::size_t count) noexcept;
ZR_EXPORT void coordinates(const ZRMapPoint* from, CLLocationCoordinate2D* to, std::size_t count) noexcept;
}  // namespace libmvec
namespace sleef {
ZR_EXPORT void mapPoints(const CLLocationCoordinate2D* from, ZRMapPoint* to, std::size_t count) noexcept;
}

#endif
