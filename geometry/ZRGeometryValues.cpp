// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>

CLLocationCoordinate2D CLLocationCoordinate2DMake(double latitude, double longitude) noexcept {
  return {latitude, longitude};
}

ZRDoublePoint ZRDoublePointMake(double x, double y) noexcept { return {x, y}; }

ZRBoundingBox ZRBoundingBoxMake(double a, double b, double c, double d) noexcept { return {a, b, c, d}; }

ZRCoordinateSpan ZRCoordinateSpanMake(double latitudeDelta, double longitudeDelta) noexcept {
  return {latitudeDelta, longitudeDelta};
}

ZRCoordinateRegion ZRCoordinateRegionMake(CLLocationCoordinate2D center, ZRCoordinateSpan span) noexcept {
  return {center, span};
}

bool CLLocationCoordinate2DIsValid(CLLocationCoordinate2D coordinate) noexcept {
  return coordinate.latitude >= -90.0 && coordinate.latitude <= 90.0 && coordinate.longitude >= -180.0 &&
         coordinate.longitude <= 180.0;
}

bool ZRCoordinateSpanIsZero(ZRCoordinateSpan span) noexcept {
  return span.latitudeDelta == 0.0 && span.longitudeDelta == 0.0;
}
