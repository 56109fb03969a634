// SPDX-License-Identifier: Apache-2.0
#include "ManagerPipeline.h"

#include <utility>

#include "LocationRow.h"

namespace trip {

void ManagerPipeline::Client::locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) {
  delivered += locations.size();
  if (!locations.empty()) latest = locations.back();
}

ManagerPipeline::Listening ManagerPipeline::makeListening() {
  Listening listening;
  listening.manager = ZRLocationManager::init();
  listening.manager->setDelegate(listening.client);
  return listening;
}

ManagerPipeline::ManagerPipeline(Options options)
    : options_(std::move(options)), simulator_(std::make_shared<TripSimulator>()) {
  ZRLocationManager::setFiltersMeasuredValues(options_.filtersMeasuredValues);
  ZRLocationManager::setTripSimulator(simulator_);
  plain_ = makeListening();
  snap_ = makeListening();
  halfWay_ = makeListening();
  snap_.manager->setSnapFilter([this](const std::shared_ptr<ZRLocation>& location) { return snapped(location); });
  plain_.manager->startUpdatingLocation();
  snap_.manager->startUpdatingLocation();
}

ManagerPipeline::~ManagerPipeline() {
  for (const Listening* listening : {&plain_, &snap_, &halfWay_}) {
    listening->manager->stopUpdatingLocation();
    listening->manager->setSnapFilter(nullptr);  // the process's first manager outlives this pipeline
  }
}

std::shared_ptr<ZRLocation> ManagerPipeline::snapped(const std::shared_ptr<ZRLocation>& location) {
  const CLLocationCoordinate2D place = location->coordinate();
  const auto nearest = options_.route.empty() ? replayed_.snap(place) : options_.route.snap(place);
  replayed_.append(place);  // only now: a fix is snapped to the way that led to it, not to itself
  return nearest ? locationMovedTo(*nearest, *location) : location;
}

std::optional<TripRow> ManagerPipeline::deliver(const ZRPositionFix& fix) {
  plain_.client->latest.reset();
  snap_.client->latest.reset();
  simulator_->deliver(fix);
  if (!plain_.client->latest) return std::nullopt;
  TripRow row = rowOfLocation(*plain_.client->latest);
  if (snap_.client->latest) row.snapped = snap_.client->latest->coordinate();
  return row;
}

void ManagerPipeline::startHalfWayClient() { halfWay_.manager->startUpdatingLocation(); }

void ManagerPipeline::stopHalfWayClient() { halfWay_.manager->stopUpdatingLocation(); }

std::map<std::string, std::uint64_t> ManagerPipeline::deliveredByClient() const {
  return {{"plain", plain_.client->delivered},
          {"snapped", snap_.client->delivered},
          {"half-way", halfWay_.client->delivered}};
}

}  // namespace trip
