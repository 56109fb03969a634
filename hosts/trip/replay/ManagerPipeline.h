// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_MANAGERPIPELINE_H
#define ZRCORE_HOSTS_TRIP_REPLAY_MANAGERPIPELINE_H

#include <ZRCore/ZRLocationManager.h>

#include <memory>

#include "ReplayedRoute.h"
#include "RouteSnapper.h"
#include "TripPipeline.h"
#include "TripSimulator.h"

namespace trip {

/// The location service with three clients: a plain one, one with a snap filter, and one that listens half-way only.
/// The service's filter belongs to the process: a second pipeline goes on where the first one's filter stopped.
class ManagerPipeline final : public TripPipeline {
 public:
  struct Options {
    bool filtersMeasuredValues = false;
    RouteSnapper route;  ///< what the snap filter snaps to; empty: the part of the trip already replayed
  };

  /// Puts a simulator in the receiver's place and starts the first two clients.
  explicit ManagerPipeline(Options options);
  ManagerPipeline(const ManagerPipeline&) = delete;
  ManagerPipeline& operator=(const ManagerPipeline&) = delete;
  ~ManagerPipeline() override;  // stops all clients

  std::optional<TripRow> deliver(const ZRPositionFix& fix) override;
  void startHalfWayClient() override;
  void stopHalfWayClient() override;
  std::map<std::string, std::uint64_t> deliveredByClient() const override;

 private:
  /// Keeps what a manager reported last.
  class Client final : public ZRDidUpdateLocations {
   public:
    void locationManagerDidUpdateLocations(ZRLocationManager& manager, const ZRLocations& locations) override;

    std::shared_ptr<ZRLocation> latest;
    std::uint64_t delivered = 0;
  };

  /// A client and its own hold on the service.
  struct Listening {
    std::shared_ptr<Client> client = std::make_shared<Client>();
    std::shared_ptr<ZRLocationManager> manager;
  };

  static Listening makeListening();
  std::shared_ptr<ZRLocation> snapped(const std::shared_ptr<ZRLocation>& location);

  Options options_;
  ReplayedRoute replayed_;
  std::shared_ptr<TripSimulator> simulator_;
  Listening plain_, snap_, halfWay_;
};

}  // namespace trip

#endif
