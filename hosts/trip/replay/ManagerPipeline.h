// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_MANAGERPIPELINE_H
#define ZRCORE_HOSTS_TRIP_REPLAY_MANAGERPIPELINE_H

#include <memory>

#include "TripClients.h"
#include "TripPipeline.h"
#include "TripSimulator.h"

namespace trip {

/// The location service with a trip's clients. Its filter belongs to the process: a second pipeline goes on where the
/// first one's filter stopped.
class ManagerPipeline final : public TripPipeline {
 public:
  struct Options {
    bool filtersMeasuredValues = false;
    RouteSnapper route;  ///< what the snap filter snaps to; empty: the part of the trip already replayed
  };

  /// Puts a simulator in the receiver's place and starts the first two clients.
  explicit ManagerPipeline(Options options);

  std::optional<TripRow> deliver(const ZRPositionFix& fix) override;
  void letHalfWayClientListen(bool listens) override { clients_.setListening(TripClients::halfWay, listens); }
  std::map<std::string, std::uint64_t> deliveredByClient() const override;

 private:
  std::shared_ptr<TripSimulator> simulator_;
  TripClients clients_;
};

}  // namespace trip

#endif
