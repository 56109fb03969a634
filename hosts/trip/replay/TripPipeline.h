// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_TRIPPIPELINE_H
#define ZRCORE_HOSTS_TRIP_REPLAY_TRIPPIPELINE_H

#include <ZRCore/CLLocation.h>
#include <trip/TripRow.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace trip {

/// What a fix goes through on its way from the recording to a row.
class TripPipeline {
 public:
  virtual ~TripPipeline() = default;

  /// @return what the clients got, without the row's number and line; nullopt when they got nothing.
  virtual std::optional<TripRow> deliver(const ZRPositionFix& fix) = 0;

  /// One of the clients listens to a part of the trip only.
  virtual void letHalfWayClientListen(bool listens) = 0;

  /// Client name -> fixes delivered to it so far.
  virtual std::map<std::string, std::uint64_t> deliveredByClient() const = 0;
};

}  // namespace trip

#endif
