// SPDX-License-Identifier: Apache-2.0
#include "positioning/LinuxLocationManager.h"

#include <utility>

LinuxLocationManager::~LinuxLocationManager() {
  if (source_) source_->stop();
}

void LinuxLocationManager::setDelegate(std::weak_ptr<CLLocationManagerDelegate> delegate) {
  const auto asked = delegate.lock();
  didUpdateLocations_ = std::dynamic_pointer_cast<CLDidUpdateLocations>(asked);
  didUpdateHeading_ = std::dynamic_pointer_cast<CLDidUpdateHeading>(asked);
  didFailWithError_ = std::dynamic_pointer_cast<CLDidFailWithError>(asked);
  didChangeAuthorizationStatus_ = std::dynamic_pointer_cast<CLDidChangeAuthorizationStatus>(asked);
  CLLocationManager::setDelegate(std::move(delegate));
}

void LinuxLocationManager::startUpdatingLocation() {
  wantsLocation_ = true;
  run();
}

void LinuxLocationManager::stopUpdatingLocation() {
  wantsLocation_ = false;
  stopUnlessWanted();
}

void LinuxLocationManager::startUpdatingHeading() {
  wantsHeading_ = true;
  run();
  if (isAnswered_) tellMissingHeading();
}

void LinuxLocationManager::stopUpdatingHeading() {
  wantsHeading_ = false;
  stopUnlessWanted();
}

void LinuxLocationManager::run() {
  if (source_) return;
  latch_ = {};
  isAnswered_ = false;
  source_ = dependencies_.makeSource(granted_);
  source_->start(*this);
}

void LinuxLocationManager::stopUnlessWanted() {
  if (wantsLocation_ || wantsHeading_ || !source_) return;
  // A stop may come from inside a callback of the source, which holds itself until it returns.
  std::exchange(source_, nullptr)->stop();
}

void LinuxLocationManager::tellMissingHeading() {
  if (source_->hasHeading() || std::exchange(hasToldMissingHeading_, true)) return;
  dependencies_.log(source_->name() + " has no compass: no headings will come");
}

/// For a source that may or may not have a compass: if enough fixes come without a heading, logs once that it has none.
void LinuxLocationManager::missHeading(std::size_t fixes) {
  constexpr std::size_t kMostWithoutHeading = 10;  // a compass reports at least as often as a receiver
  if (!wantsHeading_ || (fixesWithoutHeading_ += fixes) < kMostWithoutHeading) return;
  if (std::exchange(hasToldMissingHeading_, true)) return;
  dependencies_.log(source_->name() + " has told no heading so far: it seems to have no compass");
}

void LinuxLocationManager::sourceAnswers() {
  if (!std::exchange(isAnswered_, true)) dependencies_.log("positions come from " + source_->name());
  if (wantsHeading_) tellMissingHeading();
}

void LinuxLocationManager::sourceFixes(const std::vector<ZRPositionFix>& fixes) {
  if (latch_.works()) dependencies_.log(source_->name() + " gives positions again");
  missHeading(fixes.size());
  CLLocations locations;
  locations.reserve(fixes.size());
  for (const ZRPositionFix& fix : fixes) locations.push_back(CLLocation::initWithFix(fix));
  latest_ = locations.back();
  if (!wantsLocation_) return;
  if (const auto delegate = didUpdateLocations_.lock()) delegate->locationManagerDidUpdateLocations(*this, locations);
}

void LinuxLocationManager::sourceHeading(const CLHeading& heading) {
  if (!wantsHeading_) return;
  fixesWithoutHeading_ = 0;
  if (const auto delegate = didUpdateHeading_.lock()) delegate->locationManagerDidUpdateHeading(*this, heading);
}

void LinuxLocationManager::sourceFails(policy::PositioningFault fault, const std::string& detail) {
  if (!latch_.fails(fault)) return;
  const NSError error = policy::errorOf(fault, source_->name(), detail);
  dependencies_.log(error.localizedDescription());
  if (const auto delegate = didFailWithError_.lock()) delegate->locationManagerDidFailWithError(*this, error);
}

void LinuxLocationManager::sourceAuthorization(CLAuthorizationStatus status) {
  if (std::exchange(dependencies_.authorization->status, status) == status) return;
  if (const auto delegate = didChangeAuthorizationStatus_.lock()) {
    delegate->locationManagerDidChangeAuthorizationStatus(*this, status);
  }
}

void LinuxLocationManager::sourceSays(const std::string& text) { dependencies_.log(source_->name() + ": " + text); }
