// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_GEOCLUESOURCE_H
#define ZRCORE_LINUX_GEOCLUESOURCE_H

#include <ZRCore/NSDate.h>
#include <policy/BackOff.h>

#include <functional>
#include <memory>
#include <string>

#include "bus/SystemBus.h"
#include "loop/GLibLoop.h"
#include "positioning/PositionSource.h"

/// The desktop's location service, over the system's message bus. The service may ask the user, so its answer may take
/// any time. Without an agent that could ask it never answers; a watchdog reports that.
class GeoClueSource final : public PositionSource, public std::enable_shared_from_this<GeoClueSource> {
 public:
  struct Options {
    std::string desktopId = {};
    std::string busAddress = {};                                                 ///< empty: the system bus
    CLAuthorizationStatus granted = CLAuthorizationStatus::authorizedWhenInUse;  ///< what a permission means
    std::function<NSDate()> now = {};
    double answerSeconds = 10;   ///< how long the service may not answer
    double silenceSeconds = 60;  ///< how long there may be no first position
  };

  GeoClueSource(GLibLoop& loop, Options options);
  ~GeoClueSource() override;

  std::string name() const override { return "GeoClue"; }
  void start(PositionSourceListener& listener) override;
  void stop() override;

 private:
  // The steps of a run, each of which begins when the one before it has been answered.
  void connect();
  void opened(const std::string& failure);
  void serviceChanged(bool isThere);
  void askForClient();
  void introduce();
  void startClient();

  void forgetClient();
  void locationUpdated(GVariant* parameters);
  void askForLocation();
  void deliver(GVariant* properties);
  void failed(const GError& error);
  void retry();
  void fails(policy::PositioningFault fault, const std::string& detail);
  void watch(double seconds, policy::PositioningFault fault);

  GLibLoop& loop_;
  Options options_;
  policy::BackOff backOff_;
  RunListener listener_;
  std::unique_ptr<SystemBus> bus_;
  std::string client_;          ///< the path of our client; empty: none yet
  std::string asked_, newest_;  ///< paths of locations: the one whose values are awaited, and one to ask for then
  bool wasThere_ = false;       ///< the service, in this run
  bool isDenied_ = false;       ///< it has refused
  std::unique_ptr<Loop::Wait> retry_;  ///< null: no connection is due
  std::unique_ptr<Loop::Wait> watchdog_;
};

#endif
