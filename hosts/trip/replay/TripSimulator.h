// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_TRIPSIMULATOR_H
#define ZRCORE_HOSTS_TRIP_REPLAY_TRIPSIMULATOR_H

#include <ZRCore/CLLocationManager.h>

#include <memory>

namespace trip {

/// A receiver whose positions come from a recording. It reports only while it is started, and only from `deliver`.
class TripSimulator final : public CLLocationManager {
 public:
  void setDelegate(std::weak_ptr<CLLocationManagerDelegate> delegate) override;

  void startUpdatingLocation() override { isUpdatingLocation_ = true; }
  void stopUpdatingLocation() override { isUpdatingLocation_ = false; }
  void startUpdatingHeading() override {}  // a recording of positions has no compass
  void stopUpdatingHeading() override {}

  std::shared_ptr<const CLLocation> location() const override { return latest_; }

  bool isUpdatingLocation() const { return isUpdatingLocation_; }

  /// Reports `fix` to the delegate, as a batch of one, the way receivers do.
  /// @return false, and nothing is reported, while nobody wants positions.
  bool deliver(const ZRPositionFix& fix);

 private:
  bool isUpdatingLocation_ = false;
  std::weak_ptr<CLDidUpdateLocations> didUpdateLocations_;
  std::shared_ptr<const CLLocation> latest_;
};

}  // namespace trip

#endif
