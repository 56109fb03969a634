// SPDX-License-Identifier: Apache-2.0
#include "TripClients.h"

#include <utility>

#include "LocationRow.h"

namespace trip {

void TripClients::Delegate::locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) {
  fixes += locations.size();
  if (!locations.empty()) latest = locations.back();
  if (!callbacks.fix) return;
  for (const auto& location : locations) callbacks.fix(*location);
}

void TripClients::Delegate::locationManagerDidFailWithError(ZRLocationManager&, const NSError& error) {
  if (callbacks.failure) callbacks.failure(error);
}

TripClients::TripClients(Callbacks callbacks, RouteSnapper route) : route_(std::move(route)) {
  clients_[plain].delegate->callbacks = std::move(callbacks);
  for (const Client& client : clients_) client.manager->setDelegate(client.delegate);
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

void TripClients::forgetLatest() {
  for (const Client& client : clients_) client.delegate->latest.reset();
}

void TripClients::reset() {
  forgetWay();
  forgetLatest();
  for (const Client& client : clients_) client.delegate->fixes = 0;
}

std::shared_ptr<ZRLocation> TripClients::snap(const std::shared_ptr<ZRLocation>& location) {
  const CLLocationCoordinate2D place = location->coordinate();
  const auto nearest = route_.empty() ? way_.snap(place) : route_.snap(place);
  way_.append(place);  // only now: a fix is snapped to the way that led to it, not to itself
  return nearest ? locationMovedTo(*nearest, *location) : location;
}

}  // namespace trip
