// SPDX-License-Identifier: Apache-2.0
#include "geometry_rivals.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plain {

ZRMapPoint mapPoint(CLLocationCoordinate2D coordinate) noexcept {
  const double latitude = std::clamp(coordinate.latitude, -85.05112878, 85.05112878);
  const double longitude = std::clamp(coordinate.longitude, -180.0, 180.0);
  const double x = longitude * 111319.49079327357;
  const double y = std::log(std::tan((latitude + 90.0) * 0.5 * 0.017453292519943295)) * 6378137.0;
  return {(x + 20037508.342789244) / 0.5971642834779395, (20037508.342789244 - y) / 0.5971642834779395};
}

CLLocationCoordinate2D coordinate(ZRMapPoint point) noexcept {
  const double scale = 1.4901161193847656e-08;
  const double x = std::clamp(point.x, 0.0, 67108863.0);
  const double longitude = std::clamp((x * scale - 0.5) * 360.0, -180.0, 180.0);
  const double t = point.y * -6.283185307179586 * scale + 3.141592653589793;
  const double latitude = std::atan((std::exp(t) - std::exp(-t)) * 0.5) * 57.29577951308232;
  return {std::clamp(latitude, -85.05112878, 85.05112878), longitude};
}

double haversine(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept {
  const double perDegree = 3.141592653589793 / 180.0;
  const double sinLat = std::sin((to.latitude - from.latitude) * perDegree * 0.5);
  const double sinLon = std::sin((to.longitude - from.longitude) * perDegree * 0.5);
  const double h =
      sinLat * sinLat + sinLon * sinLon * std::cos(from.latitude * perDegree) * std::cos(to.latitude * perDegree);
  return 2.0 * std::atan2(std::sqrt(h), std::sqrt(1.0 - h)) * 6378137.0;
}

float bearing(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept {
  const double perDegree = 0.017453292519943295;
  const double fromLat = from.latitude * perDegree, toLat = to.latitude * perDegree;
  const double deltaLon = (to.longitude - from.longitude) * perDegree;
  const double east = std::sin(deltaLon) * std::cos(toLat);
  const double north = std::cos(fromLat) * std::sin(toLat) - std::cos(toLat) * std::sin(fromLat) * std::cos(deltaLon);
  const auto degrees = static_cast<float>(std::atan2(east, north) * 57.29577951308232);
  return degrees < 0.0F ? degrees + 360.0F : degrees;
}

ZRMapRect unionOf(ZRMapRect a, ZRMapRect b) noexcept {
  const double x = std::min(a.origin.x, b.origin.x);
  const double y = std::min(a.origin.y, b.origin.y);
  const double right = std::max(a.origin.x + a.size.width, b.origin.x + b.size.width);
  const double bottom = std::max(a.origin.y + a.size.height, b.origin.y + b.size.height);
  return {{x, y}, {right - x, bottom - y}};
}

ZRMapRect intersectionOf(ZRMapRect a, ZRMapRect b) noexcept {
  const double x = std::max(a.origin.x, b.origin.x);
  const double y = std::max(a.origin.y, b.origin.y);
  const double right = std::min(a.origin.x + a.size.width, b.origin.x + b.size.width);
  const double bottom = std::min(a.origin.y + a.size.height, b.origin.y + b.size.height);
  return {{x, y}, {right - x, bottom - y}};
}

ZRMapRect bounds(const double* coordinates, std::size_t count) noexcept {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  double minX = kInfinity, minY = kInfinity, maxX = -kInfinity, maxY = -kInfinity;
  for (std::size_t i = 0; i < 2 * count; i += 2) {
    minX = std::min(minX, coordinates[i]);
    minY = std::min(minY, coordinates[i + 1]);
    maxX = std::max(maxX, coordinates[i]);
    maxY = std::max(maxY, coordinates[i + 1]);
  }
  return {{minX, minY}, {maxX - minX, maxY - minY}};
}

}  // namespace plain
