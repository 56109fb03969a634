// SPDX-License-Identifier: Apache-2.0
#include "TripSimulator.h"

#include <utility>

namespace trip {

void TripSimulator::setDelegate(std::weak_ptr<CLLocationManagerDelegate> delegate) {
  didUpdateLocations_ = std::dynamic_pointer_cast<CLDidUpdateLocations>(delegate.lock());
  CLLocationManager::setDelegate(std::move(delegate));
}

bool TripSimulator::deliver(const ZRPositionFix& fix) {
  if (!isUpdatingLocation_) return false;
  const auto listener = didUpdateLocations_.lock();
  if (!listener) return false;
  latest_ = CLLocation::initWithFix(fix);
  listener->locationManagerDidUpdateLocations(*this, {latest_});
  return true;
}

}  // namespace trip
