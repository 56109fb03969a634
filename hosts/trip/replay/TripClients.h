// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_TRIPCLIENTS_H
#define ZRCORE_HOSTS_TRIP_REPLAY_TRIPCLIENTS_H

#include <ZRCore/ZRLocationManager.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>

#include "ReplayedRoute.h"
#include "RouteSnapper.h"

namespace trip {

/// A trip's clients of the location service, each with a manager of its own: a plain one, one with a snap filter, and
/// one that listens half-way only.
class TripClients {
 public:
  enum Which : std::size_t { plain, snapped, halfWay };
  static constexpr std::size_t kCount = 3;

  /// What the plain client does with what it gets; each may be empty.
  struct Callbacks {
    std::function<void(const ZRLocation&)> fix;
    std::function<void(const NSError&)> failure;
  };

  /// Starts the plain and the snapping client.
  /// @param route  what the snap filter snaps to; empty: the way that the trip has come
  explicit TripClients(Callbacks callbacks = {}, RouteSnapper route = {});
  TripClients(const TripClients&) = delete;
  TripClients& operator=(const TripClients&) = delete;
  ~TripClients();  // stops all of them

  /// Whether the half-way client is to listen where so much of the trip (0 to 1) has passed.
  static bool isHalfWay(double fraction) { return fraction >= 0.25 && fraction < 0.75; }

  void setListening(Which client, bool listens);
  bool isListening(Which client) const { return clients_[client].manager->shouldUpdateLocation(); }

  /// How many fixes were delivered to the client.
  std::uint64_t fixes(Which client) const { return clients_[client].delegate->fixes; }
  /// What the client got last; null before its first fix.
  const std::shared_ptr<ZRLocation>& latest(Which client) const { return clients_[client].delegate->latest; }

  /// A new trip: the counts start from 0, and what was snapped to is forgotten.
  void reset();
  void forgetLatest();
  /// The trip goes on from another place: what was snapped to is forgotten.
  void forgetWay() { way_ = {}; }

 private:
  struct Delegate final : ZRDidUpdateLocations, ZRDidFailWithError {
    void locationManagerDidUpdateLocations(ZRLocationManager& manager, const ZRLocations& locations) override;
    void locationManagerDidFailWithError(ZRLocationManager& manager, const NSError& error) override;

    Callbacks callbacks;
    std::shared_ptr<ZRLocation> latest;
    std::uint64_t fixes = 0;
  };

  struct Client {
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    std::shared_ptr<ZRLocationManager> manager = ZRLocationManager::init();
  };

  std::shared_ptr<ZRLocation> snap(const std::shared_ptr<ZRLocation>& location);

  RouteSnapper route_;
  ReplayedRoute way_;
  std::array<Client, kCount> clients_;
};

}  // namespace trip

#endif
