// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_LINUXLOCATIONMANAGER_H
#define ZRCORE_LINUX_LINUXLOCATIONMANAGER_H

#include <ZRCore/CLLocationManager.h>
#include <policy/PositioningFault.h>

#include <functional>
#include <memory>
#include <string>

#include "positioning/PositionSource.h"

/// Whether this application may know the position, as far as it has been found out. Shared by all managers.
struct Authorization {
  CLAuthorizationStatus status = CLAuthorizationStatus::notDetermined;
};

/// One client's hold on a source: a new run of it for each start. Loop's thread.
class LinuxLocationManager : public CLLocationManager, private PositionSourceListener {
 public:
  struct Dependencies {
    /// A source for one run.
    /// @param granted  the status that a permission means to this client
    std::function<std::shared_ptr<PositionSource>(CLAuthorizationStatus granted)> makeSource;
    std::shared_ptr<Authorization> authorization;
    std::function<void(const std::string& line)> log;
  };

  explicit LinuxLocationManager(Dependencies dependencies) : dependencies_(std::move(dependencies)) {}
  ~LinuxLocationManager() override;

  void setDelegate(std::weak_ptr<CLLocationManagerDelegate> delegate) override;
  void startUpdatingLocation() override;
  void stopUpdatingLocation() override;
  void startUpdatingHeading() override;
  void stopUpdatingHeading() override;
  std::shared_ptr<const CLLocation> location() const override { return latest_; }

 protected:
  void setGranted(CLAuthorizationStatus granted) { granted_ = granted; }

 private:
  void run();
  void stopUnlessWanted();
  void tellMissingHeading();
  void missHeading(std::size_t fixes);

  void sourceAnswers() override;
  void sourceFixes(const std::vector<ZRPositionFix>& fixes) override;
  void sourceHeading(const CLHeading& heading) override;
  void sourceFails(policy::PositioningFault fault, const std::string& detail) override;
  void sourceAuthorization(CLAuthorizationStatus status) override;
  void sourceSays(const std::string& text) override;

  Dependencies dependencies_;
  CLAuthorizationStatus granted_ = CLAuthorizationStatus::authorizedWhenInUse;
  bool wantsLocation_ = false;
  bool wantsHeading_ = false;
  bool hasToldMissingHeading_ = false;
  std::size_t fixesWithoutHeading_ = 0;
  bool isAnswered_ = false;
  std::shared_ptr<PositionSource> source_;
  policy::FaultLatch latch_;
  std::shared_ptr<const CLLocation> latest_;

  std::weak_ptr<CLDidUpdateLocations> didUpdateLocations_;
  std::weak_ptr<CLDidUpdateHeading> didUpdateHeading_;
  std::weak_ptr<CLDidFailWithError> didFailWithError_;
  std::weak_ptr<CLDidChangeAuthorizationStatus> didChangeAuthorizationStatus_;
};

/// The manager of sources for which the user is asked.
class AskingLocationManager final : public LinuxLocationManager, public CLAuthorizationRequests {
 public:
  using LinuxLocationManager::LinuxLocationManager;
  void requestWhenInUseAuthorization() override { setGranted(CLAuthorizationStatus::authorizedWhenInUse); }
  void requestAlwaysAuthorization() override { setGranted(CLAuthorizationStatus::authorizedAlways); }
};

#endif
