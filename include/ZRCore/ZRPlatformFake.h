// SPDX-License-Identifier: Apache-2.0
/// @file
/// Test doubles of the platform's services, shipped so that hosts can test against the framework as the framework tests
/// itself. Link ZRCore::Fake. One thread.
#ifndef ZRCORE_ZRPLATFORMFAKE_H
#define ZRCORE_ZRPLATFORMFAKE_H

#include <ZRCore/ZRAudioFake.h>
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZRPlatform.h>
#include <ZRCore/ZRPlatformFill.h>
#include <ZRCore/ZRScreenFake.h>
#include <ZRCore/ZRServicesFake.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What was asked of several doubles, in one order.
using ZRFakeJournal = std::shared_ptr<std::vector<std::string>>;

/// A receiver in the test's hand, of a system that asks nobody for permission. It reports what it is told to, to its
/// delegate, while it is started; it writes what is asked of it into `calls`.
class ZRFakeReceiver : public CLLocationManager {
 public:
  ZRFakeReceiver();
  ~ZRFakeReceiver() override;

  void startUpdatingLocation() override;
  void stopUpdatingLocation() override;
  void startUpdatingHeading() override;
  void stopUpdatingHeading() override;
  void setActivityType(CLActivityType type) override;
  std::shared_ptr<const CLLocation> location() const override;

  /// Reports a batch. Dropped while locations are stopped.
  void deliver(const CLLocations& locations);
  /// Reports a heading. Dropped while headings are stopped.
  void deliver(const CLHeading& heading);
  /// Reports an error.
  void fail(const NSError& error);
  /// Reports that the user has decided.
  void changeAuthorization(CLAuthorizationStatus status);

  bool isUpdatingLocation() const { return updatesLocation_; }
  bool isUpdatingHeading() const { return updatesHeading_; }

  /// "startUpdatingLocation", "requestAlwaysAuthorization", "setActivityType automotiveNavigation" and so on, in order.
  std::vector<std::string> calls;
  /// The same calls among those of other doubles; null: nowhere.
  ZRFakeJournal journal;
  /// Whether `deliver` also reports while updates are stopped, as a receiver does whose last reports were on their way.
  bool deliversWhileStopped = false;

 protected:
  /// Writes a call down.
  void note(std::string call);

 private:
  template <class Callback>
  std::shared_ptr<Callback> answering() const;

  bool updatesLocation_ = false;
  bool updatesHeading_ = false;
  std::shared_ptr<const CLLocation> location_;
};

/// A fake receiver of a system that asks the user for permission.
class ZRFakeLocationManager : public ZRFakeReceiver, public CLAuthorizationRequests {
 public:
  ZRFakeLocationManager();
  ~ZRFakeLocationManager() override;
  void requestWhenInUseAuthorization() override;
  void requestAlwaysAuthorization() override;
};

/// Hands out fake receivers and remembers them, or hands out receivers of the test's own.
class ZRFakePositioning : public ZRPositioning {
 public:
  explicit ZRFakePositioning(ZRFakeJournal receiversJournal = nullptr) : journal(std::move(receiversJournal)) {}
  ~ZRFakePositioning() override;
  std::shared_ptr<CLLocationManager> makeLocationManager() override;
  CLAuthorizationStatus authorizationStatus() const override { return status; }

  CLAuthorizationStatus status = CLAuthorizationStatus::authorizedWhenInUse;
  /// Makes the receivers where it is set: a ZRFakeReceiver, for a system without permissions, or any manager.
  std::function<std::shared_ptr<CLLocationManager>()> make;
  /// The receivers made while `make` was not set.
  std::vector<std::shared_ptr<ZRFakeLocationManager>> made;
  /// Given to the receivers in `made`.
  ZRFakeJournal journal;
};

/// A bundle of the test's making.
class ZRFakeBundle : public ZRBundle {
 public:
  using Strings = std::map<std::string, std::string, std::less<>>;

  ~ZRFakeBundle() override;
  bool hasInfoValueForKey(std::string_view key) const override {
    return infoKeys.contains(key) || infoStrings.contains(key);
  }
  std::optional<std::string> infoStringForKey(std::string_view key) const override { return find(infoStrings, key); }
  std::optional<std::string> bundleIdentifier() const override { return identifier; }
  std::optional<std::string> localizedStringForKey(std::string_view key) const override {
    return find(translations, key);
  }
  std::optional<std::string> frameworkResource(std::string_view name, std::string_view type) const override {
    return find(resources, std::string(name).append(1, '.').append(type));
  }

