// SPDX-License-Identifier: Apache-2.0
#include "TripClients.h"

#include <trip/replay/LocationRow.h>

#include <utility>

namespace demo {

void TripClients::Delegate::locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) {
  fixes += locations.size();
  if (!locations.empty()) latest = locations.back();
}

void TripClients::ReportingDelegate::locationManagerDidUpdateLocations(ZRLocationManager& manager,
                                                                       const ZRLocations& locations) {
  Delegate::locationManagerDidUpdateLocations(manager, locations);
  for (const auto& location : locations) handlers_.fix(*location);
}

void TripClients::ReportingDelegate::locationManagerDidFailWithError(ZRLocationManager&, const NSError& error) {
  handlers_.failure(error);
}

TripClients::TripClients(Handlers handlers) {
  clients_[plain].delegate = std::make_shared<ReportingDelegate>(std::move(handlers));
  clients_[snapped].delegate = std::make_shared<Delegate>();
  clients_[halfWay].delegate = std::make_shared<Delegate>();
  for (Client& client : clients_) {
    client.manager = ZRLocationManager::init();
    client.manager->setDelegate(client.delegate);
  }
  clients_[snapped].manager->setSnapFilter(
      [this](const std::shared_ptr<ZRLocation>& location) { return snap(location); });
  setListening(plain, true);
  setListening(snapped, true);
}

TripClients::~TripClients() {
  for (const Client& client : clients_) {
    client.manager->stopUpdatingLocation();
    client.manager->setSnapFilter(nullptr);  // the process's first manager outlives this object
  }
}

void TripClients::setListening(Which client, bool listens) {
  if (listens == isListening(client)) return;
  if (listens) {
    clients_[client].manager->startUpdatingLocation();
  } else {
    clients_[client].manager->stopUpdatingLocation();
  }
}

std::array<TripClients::Row, TripClients::kCount> TripClients::rows() const {
  std::array<Row, kCount> rows{{{"Plain", "every fix, filtered"},
                                {"Snapped", "the last fix of each batch, put on the way so far"},
                                {"Half-way", "listens from a quarter to three quarters"}}};
  for (std::size_t i = 0; i < kCount; ++i) {
    rows[i].isListening = clients_[i].manager->shouldUpdateLocation();
    rows[i].fixes = clients_[i].delegate->fixes;
  }
  return rows;
}

void TripClients::reset() {
  forgetRoute();
  for (const Client& client : clients_) {
    client.delegate->fixes = 0;
    client.delegate->latest.reset();
  }
}

std::shared_ptr<ZRLocation> TripClients::snap(const std::shared_ptr<ZRLocation>& location) {
  const CLLocationCoordinate2D place = location->coordinate();
  const auto nearest = route_.snap(place);
  route_.append(place);  // only now: a fix is snapped to the way that led to it, not to itself
  return nearest ? trip::locationMovedTo(*nearest, *location) : location;
}

}  // namespace demo
