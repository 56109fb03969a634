// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>

#include "Projection.h"

ZRDoublePoint mercatorTransform(double latitude, double longitude) noexcept {
  return geometry::mercator(latitude, longitude);
}

CLLocationCoordinate2D mercatorInverseTransform(double x, double y) noexcept { return geometry::inverseMercator(x, y); }

ZRMapPoint ZRMapPointForCoordinate(CLLocationCoordinate2D coordinate) noexcept {
  return geometry::mapPoint(coordinate);
}

CLLocationCoordinate2D ZRCoordinateForMapPoint(ZRMapPoint mapPoint) noexcept { return geometry::coordinate(mapPoint); }
