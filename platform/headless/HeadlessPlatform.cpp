// SPDX-License-Identifier: Apache-2.0
#include "HeadlessPlatform.h"

#include <ZRCore/ZRPlatformFill.h>
#include <ZRCore/ZRPrintableText.h>

#include <chrono>
#include <iostream>
#include <map>
#include <mutex>

#include "HeadlessScreen.h"
#include "HeadlessSession.h"
#include "HeadlessSound.h"

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
  std::optional<std::string> infoStringForKey(std::string_view) const override { return std::nullopt; }
  std::optional<std::string> bundleIdentifier() const override { return std::nullopt; }
  std::optional<std::string> localizedStringForKey(std::string_view) const override { return std::nullopt; }
  std::optional<std::string> frameworkResource(std::string_view, std::string_view) const override {
    return std::nullopt;
  }
};

class StandardErrorLog final : public ZRLog {
 public:
  void writeLine(std::string_view line) override {
    const std::lock_guard lock(mutex_);
    std::cerr << ZRPrintableText(line) << '\n';
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

/// Without a loop nothing can run later, and inside the posting call nothing may.
class DroppingMainQueue final : public ZRMainQueue {
 public:
  void post(std::function<void()>) override {}
};

class HeadlessXML final : public ZRXML {
 public:
  std::shared_ptr<NSXMLParser> parserWithData(std::string) override { return nullptr; }
};

class HeadlessImages final : public ZRImages {
 public:
  std::shared_ptr<const UIImage> imageWithData(std::string_view) const override { return nullptr; }
};

class PassingUserDefaults final : public ZRUserDefaults {
 public:
  std::optional<std::string> stringForKey(std::string_view key) const override {
    const std::lock_guard lock(mutex_);
    const auto found = values_.find(key);
    return found != values_.end() ? std::optional(found->second) : std::nullopt;
  }
  void setStringForKey(std::string_view value, std::string_view key) override {
    const std::lock_guard lock(mutex_);
    values_.insert_or_assign(std::string(key), value);
  }
  bool synchronize() override { return false; }

 private:
  mutable std::mutex mutex_;
  std::map<std::string, std::string, std::less<>> values_;
};

class HeadlessDevice final : public ZRDevice {
 public:
  bool isAdvertisingTrackingEnabled() const override { return false; }
  std::optional<std::string> advertisingIdentifier() const override { return std::nullopt; }
  std::optional<std::string> identifierForVendor() const override { return std::nullopt; }
  std::optional<std::string> systemVersion() const override { return std::nullopt; }
  std::optional<std::string> machineIdentifier() const override { return std::nullopt; }
  std::optional<std::string> systemLanguageCode() const override { return std::nullopt; }
};

}  // namespace

ZRPlatform headlessPlatform() {
  return ZRPlatformOf(
      std::make_shared<HeadlessPositioning>(), std::make_shared<HeadlessBundle>(),
      std::make_shared<NSNotificationCenter>(), std::make_shared<StandardErrorLog>(), std::make_shared<SystemClock>(),
      std::make_shared<HeadlessJSON>(), std::make_shared<DroppingMainQueue>(), std::make_shared<HeadlessSession>(),
      std::make_shared<HeadlessXML>(), std::make_shared<HeadlessImages>(), std::make_shared<PassingUserDefaults>(),
      std::make_shared<HeadlessDevice>(), std::make_shared<HeadlessAudioSession>(), std::make_shared<HeadlessSpeech>(),
      std::make_shared<HeadlessAudioPlayers>(), std::make_shared<HeadlessApplication>(),
      std::make_shared<HeadlessScreen>(), std::make_shared<HeadlessPasteboard>(), std::make_shared<HeadlessMail>());
}
