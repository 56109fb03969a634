#include <ZRCore/ZRGeometryAdditions.h>

#include <cmath>

namespace {
double radians(double degrees) { return degrees * 3.141592653589793 / 180.0; }
}  // namespace

double ZRGreatCircleDistance(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept {
  const double sinLat = std::sin(radians(to.latitude - from.latitude) * 0.5);
  const double sinLon = std::sin(radians(to.longitude - from.longitude) * 0.5);
  const double h = sinLat * sinLat + sinLon * sinLon * std::cos(radians(from.latitude)) * std::cos(radians(to.latitude));
  return 2.0 * std::atan2(std::sqrt(h), std::sqrt(std::fmax(1.0 - h, 0.0))) * EarthRadius;
}
