// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_POSITIONSOURCE_H
#define ZRCORE_LINUX_POSITIONSOURCE_H

#include <ZRCore/CLLocation.h>
#include <ZRCore/CLLocationManager.h>
#include <policy/FaultLatch.h>

#include <string>
#include <vector>

/// Hears one run of a source. Never called from within `start`, nor after `stop`; may call `stop` and let the source
/// go.
class PositionSourceListener {
 public:
  virtual ~PositionSourceListener() = default;
  /// The source is there: whatever it tells from now on, it is the one of this run.
  virtual void sourceAnswers() = 0;
  virtual void sourceFixes(const std::vector<ZRPositionFix>& fixes) = 0;
  virtual void sourceHeading(const CLHeading& heading) = 0;
  /// May come again and again for one fault; whoever listens tells changes only.
  virtual void sourceFails(policy::PositioningFault fault, const std::string& detail) = 0;
  virtual void sourceAuthorization(CLAuthorizationStatus status) = 0;
  /// For the log.
  virtual void sourceSays(const std::string& text) = 0;
};

/// Where positions come from. A source runs once, from `start` to `stop`, and looks on its own for a daemon or a device
/// that is gone. Between a stop and its release it holds no descriptor, no timer and no connection. Loop's thread.
class PositionSource {
 public:
  PositionSource() = default;
  PositionSource(const PositionSource&) = delete;
  PositionSource& operator=(const PositionSource&) = delete;
  virtual ~PositionSource() = default;

  /// For messages and the log.
  virtual std::string name() const = 0;
  /// Whether it may have a compass.
  virtual bool hasHeading() const { return false; }
  virtual void start(PositionSourceListener& listener) = 0;
  virtual void stop() = 0;
};

#endif
