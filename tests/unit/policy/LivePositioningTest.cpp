// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/CLLocationManager.h>
#include <gmock/gmock.h>
#include <policy/ApplicationLife.h>
#include <policy/BackOff.h>
#include <policy/PositioningFault.h>
#include <policy/PositioningSource.h>

namespace policy {
namespace {

using testing::HasSubstr;

TEST(PositioningSourceText, EachFormIsReadAndNamedAndOthersAreRefusedWithAReason) {
  const std::pair<const char*, const char*> good[] = {
      {"auto", "auto"},
      {"gpsd", "gpsd at localhost:2947"},
      {"gpsd:maps.example", "gpsd at maps.example:2947"},
      {"gpsd:10.0.0.7:65535", "gpsd at 10.0.0.7:65535"},
      {"gpsd:[::1]", "gpsd at [::1]:2947"},
      {"gpsd:[fe80::1%eth0]:29470", "gpsd at [fe80::1%eth0]:29470"},
      {"gpsd:/run/gpsd.sock", "gpsd at /run/gpsd.sock"},
      {"geoclue", "GeoClue"},
      {"nmea:/dev/serial/by-id/usb:1", "the receiver /dev/serial/by-id/usb:1"},
      {"file:a b.gpx", "the recording a b.gpx"},
  };
  for (const auto& [text, name] : good) {
    const auto parsed = parsePositioningSource(text);
    ASSERT_TRUE(std::holds_alternative<PositioningSource>(parsed)) << text;
    EXPECT_EQ(std::get<PositioningSource>(parsed).name(), name) << text;
  }
  for (const std::string text : {"", "GPSD", "gps", "auto:", "geoclue:1", "nmea", "nmea:", "file:", "gpsd:", "gpsd::1",
                                 "gpsd:h:", "gpsd:h:0", "gpsd:h:65536", "gpsd:h:1x", "gpsd:[::1", "gpsd:[::1]2947"}) {
    const auto parsed = parsePositioningSource(text);
    ASSERT_TRUE(std::holds_alternative<std::string>(parsed)) << text;
    EXPECT_THAT(std::get<std::string>(parsed), HasSubstr("'" + text + "'"));
  }
}

TEST(BackOffRule, WaitsDoubleUpToABoundAndBeginAnewAfterSuccess) {
  BackOff backOff;
  for (const double seconds : {0.5, 1.0, 2.0, 4.0, 8.0, 16.0, 30.0, 30.0}) EXPECT_EQ(backOff.nextSeconds(), seconds);
  backOff.reset();
  EXPECT_EQ(backOff.nextSeconds(), 0.5);
}

TEST(FaultLatchRule, ClientsHearOfEachChangeForTheWorseOnce) {
  using enum PositioningFault;
  FaultLatch latch;
  EXPECT_TRUE(latch.fails(noDaemon));
  EXPECT_FALSE(latch.fails(noDaemon));
  EXPECT_TRUE(latch.fails(noDevice));
  EXPECT_FALSE(latch.fails(noFix)) << "it has no fix because it has no receiver";
  EXPECT_TRUE(latch.works());
  EXPECT_FALSE(latch.works());
  EXPECT_TRUE(latch.fails(noFix));
  EXPECT_TRUE(latch.fails(lost));
  EXPECT_FALSE(latch.fails(noDaemon)) << "what is lost is not there";
  EXPECT_TRUE(latch.fails(noDevice));
}

TEST(FaultLatchRule, AnErrorSaysWhichSourceWhatIsWrongAndWhatToDo) {
  const NSError denied = errorOf(PositioningFault::denied, "GeoClue", "not you");
  EXPECT_EQ(denied.domain, kCLErrorDomain);
  EXPECT_EQ(denied.code, 1);
  EXPECT_EQ(denied.userInfo.at(ZRPositioningFaultKey), "denied");
  EXPECT_EQ(denied.userInfo.at(ZRPositioningSourceKey), "GeoClue");
  EXPECT_THAT(denied.localizedDescription(), testing::MatchesRegex("GeoClue does not.*settings \\(not you\\)"));
  EXPECT_EQ(errorOf(PositioningFault::lost, "x", "").code, 0);
  EXPECT_THAT(errorOf(PositioningFault::noDaemon, "auto", "gpsd: none; GeoClue: none").localizedDescription(),
              testing::MatchesRegex("no source of positions answers; start .*\\(gpsd: none; GeoClue: none\\)"));
}

TEST(ApplicationLifeRule, SeveralReasonsForTheBackgroundAreOneChange) {
  using Reason = ApplicationLife::Reason;
  using Change = ApplicationLife::Change;
  ApplicationLife life;
  EXPECT_EQ(life.set(Reason::systemSleeps, false), std::nullopt);
  EXPECT_EQ(life.set(Reason::noWindow, true), Change::didEnterBackground);
  EXPECT_EQ(life.set(Reason::systemSleeps, true), std::nullopt);
  EXPECT_EQ(life.set(Reason::noWindow, false), std::nullopt);
  EXPECT_EQ(life.set(Reason::systemSleeps, false), Change::willEnterForeground);
}

TEST(WindowPresenceRule, OnlyALongAbsenceOfWindowsIsTheBackground) {
  WindowPresence windows(5.0);
  EXPECT_FALSE(windows.isAway(1000.0)) << "before there was any window, there is no background";
  windows.setWindowSeen(true, 0.0);
  EXPECT_EQ(windows.secondsUntilAway(0.0), std::nullopt);
  windows.setWindowSeen(false, 10.0);
  windows.setWindowSeen(false, 12.0);  // counts from the first
  EXPECT_EQ(windows.secondsUntilAway(12.0), 3.0);
  windows.setWindowSeen(true, 13.0);
  windows.setWindowSeen(false, 14.0);
  EXPECT_FALSE(windows.isAway(18.9));
  EXPECT_TRUE(windows.isAway(19.0));
  EXPECT_EQ(windows.secondsUntilAway(19.0), std::nullopt);
}

}  // namespace
}  // namespace policy
