// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>
#include <s2/s2latlng.h>
#include <s2/s2projections.h>

#include "geometry_places.h"

namespace {

const S2::MercatorProjection& mercator() {
  static const S2::MercatorProjection projection(33554432.0);
  return projection;
}

void projectS2(benchmark::State& state) {
  const auto coordinates = places();
  timeEach(state, [&](std::size_t i) {
    return mercator().FromLatLng(S2LatLng::FromDegrees(coordinates[i].latitude, coordinates[i].longitude));
  });
}
BENCHMARK(projectS2)->Name("project/S2");

void unprojectS2(benchmark::State& state) {
  const auto points = mapPoints();
  timeEach(state, [&](std::size_t i) {
    return mercator().ToLatLng(R2Point(points[i].x - 33554432.0, 33554432.0 - points[i].y));
  });
}
BENCHMARK(unprojectS2)->Name("unproject/S2");

}  // namespace
