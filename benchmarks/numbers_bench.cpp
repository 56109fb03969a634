// SPDX-License-Identifier: Apache-2.0
// Our correctly rounded functions against the C library's, each over the arguments that the geometry gives it.
#include <benchmark/benchmark.h>
#include <exact/Exact.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

constexpr std::size_t kArguments = 1 << 16;  // more than a processor remembers branches for

using Numbers = std::vector<double>;

Numbers between(double low, double high) {
  std::mt19937_64 engine(7);
  std::uniform_real_distribution<double> number(low, high);
  Numbers result(kArguments);
  for (double& value : result) value = number(engine);
  return result;
}

Numbers mapped(Numbers numbers, double (*by)(double)) {
  for (double& number : numbers) number = by(number);
  return numbers;
}

constexpr double kPole = 1.4844222297453324;  // the latitude limit in radians
constexpr double kHalfTurn = 3.141592653589793;

Numbers latitudes() { return between(-kPole, kPole); }
Numbers longitudes() { return between(-kHalfTurn, kHalfTurn); }
Numbers halfAngles() { return between(0.0432, 1.5276); }  // (latitude + 90 degrees) / 2
Numbers tangents() {
  return mapped(halfAngles(), [](double x) { return std::tan(x); });
}
Numbers northings() { return longitudes(); }  // y / radius, and t
Numbers hyperbolicSines() {
  return mapped(northings(), [](double x) { return std::sinh(x); });
}
Numbers fractions() { return between(-1.0, 1.0); }
Numbers lengths() { return between(0.0, 1.0); }
Numbers otherLengths() { return between(0.2, 1.0); }

template <auto Compute, auto Arguments>
void each(benchmark::State& state) {
  const Numbers arguments = Arguments();
  for ([[maybe_unused]] auto _ : state) {
    double sum = 0.0;
    for (const double x : arguments) sum += Compute(x);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kArguments));
}

template <auto Compute, auto First, auto Second>
void eachPair(benchmark::State& state) {
  const Numbers first = First();
  const Numbers second = Second();
  for ([[maybe_unused]] auto _ : state) {
    double sum = 0.0;
    for (std::size_t i = 0; i < kArguments; ++i) sum += Compute(first[i], second[kArguments - 1 - i]);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kArguments));
}

double both(double angle) {
  const auto [sine, cosine] = exact::sincos(angle);
  return sine + cosine;
}
double bothPlain(double angle) {
  double sine = 0.0, cosine = 0.0;
  ::sincos(angle, &sine, &cosine);
  return sine + cosine;
}

#define ZR_AGAINST(NAME, ARGUMENTS)                                               \
  BENCHMARK(each<exact::NAME, ARGUMENTS>)->Name(#NAME "(" #ARGUMENTS ")/ZRCore"); \
  BENCHMARK(each<[](double x) { return std::NAME(x); }, ARGUMENTS>)->Name(#NAME "(" #ARGUMENTS ")/glibc")
#define ZR_AGAINST_2(NAME, FIRST, SECOND)                                                          \
  BENCHMARK(eachPair<exact::NAME, FIRST, SECOND>)->Name(#NAME "(" #FIRST ", " #SECOND ")/ZRCore"); \
  BENCHMARK(eachPair<[](double y, double x) { return std::NAME(y, x); }, FIRST, SECOND>)           \
      ->Name(#NAME "(" #FIRST ", " #SECOND ")/glibc")

ZR_AGAINST(sin, latitudes);
ZR_AGAINST(sin, longitudes);
ZR_AGAINST(cos, latitudes);
ZR_AGAINST(cos, longitudes);
ZR_AGAINST(tan, halfAngles);
ZR_AGAINST(log, tangents);
ZR_AGAINST(exp, northings);
ZR_AGAINST(atan, hyperbolicSines);
ZR_AGAINST(asin, fractions);
ZR_AGAINST(acos, fractions);
ZR_AGAINST_2(atan2, fractions, longitudes);
ZR_AGAINST_2(atan2, lengths, otherLengths);
ZR_AGAINST_2(hypot, fractions, longitudes);
BENCHMARK(each<both, longitudes>)->Name("sincos(longitudes)/ZRCore");
BENCHMARK(each<bothPlain, longitudes>)->Name("sincos(longitudes)/glibc");

}  // namespace
