// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TRIPSESSION_H
#define ZRCORE_HOSTS_DEMO_TRIPSESSION_H

#include <ZRCore/ZRPlatform.h>
#include <trip/replay/TripClients.h>
#include <trip/replay/TripSimulator.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "LoadedRecording.h"
#include "Playback.h"
#include "TripTrack.h"

namespace demo {

/// A trip on its way through the location service: a recording that is played, or a receiver that is listened to, the
/// clients, and the track of what the plain client heard.
///
/// Each trip begins with a fresh filter, so that what it makes of a recording does not depend on what was played
/// before. A jump forward delivers the fixes in between at once; a jump backward cuts the track and the filter's memory
/// back, and nothing is taken back from the clients' counts.
class TripSession {
 public:
  /// The services of the platform in use; both must outlive the session.
  TripSession(const ZRClock& clock, NSNotificationCenter& notifications);

  // Where the fixes come from. Each begins a new trip.

  void useRecording(LoadedRecording recording);
  /// The recording that was used last, from its start.
  void useLastRecording();
  /// `receiver` takes the place of whatever reported before.
  void useReceiver(const std::shared_ptr<CLLocationManager>& receiver, std::string name);
  bool isLive() const { return receiver_ != nullptr; }

  // The playback of a recording; a receiver knows nothing of it.

  void play() { playback_.play(); }
  void pause() { playback_.pause(); }
  void setRate(double rate) { playback_.setRate(rate); }
  void seek(double seconds);
  /// Delivers what is due by now. @return whether anything is new since the last call, from a receiver too.
  bool step();
  const Playback& playback() const { return playback_; }
  /// The recording that is used, or was used last.
  const LoadedRecording& recording() const { return recording_; }
  /// Where the trip leads; empty with a receiver.
  const std::vector<TrackPoint>& route() const;

  // What the host reports to the service.

  /// Posts that the application went to the background, or came back.
  void setInBackground(bool isInBackground);
  bool isInBackground() const { return isInBackground_; }
  /// Whether the filter works on the values that the receiver measured, as it does at the start, or on none, as the
  /// service does by itself.
  void setFiltersMeasuredValues(bool filters) { ZRLocationManager::setFiltersMeasuredValues(filters); }
  bool filtersMeasuredValues() const { return ZRLocationManager::filtersMeasuredValues(); }
  /// Whether the service keeps its receiver running now.
  bool receiverRuns() const;

  trip::TripClients& clients() { return clients_; }
  const trip::TripClients& clients() const { return clients_; }
  const TripTrack& track() const { return track_; }
  /// The newest row of the plain client; nothing before its first.
  const std::optional<trip::TripRow>& latest() const { return latest_; }
  /// Why the receiver is silent, in words; empty when it is not known to be.
  const std::string& failure() const { return failure_; }
  const std::string& sourceName() const { return sourceName_; }

 private:
  void begin(const std::shared_ptr<CLLocationManager>& source, std::string name);
  void hear(const ZRLocation& location);
  void followPlayback();
  void rewindFilter();
  void switchHalfWayClient();

  NSNotificationCenter& notifications_;
  Playback playback_;
  LoadedRecording recording_;
  std::shared_ptr<trip::TripSimulator> simulator_;
  std::shared_ptr<CLLocationManager> receiver_;
  std::string sourceName_;
  std::string failure_;
  TripTrack track_;
  std::optional<trip::TripRow> latest_;
  std::uint64_t nextFix_ = 0;  ///< of the recording, or of what the receiver reports
  bool hasNews_ = false;
  bool filterIsAhead_ = false;  ///< of the playback, which has jumped back
  bool isInBackground_ = false;
  bool isHalfWay_ = false;
  trip::TripClients clients_;  ///< last: they may report into the members above
};

}  // namespace demo

#endif
