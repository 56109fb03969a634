// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatformFake.h>
#include <demo/TripSession.h>
#include <gtest/gtest.h>
#include <trip/replay/Recording.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "HandClock.h"

// Each case runs in a process of its own: the location service keeps its state as long as the process lives.

namespace demo {
namespace {

using trip::TripClients;

const std::string kDrive = ZRCORE_SAMPLES "/drive.csv";

class TripSessionTest : public testing::Test {
 protected:
  TripSessionTest() { session.useRecording(loadRecording(kDrive)); }

  void seekTo(double fraction) {
    session.seek(fraction * session.playback().durationSeconds());
    session.step();
  }
  std::uint64_t fixesOf(TripClients::Which client) const { return session.clients().fixes(client); }

  HandClock clock;
  NSNotificationCenter& notifications = *ZRPlatformInUse().notificationCenter;
  TripSession session{clock, notifications};
};

TEST_F(TripSessionTest, PlaysAsTheClockGoesAndTellsWhetherThereIsNews) {
  EXPECT_TRUE(session.step());
  EXPECT_EQ(session.track().raw().size(), 1u);  // the first fix is due at once
  EXPECT_FALSE(session.step());
  session.play();
  for (int frame = 0; frame < 100; ++frame) {
    clock.seconds += 0.1;
    session.step();
  }
  EXPECT_NEAR(static_cast<double>(session.track().raw().size()), 11.0, 1.0);
  EXPECT_EQ(fixesOf(TripClients::plain), session.track().raw().size());
  EXPECT_EQ(fixesOf(TripClients::snapped), session.track().raw().size());
  EXPECT_TRUE(session.clients().latest(TripClients::snapped));
}

TEST_F(TripSessionTest, AJumpForwardDeliversWhatLiesBetweenAndOneBackTakesTheTrackBack) {
  seekTo(1.0);
  const std::size_t all = session.recording().fixes.size();
  EXPECT_EQ(session.track().raw().size(), all);
  EXPECT_EQ(fixesOf(TripClients::plain), all);
  EXPECT_NEAR(static_cast<double>(fixesOf(TripClients::halfWay)), static_cast<double>(all) / 2, 2.0);
  const std::size_t significant = session.track().significant().size();
  EXPECT_GT(significant, 100u);

  seekTo(0.1);
  EXPECT_LT(session.track().raw().size(), all / 5);
  EXPECT_LT(session.track().significant().size(), significant / 3);
  EXPECT_EQ(fixesOf(TripClients::plain), all);  // what was delivered, was delivered
  seekTo(1.0);
  EXPECT_EQ(session.track().raw().size(), all);
  for (std::size_t i = 1; i < all; ++i) ASSERT_EQ(session.track().raw()[i].index, i);
  const auto gapsOf = [](const std::vector<TrackPoint>& track) {
    return std::ranges::count_if(track.begin() + 1, track.end(), &TrackPoint::startsStroke);
  };
  EXPECT_EQ(gapsOf(session.track().raw()), 1) << "the tunnel";
  EXPECT_EQ(gapsOf(session.track().smoothed()), 1);
  seekTo(0.42);  // inside it
  seekTo(0.35);
  seekTo(1.0);
  EXPECT_EQ(gapsOf(session.track().raw()), 1);
}

/// A walk to the north at 3 m/s: every third fix is significant, counted from wherever the filter began.
LoadedRecording walk() {
  LoadedRecording walk;
  for (int second = 0; second < 200; ++second) {
    walk.fixes.push_back({.coordinate = {46.0 + 2.7e-5 * second, 7.0}, .horizontalAccuracy = 5.0, .speed = 3.0});
    walk.timeline.add(second);
  }
  return walk;
}

TEST_F(TripSessionTest, ATripIsFilteredAloneWhateverWasPlayedBefore) {
  const auto outcome = [this] {
    std::vector<double> numbers{session.latest()->smoothCourseDegrees, session.latest()->smoothSpeedMetersPerSecond};
    for (const TrackPoint& point : session.track().significant()) numbers.push_back(static_cast<double>(point.index));
    return numbers;
  };
  session.useRecording(walk());
  seekTo(1.0);
  const auto alone = outcome();
  EXPECT_EQ(alone.size(), 2u + 66u);
  EXPECT_EQ(alone[2], 3.0) << "the first fix begins the trip and is no movement";

  seekTo(0.3);
  session.useLastRecording();
  seekTo(1.0);
  EXPECT_EQ(outcome(), alone) << "after another trip";
  for (const double fraction : {0.61, 0.3, 0.45, 0.0}) {
    seekTo(fraction);
    seekTo(1.0);
    EXPECT_EQ(outcome(), alone) << "after a jump back to " << fraction;
  }
}

TEST_F(TripSessionTest, TheFilterWorksOnMeasuredValuesUnlessItIsToldOtherwise) {
  seekTo(1.0);
  EXPECT_EQ(session.track().jumps().size(), 2u);
  session.setFiltersMeasuredValues(false);
  session.useRecording(loadRecording(kDrive));
  seekTo(1.0);
  EXPECT_TRUE(session.track().jumps().empty());
}

TEST_F(TripSessionTest, InTheBackgroundFixesAreLostUnlessTheServiceMayGoOnThere) {
  seekTo(0.1);
  session.setInBackground(true);
  EXPECT_FALSE(session.receiverRuns());
  seekTo(0.2);
  const std::size_t before = session.track().raw().size();
  EXPECT_LT(before, session.recording().fixes.size() / 5);
  session.setInBackground(false);
  EXPECT_TRUE(session.receiverRuns());
  seekTo(0.3);
  ASSERT_GT(session.track().raw().size(), before);
  EXPECT_TRUE(session.track().raw()[before].startsStroke);  // no line over what was lost

  CLLocationManager_ZR::setShouldUpdateInBackground(true);
  const std::size_t heard = session.track().raw().size();
  session.setInBackground(true);
  seekTo(0.4);
  EXPECT_GT(session.track().raw().size(), heard);
}

TEST_F(TripSessionTest, TheReceiverRunsAsLongAsAnyClientListens) {
  seekTo(0.1);
  session.clients().setListening(TripClients::plain, false);
  seekTo(0.15);
  EXPECT_TRUE(session.receiverRuns());
  session.clients().setListening(TripClients::snapped, false);
  EXPECT_FALSE(session.receiverRuns());
  EXPECT_GT(fixesOf(TripClients::snapped), fixesOf(TripClients::plain));
  seekTo(0.3);  // the half-way client starts it again
  EXPECT_TRUE(session.receiverRuns());
  EXPECT_GT(fixesOf(TripClients::halfWay), 0u);
}

TEST_F(TripSessionTest, AReceiverTakesTheRecordingsPlaceAndGivesItBack) {
  seekTo(0.1);
  const auto receiver = std::make_shared<ZRFakeLocationManager>();
  session.useReceiver(receiver, "Receiver");
  EXPECT_TRUE(receiver->isUpdatingLocation());
  EXPECT_TRUE(session.track().raw().empty());
  receiver->deliver(CLLocations{CLLocation::initWithFix({.coordinate = {46.0, 7.0}}),
                                CLLocation::initWithFix({.coordinate = {46.1, 7.0}})});
  EXPECT_TRUE(session.step());
  EXPECT_EQ(session.track().raw().size(), 2u);
  EXPECT_EQ(fixesOf(TripClients::plain), 2u);
  EXPECT_EQ(fixesOf(TripClients::snapped), 1u);

  receiver->fail({"test", 1, {{NSLocalizedDescriptionKey, "no sky"}}});
  EXPECT_EQ(session.failure(), "no sky");
  receiver->deliver(CLLocations{CLLocation::initWithFix({.coordinate = {46.2, 7.0}})});
  EXPECT_EQ(session.failure(), "");

  session.useLastRecording();
  EXPECT_FALSE(receiver->isUpdatingLocation());
  seekTo(0.1);
  EXPECT_GT(session.track().raw().size(), 50u);
}

TEST(LoadRecording, SaysWhyAFileIsNoTripAndCountsWhatIsDamaged) {
  const auto folder = std::filesystem::path(testing::TempDir()) / "zrcore-demo-recordings";
  std::filesystem::create_directories(folder);
  const auto write = [&folder](const std::string& name, const std::string& text) {
    std::ofstream(folder / name) << text;
    return (folder / name).string();
  };
  for (const std::string& path : {folder.string(), (folder / "absent.gpx").string(), write("empty.csv", ""),
                                  write("text.csv", "hello\n"), write("header.csv", "time,lat,lon\n")}) {
    EXPECT_THROW(loadRecording(path), trip::RecordingError) << path;
  }
  const LoadedRecording damaged =
      loadRecording(write("damaged.csv", "time,lat,lon\n1,46,7\n2,946,7\nx,46,7\n61,46.001,7\n"));
  EXPECT_EQ(damaged.faults, 2u);
  EXPECT_NE(damaged.summary().find("3 fixes · 1 min 01 s · 2 faults"), std::string::npos) << damaged.summary();
  EXPECT_EQ(damaged.fixes.size(), damaged.timeline.size());
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace demo
