#include "HeadlessPlatform.h"

#include <chrono>
#include <iostream>
#include <mutex>

namespace {

/// A receiver that never has a fix.
class HeadlessLocationManager final : public CLLocationManager {
 public:
  void startUpdatingLocation() override {}
  void stopUpdatingLocation() override {}
  void startUpdatingHeading() override {}
  void stopUpdatingHeading() override {}
};

class HeadlessPositioning final : public ZRPositioning {
 public:
  std::shared_ptr<CLLocationManager> makeLocationManager() override {
    return std::make_shared<HeadlessLocationManager>();
  }
  CLAuthorizationStatus authorizationStatus() const override { return CLAuthorizationStatus::notDetermined; }
};

class HeadlessBundle final : public ZRBundle {
 public:
  bool hasInfoValueForKey(std::string_view) const override { return false; }
};

class StandardErrorLog final : public ZRLog {
 public:
  void writeLine(std::string_view line) override {
    const std::lock_guard lock(mutex_);
    std::cerr << line << '\n';
  }

 private:
  std::mutex mutex_;
};

class SystemClock final : public ZRClock {
 public:
  NSDate now() const override {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return {std::chrono::duration<double>(sinceEpoch).count()};
  }
};

}  // namespace

ZRPlatform headlessPlatform() {
  ZRPlatform platform;
  platform.positioning = std::make_shared<HeadlessPositioning>();
  platform.bundle = std::make_shared<HeadlessBundle>();
  platform.notificationCenter = std::make_shared<NSNotificationCenter>();
  platform.log = std::make_shared<StandardErrorLog>();
  platform.clock = std::make_shared<SystemClock>();
  return platform;
}
