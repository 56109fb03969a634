// SPDX-License-Identifier: Apache-2.0
// The location filter and the fan-out to many clients, through the shared library as a host sees it.
#include <ZRCore/ZRCore.h>
#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
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

/// The same rules without objects, 1024 fixes at once.
void BM_FilterFlatRecords(benchmark::State& state) {
  std::vector<ZRPositionFix> fixes;
  for (const auto& fix : manyFixes()) fixes.push_back(fix->fix());
  std::vector<ZRFilteredFix> results(fixes.size());
  ZRLocationBatchFilter filter(true);
  for (auto _ : state) {
    filter.filter(fixes.data(), results.data(), fixes.size());
    benchmark::DoNotOptimize(results.data());
  }
  state.counters["time_per_fix"] = benchmark::Counter(
      static_cast<double>(fixes.size()), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_FilterFlatRecords);

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
  void locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations&) override {
    ++count_;
    if (onFix) [[unlikely]]
      onFix();
  }
  std::function<void()> onFix;

 private:
  long count_ = 0;
};

struct Pair {
  std::shared_ptr<ZRLocationManager> manager;
  std::shared_ptr<CountingClient> client;
};

template <class Make>
Pair started(Make make) {
  const Pair pair{ZRLocationManager::init(), make()};
  pair.manager->setDelegate(pair.client);
  pair.manager->startUpdatingLocation();
  return pair;
}

/// One fix is filtered and goes to `state.range(0)` clients. `change(clients)` is what one of them does inside.
template <class Make, class Change>
void fanOut(benchmark::State& state, Make make, Change change) {
  std::vector<Pair> clients;
  for (std::int64_t i = 0; i < state.range(0); ++i) clients.push_back(started(make));
  clients.front().client->onFix = [&] { change(clients); };
  const auto first = ZRLocationManager::firstInstance();
  const CLLocations batch{fixNumber(1)};
  for (auto _ : state) first->locationManagerDidUpdateLocations(*first, batch);
  state.counters["time_per_client"] = benchmark::Counter(
      static_cast<double>(state.range(0)), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

const auto makePlain = [] { return std::make_shared<CountingClient>(); };
const auto makeWaiting = [] { return ZRMakeLocationClient<CountingClient>(); };
const auto noChange = [](std::vector<Pair>&) {};

void BM_FanOut(benchmark::State& state) { fanOut(state, makePlain, noChange); }
BENCHMARK(BM_FanOut)->Arg(1)->Arg(10)->Arg(1000);
void BM_FanOutToWaitingClients(benchmark::State& state) { fanOut(state, makeWaiting, noChange); }
BENCHMARK(BM_FanOutToWaitingClients)->Arg(1)->Arg(10)->Arg(1000);

/// With each fix one client stops one, starts another, lets one go and makes a new one.
void BM_FanOutToWaitingClientsThatChange(benchmark::State& state) {
  fanOut(state, makeWaiting, [i = std::size_t{0}](std::vector<Pair>& clients) mutable {
    const std::size_t others = clients.size() - 3;
    i = i % others + 1;
    clients[i].manager->setShouldUpdateLocation(true);  // the one that the fix before stopped
    clients[i + 1].manager->setShouldUpdateLocation(false);
    clients[i + 2] = {};
    clients[i + 2] = started(makeWaiting);
  });
}
BENCHMARK(BM_FanOutToWaitingClientsThatChange)->Arg(1000);

/// The same once the process has ever had a second thread: reference counts are atomic from then on. Runs last.
void BM_FanOutInAThreadedProcess(benchmark::State& state) {
  std::thread([] {}).join();
  fanOut(state, makePlain, noChange);
}
BENCHMARK(BM_FanOutInAThreadedProcess)->Arg(1000);
void BM_FanOutToWaitingClientsInAThreadedProcess(benchmark::State& state) { fanOut(state, makeWaiting, noChange); }
BENCHMARK(BM_FanOutToWaitingClientsInAThreadedProcess)->Arg(1000);

}  // namespace

BENCHMARK_MAIN();
