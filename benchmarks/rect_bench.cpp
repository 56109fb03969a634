// SPDX-License-Identifier: Apache-2.0
// Rectangles: inlined and in batches, against Qt's and Boost's, which are inlined as far as they are.
#include <ZRCore/ZRGeometryAdditions.h>
#include <benchmark/benchmark.h>

#include <QRectF>
#include <ZRCore/ZRGeometry.hpp>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <cstdint>
#include <random>
#include <vector>

namespace {

using BoostPoint = boost::geometry::model::d2::point_xy<double>;
using BoostBox = boost::geometry::model::box<BoostPoint>;

template <class Rect>
Rect made(double x, double y, double width, double height) {
  return Rect{x, y, width, height};
}
template <>
ZRMapRect made(double x, double y, double width, double height) {
  return {{x, y}, {width, height}};
}
template <>
BoostBox made(double x, double y, double width, double height) {
  return {{x, y}, {x + width, y + height}};
}

/// Neighbours of which about one pair in six meets.
template <class Rect>
std::vector<Rect> rects(std::size_t count) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> place(0.0, 2e7), extent(1.0, 1e7);
  std::vector<Rect> result;
  for (std::size_t i = 0; i < count; ++i) {
    result.push_back(made<Rect>(place(random), place(random), extent(random), extent(random)));
  }
  return result;
}

constexpr std::size_t kCount = 4096;

void perElement(benchmark::State& state) {
  state.counters["each"] = benchmark::Counter(
      static_cast<double>(kCount), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// `expression` of each rectangle `a` and its neighbour `b`, as the compiler inlines it.
#define ZR_PAIRS(name, Rect, expression)         \
  void name(benchmark::State& state) {           \
    const auto of = rects<Rect>(kCount + 1);     \
    for ([[maybe_unused]] auto _ : state) {      \
      for (std::size_t i = 0; i < kCount; ++i) { \
        const Rect &a = of[i], &b = of[i + 1];   \
        auto result = expression;                \
        benchmark::DoNotOptimize(result);        \
      }                                          \
    }                                            \
    perElement(state);                           \
  }                                              \
  BENCHMARK(name)

BoostBox boostUnion(BoostBox a, const BoostBox& b) {
  boost::geometry::expand(a, b);
  return a;
}
BoostBox boostIntersection(const BoostBox& a, const BoostBox& b) {
  BoostBox result;
  boost::geometry::intersection(a, b, result);
  return result;
}

ZR_PAIRS(UnionInline, ZRMapRect, ZRInline::ZRMapRectUnion(a, b));
ZR_PAIRS(UnionExported, ZRMapRect, ZRMapRectUnion(a, b));
ZR_PAIRS(UnionQRectF, QRectF, a.united(b));
ZR_PAIRS(UnionBoost, BoostBox, boostUnion(a, b));
ZR_PAIRS(IntersectionInline, ZRMapRect, ZRInline::ZRMapRectIntersection(a, b));
ZR_PAIRS(IntersectionExported, ZRMapRect, ZRMapRectIntersection(a, b));
ZR_PAIRS(IntersectionQRectF, QRectF, a.intersected(b));
ZR_PAIRS(IntersectionBoost, BoostBox, boostIntersection(a, b));
ZR_PAIRS(ContainsInline, ZRMapRect, ZRInline::ZRMapRectContainsRect(a, b));
ZR_PAIRS(ContainsExported, ZRMapRect, ZRMapRectContainsRect(a, b));
ZR_PAIRS(ContainsQRectF, QRectF, a.contains(b));
ZR_PAIRS(ContainsBoost, BoostBox, boost::geometry::covered_by(b, a));
ZR_PAIRS(IntersectsInline, ZRMapRect, ZRInline::ZRMapRectIntersectsRect(a, b));
ZR_PAIRS(IntersectsExported, ZRMapRect, ZRMapRectIntersectsRect(a, b));
ZR_PAIRS(IntersectsQRectF, QRectF, a.intersects(b));
ZR_PAIRS(IntersectsBoost, BoostBox, boost::geometry::intersects(a, b));

void OneAgainstMany(benchmark::State& state) {
  const auto of = rects<ZRMapRect>(kCount);
  std::vector<std::uint64_t> bits(kCount / 64);
  for ([[maybe_unused]] auto _ : state) {
    ZRMapRectIntersectsRects(of[7], of.data(), of.size(), bits.data());
    benchmark::DoNotOptimize(bits.data());
    benchmark::ClobberMemory();
  }
  perElement(state);
}
BENCHMARK(OneAgainstMany);

void OneAgainstManyBoost(benchmark::State& state) {
  const auto of = rects<BoostBox>(kCount);
  for ([[maybe_unused]] auto _ : state) {
    std::size_t hits = 0;
    for (const BoostBox& each : of) hits += boost::geometry::intersects(each, of[7]) ? 1 : 0;
    benchmark::DoNotOptimize(hits);
  }
  perElement(state);
}
BENCHMARK(OneAgainstManyBoost);

void UnionOfAll(benchmark::State& state) {
  const auto of = rects<ZRMapRect>(kCount);
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ZRMapRectUnionOfRects(of));
  perElement(state);
}
BENCHMARK(UnionOfAll);

void UnionOfAllBoost(benchmark::State& state) {
  const auto of = rects<BoostBox>(kCount);
  for ([[maybe_unused]] auto _ : state) {
    BoostBox all = of[0];
    for (const BoostBox& each : of) boost::geometry::expand(all, each);
    benchmark::DoNotOptimize(all);
  }
  perElement(state);
}
BENCHMARK(UnionOfAllBoost);

/// `state.range(0)` points: in the cache, and so many that the memory is the limit.
void BoundsOfPoints(benchmark::State& state) {
  const std::vector<ZRMapPoint> points(static_cast<std::size_t>(state.range(0)), ZRMapPoint{3.0, 4.0});
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ZRMBR(points));
  state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<std::int64_t>(sizeof(ZRMapPoint)));
}
BENCHMARK(BoundsOfPoints)->Arg(kCount)->Arg(8'000'000);

/// What reading the memory takes, at the very least.
#if defined(__x86_64__)
[[gnu::target_clones("avx2", "default"), gnu::optimize("O3")]]
#endif
std::uint64_t
sumOfWords(const std::uint64_t* words, std::size_t count) {
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < count; ++i) sum += words[i];
  return sum;
}
void ReadingTheMemory(benchmark::State& state) {
  const std::vector<std::uint64_t> words(static_cast<std::size_t>(state.range(0)) * 2, 5);
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(sumOfWords(words.data(), words.size()));
  state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<std::int64_t>(sizeof(ZRMapPoint)));
}
BENCHMARK(ReadingTheMemory)->Arg(kCount)->Arg(8'000'000);

}  // namespace
