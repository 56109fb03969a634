// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>

#include <exact/Exact.h>

#include <cmath>

#include "Kernels.h"
#include "Numbers.h"

namespace {

double metersPerMapPoint(double latitude) {
  const double phi = geometry::radians(geometry::clampedLatitude(latitude));
  const double logarithm = exact::log(exact::tan(phi) + 1.0 / exact::cos(phi));
  return (1.0 - logarithm / geometry::kPi) * geometry::kScaleMetersPerMapPoint;
}

double secant(double latitude) { return 1.0 / exact::cos(geometry::radians(latitude)); }

double degreesOfLongitudePerMeter(double latitude) { return secant(latitude) * geometry::kDegreesPerMeterOfLatitude; }

}  // namespace

double ZRMetersPerMapPointAtLatitude(double latitude) noexcept { return metersPerMapPoint(latitude); }

double ZRMetersPerMapPointAtLatituteAndZoom(double latitude, int32_t zoom) noexcept {
  return metersPerMapPoint(latitude) / (std::ldexp(1.0, zoom) * 256.0 * geometry::kPerWorldWidth);
}

double ZRMapPointsPerMeterAtLatitude(double latitude) noexcept { return 1.0 / metersPerMapPoint(latitude); }

double ZRMetersBetweenMapPoints(ZRMapPoint a, ZRMapPoint b) noexcept { return geometry::kernels().metersBetween(a, b); }

double degreesToRads(double degrees) noexcept { return geometry::radians(degrees); }

double degreesPerMeterAtLon() noexcept { return geometry::kDegreesPerMeterOfLatitude; }

double metersPerDegreeAtLon() noexcept { return geometry::kMetersPerDegreeOfLatitude; }

double degreesPerMeterAtLat(double latitude) noexcept { return degreesOfLongitudePerMeter(latitude); }

double metersPerDegreeAtLat(double latitude) noexcept { return geometry::kEquator / secant(latitude) / 360.0; }

ZRCoordinateRegion ZRCoordinateRegionMakeWithDistance(CLLocationCoordinate2D center, double latitudinalMeters,
                                                      double longitudinalMeters) noexcept {
  const double latitude = geometry::clampedLatitude(center.latitude);
  return {{latitude, geometry::clampedLongitude(center.longitude)},
          {latitudinalMeters * geometry::kDegreesPerMeterOfLatitude,
           longitudinalMeters * degreesOfLongitudePerMeter(latitude)}};
}

ZRCoordinateRegion ZRCoordinateRegionMakeWithCoordinates(CLLocationCoordinate2D first,
                                                         CLLocationCoordinate2D second) noexcept {
  const double latitudeDelta = std::fabs(first.latitude - second.latitude);
  const double longitudeDelta = std::fabs(first.longitude - second.longitude);
  return {{first.latitude - latitudeDelta * 0.5, first.longitude + longitudeDelta * 0.5},
          {latitudeDelta, longitudeDelta}};
}
