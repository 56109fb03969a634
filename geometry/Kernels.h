// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_KERNELS_H
#define ZRCORE_GEOMETRY_KERNELS_H

#include <ZRCore/ZRGeometry.h>

#include <exact/Exact.h>

#include <cstdint>

#include "KnownPlace.h"

/// What is computed often, compiled for several processors: the projection, distances and bearings, singly and in
/// batches. All builds give the same bits, but for the fast forms.
namespace geometry {

struct Kernels {
  ZRDoublePoint (*mercator)(double latitude, double longitude) noexcept;
  CLLocationCoordinate2D (*inverseMercator)(double x, double y) noexcept;
  ZRMapPoint (*mapPoint)(CLLocationCoordinate2D coordinate) noexcept;
  CLLocationCoordinate2D (*coordinate)(ZRMapPoint point) noexcept;
  double (*greatCircleDistance)(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept;
  double (*metersBetween)(ZRMapPoint a, ZRMapPoint b) noexcept;
  /// Degrees clockwise from north, in [-180, 180].
  double (*initialBearing)(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept;
  double (*bearingBetween)(const KnownPlace& from, const KnownPlace& to) noexcept;

  void (*mapPoints)(const CLLocationCoordinate2D* from, ZRMapPoint* to, std::uint64_t count) noexcept;
  void (*coordinates)(const ZRMapPoint* from, CLLocationCoordinate2D* to, std::uint64_t count) noexcept;
  void (*mapPointsFast)(const CLLocationCoordinate2D* from, ZRMapPoint* to, std::uint64_t count) noexcept;
  void (*coordinatesFast)(const ZRMapPoint* from, CLLocationCoordinate2D* to, std::uint64_t count) noexcept;
  /// From one place to `count` others.
  void (*distancesFrom)(CLLocationCoordinate2D from, const CLLocationCoordinate2D* to, double* meters,
                        std::uint64_t count) noexcept;
  /// Of each of `count` places to the next in `line`, which has one more.
  void (*distancesAlong)(const CLLocationCoordinate2D* line, double* meters, std::uint64_t count) noexcept;
  /// Bit i % 64 of bits[i / 64]: whether `rect` and rects[i] intersect.
  void (*intersects)(const ZRMapRect& rect, const ZRMapRect* rects, std::uint64_t count, std::uint64_t* bits) noexcept;
  ZRMapRect (*unionOf)(const ZRMapRect* rects, std::uint64_t count) noexcept;
  /// Of two or more points.
  ZRMapRect (*bounds)(const ZRMapPoint* points, std::uint64_t count) noexcept;
  void (*bearingsAlong)(const CLLocationCoordinate2D* line, float* degrees, std::uint64_t count) noexcept;
};

/// The quickest that this processor can run. The common ones until the library's variables are initialised.
extern const Kernels* bestKernels;
inline const Kernels& kernels() noexcept { return *bestKernels; }

/// One build's, for comparisons.
const Kernels& kernelsOf(exact::Build build) noexcept;

}  // namespace geometry

#endif
