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

class HeadlessJSON final : public ZRJSONService {
 public:
  std::variant<ZROHMValue, NSError> valueFromJSON(std::string_view, ZRJSONFragments) const override { return absent(); }
  std::variant<std::string, NSError> JSONFromValue(const ZROHMValue&, ZRJSONLayout) const override { return absent(); }

 private:
  static NSError absent() {
    return {NSCocoaErrorDomain,
            NSJSONFailureCode,
            {{NSLocalizedDescriptionKey, "No JSON service: install a platform with its `json` member filled."}}};
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
  platform.json = std::make_shared<HeadlessJSON>();
  return platform;
}
