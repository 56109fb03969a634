// SPDX-License-Identifier: Apache-2.0
#include "ManagerPipeline.h"

#include <utility>

#include "LocationRow.h"

namespace trip {

namespace {

std::shared_ptr<TripSimulator> installedSimulator(bool filtersMeasuredValues) {
  auto simulator = std::make_shared<TripSimulator>();
  ZRLocationManager::setFiltersMeasuredValues(filtersMeasuredValues);
  ZRLocationManager::setTripSimulator(simulator);
  return simulator;
}

}  // namespace

ManagerPipeline::ManagerPipeline(Options options)
    : simulator_(installedSimulator(options.filtersMeasuredValues)), clients_({}, std::move(options.route)) {}

std::optional<TripRow> ManagerPipeline::deliver(const ZRPositionFix& fix) {
  clients_.forgetLatest();
  simulator_->deliver(fix);
  const auto& latest = clients_.latest(TripClients::plain);
  if (!latest) return std::nullopt;
  TripRow row = rowOfLocation(*latest);
  if (const auto& snapped = clients_.latest(TripClients::snapped)) row.snapped = snapped->coordinate();
  return row;
}

std::map<std::string, std::uint64_t> ManagerPipeline::deliveredByClient() const {
  return {{"plain", clients_.fixes(TripClients::plain)},
          {"snapped", clients_.fixes(TripClients::snapped)},
          {"half-way", clients_.fixes(TripClients::halfWay)}};
}

}  // namespace trip
