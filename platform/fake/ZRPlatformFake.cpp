// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatformFake.h>

#include <utility>

namespace {

const char* nameOf(CLActivityType type) {
  switch (type) {
    case CLActivityType::other:
      return "other";
    case CLActivityType::automotiveNavigation:
      return "automotiveNavigation";
    case CLActivityType::fitness:
      return "fitness";
    case CLActivityType::otherNavigation:
      return "otherNavigation";
  }
  return "unknown";
}

}  // namespace

ZRFakeReceiver::ZRFakeReceiver() = default;
ZRFakeReceiver::~ZRFakeReceiver() = default;
ZRFakeLocationManager::ZRFakeLocationManager() = default;
ZRFakeLocationManager::~ZRFakeLocationManager() = default;
ZRFakePositioning::~ZRFakePositioning() = default;
ZRFakeBundle::~ZRFakeBundle() = default;
ZRFakeLog::~ZRFakeLog() = default;
ZRFakeClock::~ZRFakeClock() = default;

void ZRFakeReceiver::note(std::string call) {
  if (journal) journal->push_back(call);
  calls.push_back(std::move(call));
}

void ZRFakeReceiver::startUpdatingLocation() {
  note("startUpdatingLocation");
  updatesLocation_ = true;
}

void ZRFakeReceiver::stopUpdatingLocation() {
  note("stopUpdatingLocation");
  updatesLocation_ = false;
}

void ZRFakeReceiver::startUpdatingHeading() {
  note("startUpdatingHeading");
  updatesHeading_ = true;
}

void ZRFakeReceiver::stopUpdatingHeading() {
  note("stopUpdatingHeading");
  updatesHeading_ = false;
}

void ZRFakeReceiver::setActivityType(CLActivityType type) {
  note(std::string("setActivityType ") + nameOf(type));
  CLLocationManager::setActivityType(type);
}

void ZRFakeLocationManager::requestWhenInUseAuthorization() { note("requestWhenInUseAuthorization"); }

void ZRFakeLocationManager::requestAlwaysAuthorization() { note("requestAlwaysAuthorization"); }

std::shared_ptr<const CLLocation> ZRFakeReceiver::location() const { return location_; }

template <class Callback>
std::shared_ptr<Callback> ZRFakeReceiver::answering() const {
  return std::dynamic_pointer_cast<Callback>(delegate().lock());
}

void ZRFakeReceiver::deliver(const CLLocations& locations) {
  if (!updatesLocation_ && !deliversWhileStopped) return;
  if (!locations.empty()) location_ = locations.back();
  if (const auto callback = answering<CLDidUpdateLocations>()) {
    callback->locationManagerDidUpdateLocations(*this, locations);
  }
}

void ZRFakeReceiver::deliver(const CLHeading& heading) {
  if (!updatesHeading_ && !deliversWhileStopped) return;
  if (const auto callback = answering<CLDidUpdateHeading>()) callback->locationManagerDidUpdateHeading(*this, heading);
}

void ZRFakeReceiver::fail(const NSError& error) {
  if (const auto callback = answering<CLDidFailWithError>()) callback->locationManagerDidFailWithError(*this, error);
}

void ZRFakeReceiver::changeAuthorization(CLAuthorizationStatus status) {
  if (const auto callback = answering<CLDidChangeAuthorizationStatus>()) {
    callback->locationManagerDidChangeAuthorizationStatus(*this, status);
  }
}

std::shared_ptr<CLLocationManager> ZRFakePositioning::makeLocationManager() {
  if (make) return make();
  made.push_back(std::make_shared<ZRFakeLocationManager>());
  made.back()->journal = journal;
  return made.back();
}

void ZRFakeLog::writeLine(std::string_view line) {
  lines.emplace_back(line);
  if (journal) journal->push_back("log " + lines.back());
}
