// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLinuxPlatform.h>
#include <gmock/gmock.h>
#include <sys/wait.h>

#include "LivePositioning.h"
#include "PrivateBus.h"
#include "StreamPeer.h"

namespace {

constexpr const char* kGreetingAndFix =
    "{\"class\":\"VERSION\",\"release\":\"3.22\"}\n{\"class\":\"DEVICES\",\"devices\":[{\"path\":\"x\"}]}\n"
    "{\"class\":\"TPV\",\"mode\":3,\"time\":\"2026-05-09T09:00:00Z\",\"lat\":52.5,\"lon\":13.4}\n";

class Life : public LivePositioning {
 protected:
  StreamPeer peer{*loop, folder.at("gpsd")};
};

TEST_F(Life, TheSystemsSleepGivesTheReceiverFreeAndItsWakingTakesItAgain) {
  if (!PrivateBus::isInstalled()) GTEST_SKIP() << "dbus-daemon is not installed";
  const PrivateBus bus(folder);
  ::setenv("DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str(), 1);
  GDBusConnection* logind = nullptr;
  std::unique_ptr<Loop::Wait> again;
  runUntil([&] {
    again = loop->after(0.02, [] {});
    return (logind = bus.connect()) != nullptr;
  });
  GVariant* const owned = g_dbus_connection_call_sync(
      logind, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
      g_variant_new("(su)", "org.freedesktop.login1", 0u), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
  ASSERT_NE(owned, nullptr);
  g_variant_unref(owned);
  const auto tellSleep = [&](gboolean sleeps) {
    g_dbus_connection_emit_signal(logind, nullptr, "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                  "PrepareForSleep", g_variant_new("(b)", sleeps), nullptr);
  };

  install({.source = "gpsd:" + folder.at("gpsd")});
  ZRLinuxLife life;
  life.mainContext = context;
  life.followsTerminal = false;
  auto following = ZRFollowLinuxLife(life);
  const auto client = startClient();
  runUntil([&] { return peer.connections == 1; });
  // When it hears the signals, nobody tells: they are repeated until it does.
  runUntil([&] {
    tellSleep(TRUE);
    again = loop->after(0.02, [] {});
    return peer.isLeft();
  });
  tellSleep(FALSE);
  runUntil([&] { return peer.connections == 2; });
  peer.say(kGreetingAndFix);
  runUntil([&] { return fixesOf(*client) == 1; });

  CLLocationManager_ZR::setShouldUpdateInBackground(true);
  tellSleep(TRUE);
  tellSleep(FALSE);
  runWhatIsReady();
  EXPECT_EQ(peer.connections, 2);
  EXPECT_FALSE(peer.isLeft());

  following.reset();
  stopClients();
  bool isDrained = false;
  again = loop->after(0.05, [&] { isDrained = true; });
  runUntil([&] { return isDrained; });
  g_object_unref(logind);
}

TEST_F(Life, WindowsThatStayUnseenAreTheBackgroundUntilOneIsSeen) {
  install({.source = "gpsd:" + folder.at("gpsd")});
  ZRLinuxLife life;
  life.mainContext = context;
  life.followsTerminal = life.followsSleep = false;
  life.windowPatienceSeconds = 0.01;
  const auto following = ZRFollowLinuxLife(life);
  std::vector<std::string> posted;
  for (const char* name : {UIApplicationDidEnterBackgroundNotification, UIApplicationWillEnterForegroundNotification}) {
    ZRPlatformInUse().notificationCenter->addObserver(following, name,
                                                      [&](const std::string& post) { posted.push_back(post); });
  }
  following->setWindowSeen(true);
  following->setWindowSeen(false);
  following->setWindowSeen(true);  // one opened as the other closed
  following->setWindowSeen(false);
  EXPECT_TRUE(posted.empty());
  runUntil([&] { return !posted.empty(); });
  following->setWindowSeen(false);
  following->setWindowSeen(true);
  EXPECT_THAT(posted, testing::ElementsAre(UIApplicationDidEnterBackgroundNotification,
                                           UIApplicationWillEnterForegroundNotification));
}

TEST_F(Life, AStopThatIsContinuedAtOnceOrThatEndsTheFollowingStopsNothing) {
  install({.source = "gpsd:" + folder.at("gpsd")});
  ZRLinuxLife life;
  life.mainContext = context;
  life.followsSleep = false;
  auto following = ZRFollowLinuxLife(life);
  ::raise(SIGTSTP);
  ::raise(SIGCONT);
  EXPECT_FALSE(wakeUps().second) << "the stop is still to come";

  ZRPlatformInUse().notificationCenter->addObserver(following, UIApplicationDidEnterBackgroundNotification,
                                                    [&](const std::string&) { following.reset(); });
  ::raise(SIGTSTP);
  EXPECT_FALSE(wakeUps().second);
  EXPECT_EQ(following, nullptr);
}

TEST_F(Life, AStopKeyGivesTheReceiverFreeBeforeTheToolStopsAndContinuingTakesItAgain) {
  pid_t tool = ::fork();
  if (tool == 0) {
    const std::string source = "gpsd:" + folder.at("gpsd");
    ::execl(ZRCORE_TOOL, ZRCORE_TOOL, "watch", source.c_str(), "--quiet", nullptr);
    ::_exit(127);
  }
  runUntil([&] { return peer.connections == 1; });
  peer.say(kGreetingAndFix);
  ::kill(tool, SIGTSTP);
  int status = 0;
  ASSERT_EQ(::waitpid(tool, &status, WUNTRACED), tool);
  EXPECT_TRUE(WIFSTOPPED(status));
  EXPECT_TRUE(peer.isLeft());
  ::kill(tool, SIGCONT);
  runUntil([&] { return peer.connections == 2; });
  ::kill(tool, SIGINT);
  ASSERT_EQ(::waitpid(tool, &status, 0), tool);
  EXPECT_EQ(WEXITSTATUS(status), 128 + SIGINT);
}

}  // namespace
