// SPDX-License-Identifier: Apache-2.0
/// @file
/// Live positions in a test: a loop with a deadline, the real location manager, and peers that the test leads by the
/// hand.
#ifndef ZRCORE_TESTS_SUPPORT_LIVEPOSITIONING_H
#define ZRCORE_TESTS_SUPPORT_LIVEPOSITIONING_H

#include <ZRCore/ZRLocationManager.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "LocationSupport.h"
#include "TemporaryFolder.h"
#include "loop/GLibLoop.h"
#include "positioning/LinuxPositioning.h"

/// Clients of the real location manager, whose receiver is the Linux one, on a loop of the test's own.
class LivePositioning : public testing::Test {
 protected:
  ~LivePositioning() override { g_main_context_unref(context); }

  /// Installs the platform. `options` but for its loop, log and clock.
  void install(PositioningOptions options) {
    options.log = [this](const std::string& line) { log.push_back(line); };
    options.now = [] { return NSDate{1000.0}; };
    ZRPlatform platform;
    platform.positioning = makeLinuxPositioning(loop, std::move(options));
    platform.bundle = std::make_shared<DescribingBundle>();
    ASSERT_TRUE(ZRPlatformInstall(platform));
  }

  /// A client with a manager of its own, started.
  std::shared_ptr<Client> startClient() {
    const auto client = std::make_shared<Client>();
    managers.push_back(ZRLocationManager::init());
    managers.back()->setDelegate(client);
    managers.back()->startUpdatingLocation();
    return client;
  }

  void stopClients() {
    for (const auto& manager : managers) manager->stopUpdatingLocation();
  }

  /// Iterates the loop until something holds. A failure of the test when that takes too long.
  void runUntil(const std::function<bool()>& holds, double seconds = 30) {
    bool isLate = false;
    const auto deadline = loop->after(seconds, [&] { isLate = true; });
    while (!holds() && !isLate) g_main_context_iteration(context, TRUE);
    EXPECT_FALSE(isLate) << "waited for in vain; the log's last line: " << (log.empty() ? "" : log.back());
  }

  /// Iterates until nothing is left to do at once.
  void runWhatIsReady() {
    while (g_main_context_iteration(context, FALSE)) {
    }
  }

  /// What would wake the loop: descriptors beside its own wake-up, and timers.
  std::pair<int, bool> wakeUps() {
    runWhatIsReady();
    if (!g_main_context_acquire(context)) return {-1, false};
    int priority = 0, timeout = -1;
    g_main_context_prepare(context, &priority);
    std::vector<GPollFD> descriptors(64);
    const int count = g_main_context_query(context, G_MAXINT, &timeout, descriptors.data(), 64);
    g_main_context_release(context);
    return {count - 1, timeout >= 0};
  }

  static std::vector<std::string> faultsOf(const Client& client) {
    std::vector<std::string> faults;
    for (const auto& error : client.errors) faults.push_back(error.userInfo.at(ZRPositioningFaultKey));
    return faults;
  }

  static std::size_t fixesOf(const Client& client) {
    std::size_t count = 0;
    for (const auto& batch : client.batches) count += batch.size();
    return count;
  }

  GMainContext* context = g_main_context_new();
  std::shared_ptr<GLibLoop> loop = std::make_shared<GLibLoop>(context);
  std::vector<std::string> log;
  std::vector<std::shared_ptr<ZRLocationManager>> managers;
  TemporaryFolder folder;

 private:
  class DescribingBundle final : public ZRBundle {
   public:
    bool hasInfoValueForKey(std::string_view key) const override {
      return key == "NSLocationWhenInUseUsageDescription";
    }
    std::optional<std::string> infoStringForKey(std::string_view) const override { return std::nullopt; }
    std::optional<std::string> bundleIdentifier() const override { return std::nullopt; }
    std::optional<std::string> localizedStringForKey(std::string_view) const override { return std::nullopt; }
    std::optional<std::string> frameworkResource(std::string_view, std::string_view) const override {
      return std::nullopt;
    }
  };
};

#endif
