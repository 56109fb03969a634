// SPDX-License-Identifier: Apache-2.0
// Batches against loops of single calls and against what others offer for arrays.
#include <ZRCore/ZRGeometryAdditions.h>
#include <benchmark/benchmark.h>
#include <proj.h>

#include <memory>

#include "geometry_places.h"
#include "geometry_rivals.h"

namespace {

template <auto Compute, auto From, class To>
void whole(benchmark::State& state) {
  const auto from = From();
  std::vector<To> to(from.size());
  for ([[maybe_unused]] auto _ : state) {
    Compute(from.data(), to.data(), from.size());
    benchmark::DoNotOptimize(to.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(from.size()));
}

/// A loop of single calls as a batch.
template <auto Single>
void loop(const auto* from, auto* to, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) to[i] = Single(from[i]);
}

using Coordinate = CLLocationCoordinate2D;
void singleProjections(const Coordinate* from, ZRMapPoint* to, std::size_t count) {
  loop<ZRMapPointForCoordinate>(from, to, count);
}
void plainProjections(const Coordinate* from, ZRMapPoint* to, std::size_t count) {
  loop<plain::mapPoint>(from, to, count);
}
void singleInverses(const ZRMapPoint* from, Coordinate* to, std::size_t count) {
  loop<ZRCoordinateForMapPoint>(from, to, count);
}
void plainInverses(const ZRMapPoint* from, Coordinate* to, std::size_t count) {
  loop<plain::coordinate>(from, to, count);
}

constexpr auto kBatch = [](const Coordinate* from, ZRMapPoint* to, std::size_t n) {
  ZRMapPointsForCoordinates(from, to, n);
};
constexpr auto kFast = [](const Coordinate* from, ZRMapPoint* to, std::size_t n) {
  ZRMapPointsForCoordinatesFast(from, to, n);
};
constexpr auto kInverse = [](const ZRMapPoint* from, Coordinate* to, std::size_t n) {
  ZRCoordinatesForMapPoints(from, to, n);
};
constexpr auto kInverseFast = [](const ZRMapPoint* from, Coordinate* to, std::size_t n) {
  ZRCoordinatesForMapPointsFast(from, to, n);
};

BENCHMARK(whole<plainProjections, places, ZRMapPoint>)->Name("projections/plain in a loop");
BENCHMARK(whole<singleProjections, places, ZRMapPoint>)->Name("projections/ZRCore in a loop");
BENCHMARK(whole<kBatch, places, ZRMapPoint>)->Name("projections/ZRCore batch");
BENCHMARK(whole<kFast, places, ZRMapPoint>)->Name("projections/ZRCore fast");
BENCHMARK(whole<libmvec::mapPoints, places, ZRMapPoint>)->Name("projections/libmvec");
BENCHMARK(whole<sleef::mapPoints, places, ZRMapPoint>)->Name("projections/SLEEF");
BENCHMARK(whole<plainInverses, mapPoints, Coordinate>)->Name("inverses/plain in a loop");
BENCHMARK(whole<singleInverses, mapPoints, Coordinate>)->Name("inverses/ZRCore in a loop");
BENCHMARK(whole<kInverse, mapPoints, Coordinate>)->Name("inverses/ZRCore batch");
BENCHMARK(whole<kInverseFast, mapPoints, Coordinate>)->Name("inverses/ZRCore fast");
BENCHMARK(whole<libmvec::coordinates, mapPoints, Coordinate>)->Name("inverses/libmvec");

void projArray(benchmark::State& state) {
  const std::unique_ptr<PJ_CONTEXT, decltype(&proj_context_destroy)> context(proj_context_create(),
                                                                             proj_context_destroy);
  const std::unique_ptr<PJ, decltype(&proj_destroy)> webMercator(
      proj_create(context.get(), "+proj=webmerc +ellps=WGS84"), proj_destroy);
  std::vector<PJ_COORD> radians;
  for (const Coordinate& place : places()) {
    radians.push_back(proj_coord(proj_torad(place.longitude), proj_torad(place.latitude), 0.0, 0.0));
  }
  std::vector<PJ_COORD> projected;
  for ([[maybe_unused]] auto _ : state) {
    projected = radians;
    proj_trans_array(webMercator.get(), PJ_FWD, projected.size(), projected.data());
    benchmark::DoNotOptimize(projected.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(radians.size()));
}
BENCHMARK(projArray)->Name("projections/PROJ array");

constexpr auto kDistances = [](const Coordinate* from, double* to, std::size_t n) {
  ZRGreatCircleDistancesFrom({47.0, 8.0}, from, to, n);
};
constexpr auto kAlong = [](const Coordinate* from, double* to, std::size_t n) {
  ZRGreatCircleDistancesAlong(from, n, to);
};
constexpr auto kBearings = [](const Coordinate* from, float* to, std::size_t n) { ZRBearingsAlong(from, n, to); };
void plainDistances(const Coordinate* from, double* to, std::size_t count) {
  for (std::size_t i = 0; i + 1 < count; ++i) to[i] = plain::haversine(from[i], from[i + 1]);
}
void plainBearings(const Coordinate* from, float* to, std::size_t count) {
  for (std::size_t i = 0; i + 1 < count; ++i) to[i] = plain::bearing(from[i], from[i + 1]);
}
BENCHMARK(whole<plainDistances, places, double>)->Name("distances/plain in a loop");
BENCHMARK(whole<kDistances, places, double>)->Name("distances/ZRCore from one");
BENCHMARK(whole<kAlong, places, double>)->Name("distances/ZRCore along a line");
BENCHMARK(whole<plainBearings, places, float>)->Name("bearings/plain in a loop");
BENCHMARK(whole<kBearings, places, float>)->Name("bearings/ZRCore along a line");

}  // namespace
