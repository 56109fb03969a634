// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLinuxPlatform.h>
#include <ZRCore/ZRPlatformFill.h>
#include <policy/ApplicationLife.h>

#include <memory>

#include "bus/SystemBus.h"
#include "life/TerminalStops.h"
#include "loop/GLibLoop.h"

namespace {

using policy::ApplicationLife;

double nowSeconds() { return static_cast<double>(g_get_monotonic_time()) * 1e-6; }

class LinuxLife final : public ZRLifeFollowing {
 public:
  explicit LinuxLife(const ZRLinuxLife& life) : loop_(life.mainContext), windows_(life.windowPatienceSeconds) {
    if (life.followsTerminal) {
      stops_ = std::make_unique<TerminalStops>(
          loop_, [this] { set(ApplicationLife::Reason::terminalStopped, true); },
          [this] { set(ApplicationLife::Reason::terminalStopped, false); });
    }
    if (life.followsSleep) followSleep();
  }

  void setWindowSeen(bool isSeen) override {
    windows_.setWindowSeen(isSeen, nowSeconds());
    judgeWindows();
  }

 private:
  void judgeWindows() {
    const double now = nowSeconds();
    const auto seconds = windows_.secondsUntilAway(now);
    untilAway_ = seconds ? loop_.after(*seconds, [this] { judgeWindows(); }) : nullptr;
    set(ApplicationLife::Reason::noWindow, windows_.isAway(now));  // last: who hears of it may end the following
  }

  void followSleep() {
    bus_ = std::make_unique<SystemBus>(loop_.context(), "");
    const auto opened = [this](const std::string& failure) {
      if (!failure.empty()) return;  // a machine without logind does not report its sleep
      bus_->subscribe("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                      "PrepareForSleep", [this](GVariant* parameters) {
                        gboolean sleeps = FALSE;
                        if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(b)"))) return;
                        g_variant_get(parameters, "(b)", &sleeps);
                        set(ApplicationLife::Reason::systemSleeps, sleeps != FALSE);
                      });
    };
    bus_->open(opened, [] {});
  }

  void set(ApplicationLife::Reason reason, bool holds) {
    const auto change = life_.set(reason, holds);
    if (!change) return;
    ZRPlatformInUse().notificationCenter->postNotificationName(*change == ApplicationLife::Change::didEnterBackground
                                                                   ? UIApplicationDidEnterBackgroundNotification
                                                                   : UIApplicationWillEnterForegroundNotification);
  }

  GLibLoop loop_;
  ApplicationLife life_;
  policy::WindowPresence windows_;
  std::unique_ptr<Loop::Wait> untilAway_;
  std::unique_ptr<TerminalStops> stops_;
  std::unique_ptr<SystemBus> bus_;
};

}  // namespace

ZRLifeFollowing::~ZRLifeFollowing() = default;

std::shared_ptr<ZRLifeFollowing> ZRFollowLinuxLife(const ZRLinuxLife& life) {
  return std::make_shared<LinuxLife>(ZRReadOptions(life, &ZRLinuxLife::mainContext, &ZRLinuxLife::followsTerminal,
                                                   &ZRLinuxLife::followsSleep, &ZRLinuxLife::windowPatienceSeconds));
}