  std::set<std::string, std::less<>> infoKeys;  ///< keys of values that are not texts
  Strings infoStrings;
  std::optional<std::string> identifier;
  Strings translations;
  Strings resources;  ///< by file name

 private:
  static std::optional<std::string> find(const Strings& strings, std::string_view key) {
    const auto found = strings.find(key);
    return found != strings.end() ? std::optional(found->second) : std::nullopt;
  }
};

/// A log that keeps its lines.
class ZRFakeLog : public ZRLog {
 public:
  explicit ZRFakeLog(ZRFakeJournal linesJournal = nullptr) : journal(std::move(linesJournal)) {}
  ~ZRFakeLog() override;
  void writeLine(std::string_view line) override;

  std::vector<std::string> lines;
  /// Gets each line as "log LINE", among the calls of other doubles; null: nowhere.
  ZRFakeJournal journal;
};

/// A clock that stands still until it is moved.
class ZRFakeClock : public ZRClock {
 public:
  ~ZRFakeClock() override;
  NSDate now() const override { return time; }
  void advance(double seconds) { time.secondsSince1970 += seconds; }

  NSDate time{1456833600.0};
};

/// All of them together, beside a notification centre of their own.
struct ZRFakePlatform {
  /// What was asked of the receivers, and the lines of the log, in one order.
  ZRFakeJournal journal = std::make_shared<std::vector<std::string>>();
  std::shared_ptr<ZRFakePositioning> positioning = std::make_shared<ZRFakePositioning>(journal);
  std::shared_ptr<ZRFakeBundle> bundle = std::make_shared<ZRFakeBundle>();
  std::shared_ptr<NSNotificationCenter> notificationCenter = std::make_shared<NSNotificationCenter>();
  std::shared_ptr<ZRFakeLog> log = std::make_shared<ZRFakeLog>(journal);
  std::shared_ptr<ZRFakeClock> clock = std::make_shared<ZRFakeClock>();
  std::shared_ptr<ZRJSONService> json = ZRMakeJSONService();  ///< a real one: it needs no system
  std::shared_ptr<ZRFakeMainQueue> mainQueue = std::make_shared<ZRFakeMainQueue>();
  std::shared_ptr<ZRFakeURLSession> httpSession = std::make_shared<ZRFakeURLSession>(mainQueue);
  std::shared_ptr<ZRFakeXML> xml = std::make_shared<ZRFakeXML>();
  std::shared_ptr<ZRFakeImages> images = std::make_shared<ZRFakeImages>();
  std::shared_ptr<ZRFakeUserDefaults> userDefaults = std::make_shared<ZRFakeUserDefaults>();
  std::shared_ptr<ZRFakeDevice> device = std::make_shared<ZRFakeDevice>();
  ZRFakeAudioCalls audioCalls = std::make_shared<std::vector<std::string>>();  ///< of the three services for sound
  std::shared_ptr<ZRFakeAudioSession> audioSession = std::make_shared<ZRFakeAudioSession>(audioCalls);
  std::shared_ptr<ZRFakeSpeech> speech = std::make_shared<ZRFakeSpeech>(audioCalls, mainQueue);
  std::shared_ptr<ZRFakeAudioPlayers> audioPlayers = std::make_shared<ZRFakeAudioPlayers>(audioCalls);
  std::shared_ptr<ZRFakeApplication> application = std::make_shared<ZRFakeApplication>();
  std::shared_ptr<ZRFakeScreen> screen = std::make_shared<ZRFakeScreen>(mainQueue);
  std::shared_ptr<ZRFakePasteboard> pasteboard = std::make_shared<ZRFakePasteboard>();
  std::shared_ptr<ZRFakeMail> mail = std::make_shared<ZRFakeMail>(mainQueue);

  /// The same services as a platform to install.
  ZRPlatform platform() const {
    return ZRPlatformOf(positioning, bundle, notificationCenter, log, clock, json, mainQueue, httpSession, xml, images,
                        userDefaults, device, audioSession, speech, audioPlayers, application, screen, pasteboard,
                        mail);
  }
};

#endif
