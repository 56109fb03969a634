// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_POSITIONSOURCE_H
#define ZRCORE_LINUX_POSITIONSOURCE_H

#include <ZRCore/CLLocation.h>
#include <ZRCore/CLLocationManager.h>
#include <platform/Callback.h>
#include <policy/PositioningFault.h>

#include <string>
#include <utility>
#include <vector>

/// Receives the events of one run of a source. It is never called inside `start` or after `stop`, and may call `stop`
/// and drop the source in each call.
class PositionSourceListener {
 public:
  virtual ~PositionSourceListener() = default;
  /// The source has answered and provides the positions of this run, whatever it reports later.
  virtual void sourceAnswers() {}
  virtual void sourceFixes(const std::vector<ZRPositionFix>& /*fixes*/) {}
  virtual void sourceHeading(const CLHeading& /*heading*/) {}
  /// A source may report one fault many times. The listener passes changes on.
  virtual void sourceFails(policy::PositioningFault /*fault*/, const std::string& /*detail*/) {}
  virtual void sourceAuthorization(CLAuthorizationStatus /*status*/) {}
  /// For the log.
  virtual void sourceSays(const std::string& /*text*/) {}
};

/// A source of positions. It runs once, from `start` to `stop`, and reconnects on its own when its daemon or device has
/// gone. After `stop` it holds no descriptor, timer or connection. Loop's thread.
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

/// Who listens to a source's run. Nobody does before its start and after its stop, and nobody may be told anything: a
/// source need not ask after each call whether that call has stopped it.
class RunListener {
 public:
  void begin(PositionSourceListener& listener) { listener_ = &listener; }
  PositionSourceListener& end() { return *std::exchange(listener_, &nobody()); }
  bool isThere() const { return listener_ != &nobody(); }
  PositionSourceListener* operator->() const { return listener_; }

 private:
  static PositionSourceListener& nobody() {
    static PositionSourceListener instance;
    return instance;
  }

  PositionSourceListener* listener_ = &nobody();
};

#endif
