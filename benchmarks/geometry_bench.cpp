// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>
#include <ZRCore/ZRGeometryAdditions.h>
#include <benchmark/benchmark.h>

#include <ZRCore/ZRRuler.hpp>

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

/// Neighbours 300 m from each other; the ruler's rival is the distance on the sphere.
void shortDistance(benchmark::State& state, auto measure) {
  std::vector<CLLocationCoordinate2D> line;
  for (std::size_t i = 0; i <= kPlaces; ++i) {
    line.push_back({52.5 + 0.002 * static_cast<double>(i % 2), 13.0 + 0.002 * static_cast<double>(i % 7)});
  }
  timeEach(state, [&](std::size_t i) { return measure(line[i], line[i + 1]); });
}
void shortDistanceRuler(benchmark::State& state) {
  shortDistance(state, [ruler = ZRRuler(52.5)](const auto& a, const auto& b) { return ruler.distance(a, b); });
}
BENCHMARK(shortDistanceRuler)->Name("short distance/ZRRuler");
void shortDistanceHaversine(benchmark::State& state) {
  shortDistance(state, [](const auto& a, const auto& b) { return plain::haversine(a, b); });
}
BENCHMARK(shortDistanceHaversine)->Name("short distance/plain");

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
