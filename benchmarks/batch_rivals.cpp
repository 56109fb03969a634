// SPDX-License-Identifier: Apache-2.0
// Compiled with -O3 -ffast-math for AVX2, so that g++ calls libmvec's functions of four lanes; and SLEEF's.
#include <immintrin.h>
#include <sleef.h>

#include <cmath>

#include "geometry_rivals.h"

namespace {

double clampedTo(double value, double low, double high) {
  const double raised = value > low ? value : low;
  return raised < high ? raised : high;
}

}  // namespace

namespace libmvec {

void mapPoints(const CLLocationCoordinate2D* from, ZRMapPoint* to, std::size_t count) noexcept {
  for (std::size_t i = 0; i < count; ++i) {
    const double latitude = clampedTo(from[i].latitude, -85.05112878, 85.05112878);
    const double longitude = clampedTo(from[i].longitude, -180.0, 180.0);
    const double y = std::log(std::tan((latitude + 90.0) * 0.5 * 0.017453292519943295)) * 6378137.0;
    to[i].x = (longitude * 111319.49079327357 + 20037508.342789244) * (1.0 / 0.5971642834779395);
    to[i].y = (20037508.342789244 - y) * (1.0 / 0.5971642834779395);
  }
}

void coordinates(const ZRMapPoint* from, CLLocationCoordinate2D* to, std::size_t count) noexcept {
  for (std::size_t i = 0; i < count; ++i) {
    const double t = from[i].y * -6.283185307179586 * 0x1p-26 + 3.141592653589793;
    const double power = std::exp(t);
    const double latitude = std::atan((power - 1.0 / power) * 0.5) * 57.29577951308232;
    to[i].latitude = clampedTo(latitude, -85.05112878, 85.05112878);
    to[i].longitude = clampedTo((clampedTo(from[i].x, 0.0, 67108863.0) * 0x1p-26 - 0.5) * 360.0, -180.0, 180.0);
  }
}

}  // namespace libmvec

namespace sleef {

void mapPoints(const CLLocationCoordinate2D* from, ZRMapPoint* to, std::size_t count) noexcept {
  for (std::size_t i = 0; i + 4 <= count; i += 4) {
    double latitudes[4], ys[4];
    for (std::size_t k = 0; k < 4; ++k) {
      latitudes[k] = (clampedTo(from[i + k].latitude, -85.05112878, 85.05112878) + 90.0) * 0.5 * 0.017453292519943295;
    }
    _mm256_storeu_pd(ys, Sleef_logd4_u10avx2(Sleef_tand4_u10avx2(_mm256_loadu_pd(latitudes))));
    for (std::size_t k = 0; k < 4; ++k) {
      const double longitude = clampedTo(from[i + k].longitude, -180.0, 180.0);
      to[i + k] = {(longitude * 111319.49079327357 + 20037508.342789244) * (1.0 / 0.5971642834779395),
                   (20037508.342789244 - ys[k] * 6378137.0) * (1.0 / 0.5971642834779395)};
    }
  }
}

}  // namespace sleef
