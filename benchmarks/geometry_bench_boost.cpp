// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/multi_point.hpp>
#include <boost/geometry/geometries/point_xy.hpp>

#include "geometry_places.h"

namespace {

namespace bg = boost::geometry;
using Place = bg::model::point<double, 2, bg::cs::geographic<bg::degree>>;
using Point = bg::model::d2::point_xy<double>;
using Box = bg::model::box<Point>;

void distanceBoost(benchmark::State& state) {
  std::vector<Place> coordinates;
  for (const CLLocationCoordinate2D& place : places()) coordinates.emplace_back(place.longitude, place.latitude);
  const bg::strategy::distance::haversine<double> haversine(EarthRadius);
  timeEach(state, [&](std::size_t i) { return bg::distance(coordinates[i], coordinates[neighbour(i)], haversine); });
}
BENCHMARK(distanceBoost)->Name("distance/Boost.Geometry");

std::vector<Box> boxes() {
  std::vector<Box> result;
  for (const ZRMapRect& rect : rects()) {
    const auto [x, y] = rect.origin;
    result.emplace_back(Point(x, y), Point(x + rect.size.width, y + rect.size.height));
  }
  return result;
}

void unionBoost(benchmark::State& state) {
  const auto all = boxes();
  timeEach(state, [&](std::size_t i) {
    Box result = all[i];
    bg::expand(result, all[neighbour(i)]);
    return result;
  });
}
BENCHMARK(unionBoost)->Name("union/Boost.Geometry");

void intersectionBoost(benchmark::State& state) {
  const auto all = boxes();
  timeEach(state, [&](std::size_t i) {
    Box result;
    bg::intersection(all[i], all[neighbour(i)], result);
    return result;
  });
}
BENCHMARK(intersectionBoost)->Name("intersection/Boost.Geometry");

void boundsBoost(benchmark::State& state) {
  bg::model::multi_point<Point> points;
  for (const ZRMapPoint& point : mapPoints()) points.emplace_back(point.x, point.y);
  for ([[maybe_unused]] auto _ : state) {
    Box result;
    bg::envelope(points, result);
    benchmark::DoNotOptimize(result);
  }
}
BENCHMARK(boundsBoost)->Name("bounds/Boost.Geometry");

}  // namespace
