// SPDX-License-Identifier: Apache-2.0
#include "TripSession.h"

#include <trip/replay/LocationRow.h>

#include <utility>

namespace demo {

TripSession::TripSession(const ZRClock& clock, NSNotificationCenter& notifications)
    : notifications_(notifications),
      playback_(clock),
      simulator_(std::make_shared<trip::TripSimulator>()),
      clients_({.fix = [this](const ZRLocation& location) { hear(location); },
                .failure =
                    [this](const NSError& error) {
                      failure_ = error.localizedDescription();
                      hasNews_ = true;
                    }}) {
  setFiltersMeasuredValues(true);
}

void TripSession::begin(const std::shared_ptr<CLLocationManager>& source, std::string name) {
  ZRLocationManager::resetFilter();
  ZRLocationManager::setTripSimulator(source);
  filterIsAhead_ = false;
  sourceName_ = std::move(name);
  track_ = {};
  latest_.reset();
  failure_.clear();
  nextFix_ = 0;
  hasNews_ = true;
  clients_.reset();
}

void TripSession::useRecording(LoadedRecording recording) {
  recording_ = std::move(recording);
  useLastRecording();
}

void TripSession::useLastRecording() {
  receiver_.reset();
  playback_.load(recording_.timeline.durationSeconds());
  begin(simulator_, recording_.name);
  switchHalfWayClient();
}

void TripSession::useReceiver(const std::shared_ptr<CLLocationManager>& receiver, std::string name) {
  playback_.load(0.0);
  receiver_ = receiver;
  begin(receiver, std::move(name));
}

const std::vector<TrackPoint>& TripSession::route() const {
  static const std::vector<TrackPoint> kUnknown;
  return isLive() ? kUnknown : recording_.route;
}

void TripSession::seek(double seconds) {
  playback_.seek(seconds);
  followPlayback();
}

bool TripSession::step() {
  playback_.step();
  followPlayback();
  return std::exchange(hasNews_, false);
}

void TripSession::hear(const ZRLocation& location) {
  latest_ = trip::rowOfLocation(location);
  latest_->index = nextFix_;
  track_.add(*latest_);
  failure_.clear();
  hasNews_ = true;
  if (isLive()) ++nextFix_;
}

void TripSession::followPlayback() {
  if (isLive()) return;
  const std::uint64_t due = recording_.timeline.countDueAt(playback_.positionSeconds());
  if (due < nextFix_) {
    nextFix_ = due;
    track_.cutBackTo(due);
    clients_.forgetWay();
    filterIsAhead_ = true;
    hasNews_ = true;
  }
  if (nextFix_ < due) rewindFilter();
  for (; nextFix_ < due; ++nextFix_) {
    switchHalfWayClient();
    const std::size_t before = track_.raw().size();
    simulator_->deliver(recording_.fixes[nextFix_]);
    if (track_.raw().size() == before) track_.interrupt();  // nobody listened
    hasNews_ = true;
  }
  switchHalfWayClient();
}

/// Lets the filter have seen what was heard up to here, and no more. Done no earlier than the next fix: of a long drag
/// backwards only the end counts.
void TripSession::rewindFilter() {
  if (!std::exchange(filterIsAhead_, false)) return;
  ZRLocationManager::resetFilter();
  ZRLocationManager& service = *ZRLocationManager::firstInstance();
  for (const TrackPoint& heard : track_.raw()) {
    service.smoothLocationsWithLocations({CLLocation::initWithFix(recording_.fixes[heard.index])});
  }
}

/// At a quarter and at three quarters of the recording; in between, whoever watches may switch the client himself.
void TripSession::switchHalfWayClient() {
  using trip::TripClients;
  const auto all = static_cast<double>(recording_.fixes.size());
  const bool isHalfWay = all > 0.0 && TripClients::isHalfWay(static_cast<double>(nextFix_) / all);
  if (std::exchange(isHalfWay_, isHalfWay) != isHalfWay) clients_.setListening(TripClients::halfWay, isHalfWay);
}

void TripSession::setInBackground(bool isInBackground) {
  if (std::exchange(isInBackground_, isInBackground) == isInBackground) return;
  notifications_.postNotificationName(isInBackground ? UIApplicationDidEnterBackgroundNotification
                                                     : UIApplicationWillEnterForegroundNotification);
}

bool TripSession::receiverRuns() const {
  if (!isLive()) return simulator_->isUpdatingLocation();
  const auto& service = *ZRLocationManager::firstInstance();
  return isInBackground_ ? service.countInstancesGettingLocationUpdatesInBackground() > 0
                         : service.countInstancesGettingLocationUpdates() > 0;
}

}  // namespace demo
