// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>
#include <ZRCore/ZRGeometryAdditions.h>
#include <benchmark/benchmark.h>

#include "geometry_places.h"
#include "geometry_rivals.h"

namespace {

template <auto Project>
void project(benchmark::State& state) {
  const auto coordinates = places();
  timeEach(state, [&](std::size_t i) { return Project(coordinates[i]); });
}
BENCHMARK(project<ZRMapPointForCoordinate>)->Name("project/ZRCore");
BENCHMARK(project<plain::mapPoint>)->Name("project/plain");

template <auto Unproject>
void unproject(benchmark::State& state) {
  const auto points = mapPoints();
  timeEach(state, [&](std::size_t i) { return Unproject(points[i]); });
}
BENCHMARK(unproject<ZRCoordinateForMapPoint>)->Name("unproject/ZRCore");
BENCHMARK(unproject<plain::coordinate>)->Name("unproject/plain");

template <auto Distance>
void distance(benchmark::State& state) {
  const auto coordinates = places();
  timeEach(state, [&](std::size_t i) { return Distance(coordinates[i], coordinates[neighbour(i)]); });
}
BENCHMARK(distance<ZRGreatCircleDistance>)->Name("distance/ZRCore");
BENCHMARK(distance<plain::haversine>)->Name("distance/plain");

template <auto Combine>
void combine(benchmark::State& state) {
  const auto rectangles = rects();
  timeEach(state, [&](std::size_t i) { return Combine(rectangles[i], rectangles[neighbour(i)]); });
}
BENCHMARK(combine<ZRMapRectUnion>)->Name("union/ZRCore");
BENCHMARK(combine<plain::unionOf>)->Name("union/plain");
BENCHMARK(combine<ZRMapRectIntersection>)->Name("intersection/ZRCore");
BENCHMARK(combine<plain::intersectionOf>)->Name("intersection/plain");

void bounds(benchmark::State& state) {
  const auto points = mapPoints();
  for ([[maybe_unused]] auto _ : state) {
    ZRMapRect result = ZRMBR(points.data(), points.size());
    benchmark::DoNotOptimize(result);
  }
}
BENCHMARK(bounds)->Name("bounds/ZRCore");

void boundsPlain(benchmark::State& state) {
  const auto points = mapPoints();
  std::vector<double> coordinates;
  for (const ZRMapPoint& point : points) {
    coordinates.push_back(point.x);
    coordinates.push_back(point.y);
  }
  for ([[maybe_unused]] auto _ : state) {
    ZRMapRect result = plain::bounds(coordinates.data(), points.size());
    benchmark::DoNotOptimize(result);
  }
}
BENCHMARK(boundsPlain)->Name("bounds/plain");

}  // namespace
