// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometryAdditions.h>

#include "Kernels.h"

void ZRMapPointsForCoordinates(const CLLocationCoordinate2D* coordinates, ZRMapPoint* mapPoints,
                               uint64_t count) noexcept {
  geometry::kernels().mapPoints(coordinates, mapPoints, count);
}

void ZRCoordinatesForMapPoints(const ZRMapPoint* mapPoints, CLLocationCoordinate2D* coordinates,
                               uint64_t count) noexcept {
  geometry::kernels().coordinates(mapPoints, coordinates, count);
}

void ZRGreatCircleDistancesFrom(CLLocationCoordinate2D from, const CLLocationCoordinate2D* to, double* meters,
                                uint64_t count) noexcept {
  geometry::kernels().distancesFrom(from, to, meters, count);
}

void ZRGreatCircleDistancesAlong(const CLLocationCoordinate2D* line, uint64_t count, double* meters) noexcept {
  if (count > 1) geometry::kernels().distancesAlong(line, meters, count - 1);
}

void ZRBearingsAlong(const CLLocationCoordinate2D* line, uint64_t count, float* degrees) noexcept {
  if (count > 1) geometry::kernels().bearingsAlong(line, degrees, count - 1);
}

void ZRMapRectIntersectsRects(ZRMapRect rect, const ZRMapRect* rects, uint64_t count, uint64_t* bits) noexcept {
  geometry::kernels().intersects(rect, rects, count, bits);
}

ZRMapRect ZRMapRectUnionOfRects(const ZRMapRect* rects, uint64_t count) noexcept {
  return geometry::kernels().unionOf(rects, count);
}

void ZRMapPointsForCoordinatesFast(const CLLocationCoordinate2D* coordinates, ZRMapPoint* mapPoints,
                                   uint64_t count) noexcept {
  geometry::kernels().mapPointsFast(coordinates, mapPoints, count);
}

void ZRCoordinatesForMapPointsFast(const ZRMapPoint* mapPoints, CLLocationCoordinate2D* coordinates,
                                   uint64_t count) noexcept {
  geometry::kernels().coordinatesFast(mapPoints, coordinates, count);
}
