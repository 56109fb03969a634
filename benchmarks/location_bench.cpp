// SPDX-License-Identifier: Apache-2.0
// The location filter and the fan-out to many clients, through the shared library as a host sees it.
#include <ZRCore/ZRCore.h>
#include <benchmark/benchmark.h>

#include <memory>
#include <thread>
#include <vector>

namespace {

std::shared_ptr<CLLocation> fixNumber(int i) {
  return CLLocation::initWithFix({.coordinate = {52.5 + 1e-4 * (i % 1000), 13.4 + 2e-4 * (i % 777)},
                                  .horizontalAccuracy = 5.0,
                                  .course = 45.0,
                                  .speed = 13.0,
                                  .timestamp = {1e9 + i}});
}

CLLocations manyFixes() {
  CLLocations fixes;
  for (int i = 0; i < 1024; ++i) fixes.push_back(fixNumber(i));
  return fixes;
}

/// The rival of the filter: the one bearing and the one distance that a fix cannot do without.
void BM_OneBearingAndOneHaversine(benchmark::State& state) {
  const CLLocations fixes = manyFixes();
  std::size_t i = 0;
  for (auto _ : state) {
    const CLLocation& from = *fixes[i % 1024];
    const CLLocation& to = *fixes[(i + 1) % 1024];
    benchmark::DoNotOptimize(ZRCoordinateUtils::bearingFromTo(from.coordinate(), to.coordinate()));
    benchmark::DoNotOptimize(ZRGreatCircleDistance(from.coordinate(), to.coordinate()));
    ++i;
  }
}
BENCHMARK(BM_OneBearingAndOneHaversine);

/// A fix becomes a record and passes the filter, with the making of the record and of the batch.
void BM_FilterOneFix(benchmark::State& state) {
  ZRLocationManager::setFiltersMeasuredValues(true);
  const auto manager = ZRLocationManager::init();
  const CLLocations fixes = manyFixes();
  std::vector<CLLocations> batches;
  for (const auto& fix : fixes) batches.push_back({fix});
  std::size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(manager->smoothLocationsWithLocations(batches[i++ % 1024]));
}
BENCHMARK(BM_FilterOneFix);

class CountingClient : public ZRDidUpdateLocations {
 public:
  void locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations&) override { ++count_; }

 private:
  long count_ = 0;
};

/// One fix is filtered and goes to `state.range(0)` clients.
void fanOut(benchmark::State& state) {
  struct Pair {
    std::shared_ptr<ZRLocationManager> manager = ZRLocationManager::init();
    std::shared_ptr<CountingClient> client = std::make_shared<CountingClient>();
  };
  std::vector<Pair> clients(static_cast<std::size_t>(state.range(0)));
  for (const Pair& pair : clients) {
    pair.manager->setDelegate(pair.client);
    pair.manager->startUpdatingLocation();
  }
  const auto first = ZRLocationManager::firstInstance();
  const CLLocations batch{fixNumber(1)};
  for (auto _ : state) first->locationManagerDidUpdateLocations(*first, batch);
  state.counters["time_per_client"] = benchmark::Counter(
      static_cast<double>(state.range(0)), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_FanOut(benchmark::State& state) { fanOut(state); }
BENCHMARK(BM_FanOut)->Arg(1)->Arg(10)->Arg(1000);

/// The same once the process has ever had a second thread: reference counts are atomic from then on. Runs last.
void BM_FanOutInAThreadedProcess(benchmark::State& state) {
  std::thread([] {}).join();
  fanOut(state);
}
BENCHMARK(BM_FanOutInAThreadedProcess)->Arg(1000);

}  // namespace

BENCHMARK_MAIN();
