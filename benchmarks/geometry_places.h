// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_BENCHMARKS_GEOMETRY_PLACES_H
#define ZRCORE_BENCHMARKS_GEOMETRY_PLACES_H

#include <ZRCore/ZRGeometry.h>
#include <benchmark/benchmark.h>

#include <cstddef>
#include <random>
#include <vector>

/// What every rival computes with: the same places all over the projected world, few enough to stay in the cache, and
/// too many for the processor to remember which way each one's branches go.
constexpr std::size_t kPlaces = 16384;

inline std::vector<CLLocationCoordinate2D> places() {
  std::mt19937_64 engine(1);
  std::uniform_real_distribution<double> latitude(-85.0, 85.0), longitude(-180.0, 180.0);
  std::vector<CLLocationCoordinate2D> result(kPlaces);
  for (CLLocationCoordinate2D& place : result) place = {latitude(engine), longitude(engine)};
  return result;
}

inline std::vector<ZRMapPoint> mapPoints() {
  std::vector<ZRMapPoint> result;
  for (const CLLocationCoordinate2D& place : places()) result.push_back(ZRMapPointForCoordinate(place));
  return result;
}

/// Big enough that most pairs overlap.
inline std::vector<ZRMapRect> rects() {
  std::vector<ZRMapRect> result;
  for (const ZRMapPoint& point : mapPoints()) result.push_back({point, {3.0e7, 3.0e7}});
  return result;
}

/// Times `compute(i)` over every place in turn; items are single calls.
template <class Compute>
void timeEach(benchmark::State& state, Compute compute) {
  for ([[maybe_unused]] auto _ : state) {
    for (std::size_t i = 0; i < kPlaces; ++i) {
      auto result = compute(i);
      benchmark::DoNotOptimize(result);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPlaces));
}

/// The same for what takes two neighbouring places.
inline std::size_t neighbour(std::size_t i) { return (i + 1) % kPlaces; }

#endif
