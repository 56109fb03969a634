// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>

#include "Kernels.h"

ZRDoublePoint mercatorTransform(double latitude, double longitude) noexcept {
  return geometry::kernels().mercator(latitude, longitude);
}

CLLocationCoordinate2D mercatorInverseTransform(double x, double y) noexcept {
  return geometry::kernels().inverseMercator(x, y);
}

ZRMapPoint ZRMapPointForCoordinate(CLLocationCoordinate2D coordinate) noexcept {
  return geometry::kernels().mapPoint(coordinate);
}

CLLocationCoordinate2D ZRCoordinateForMapPoint(ZRMapPoint mapPoint) noexcept {
  return geometry::kernels().coordinate(mapPoint);
}
