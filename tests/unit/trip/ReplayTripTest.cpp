// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <trip/outputs/FileOutput.h>
#include <trip/replay/ManagerPipeline.h>
#include <trip/replay/TripReplay.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace trip {
namespace {

using testing::ElementsAre;

/// What a receiver without any location service behind it would show.
class PassThroughPipeline final : public TripPipeline {
 public:
  explicit PassThroughPipeline(const ZRClock& clock) : clock_(clock) {}

  std::optional<TripRow> deliver(const ZRPositionFix& fix) override {
    clockAtDelivery.push_back(clock_.now().secondsSince1970);
    ++delivered;
    deliveredHalfWay += halfWay;
    TripRow row;
    row.secondsSince1970 = fix.timestamp.secondsSince1970;
    row.coordinate = fix.coordinate;
    if (fix.verticalAccuracy >= 0.0) row.altitudeMeters = fix.altitude;
    row.accuracyMeters = fix.horizontalAccuracy;
    row.speedMetersPerSecond = fix.speed;
    row.courseDegrees = fix.course;
    row.smoothSpeedMetersPerSecond = fix.speed;
    row.smoothCourseDegrees = fix.course;
    return row;
  }
  void letHalfWayClientListen(bool listens) override { halfWay = listens; }
  std::map<std::string, std::uint64_t> deliveredByClient() const override { return {}; }

  std::vector<double> clockAtDelivery;
  std::uint64_t delivered = 0, deliveredHalfWay = 0;
  bool halfWay = false;

 private:
  const ZRClock& clock_;
};

class Listener final : public ReplayListener {
 public:
  void row(const TripRow& row) override {
    rows.push_back(row);
    if (output) output->row(row);
  }
  void remark(const readers::Remark&) override {}
  void progress(std::optional<double> fraction) override { lastFraction = fraction; }
  bool wantsToStop() const override { return rows.size() >= stopAfter; }

  std::vector<TripRow> rows;
  TripOutput* output = nullptr;
  std::optional<double> lastFraction;
  std::size_t stopAfter = SIZE_MAX;
};

class NoWaiting final : public Waiter {
 public:
  double nowSeconds() override { return 0.0; }
  void wait(double) override {}
};

class Replay : public testing::Test {
 protected:
  TripSummary replay(const std::string& path, TripPipeline& pipeline) {
    Recording recording(path, [] { return false; });
    NoWaiting waiter;
    Pacer pacer(std::nullopt, waiter);
    TripReplay replay(options, recording, pipeline, pacer, clock, listener);
    replay.run();
    return replay.summary();
  }

  /// A table of fixes, one each second from second 1000 on, due east.
  std::string recordingOf(int fixes) {
    const std::string path = (folder / "fixes.csv").string();
    std::ofstream file(path);
    file << "time,lat,lon\n";
    for (int i = 0; i < fixes; ++i) file << 1000 + i << ",0," << 7.0 + i * 0.001 << '\n';
    return path;
  }

  static std::filesystem::path madeFolder() {
    std::string name = testing::TempDir() + "replayXXXXXX";
    return ::mkdtemp(name.data());
  }
  void TearDown() override { std::filesystem::remove_all(folder); }

  const std::filesystem::path folder = madeFolder();
  TripReplay::Options options;
  RecordingClock clock;
  Listener listener;
};

std::string textOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST_F(Replay, TheRealServiceShowsInTheRows) {
  const std::string drive = ZRCORE_SAMPLES "/drive.csv";
  const auto table = [&](TripPipeline& pipeline, const char* name) {
    const auto output = makeCsvOutput(folder / name, false);
    listener = {};
    listener.output = output.get();
    output->finish(replay(drive, pipeline));
    output->commit();
    return textOf(folder / name);
  };
  ManagerPipeline real({.filtersMeasuredValues = true, .route = {}});
  const std::string filtered = table(real, "real.csv");
  const std::vector<TripRow> rows = listener.rows;
  PassThroughPipeline passThrough(clock);
  EXPECT_NE(filtered, table(passThrough, "pass.csv"));

  ASSERT_EQ(rows.size(), listener.rows.size());
  std::size_t smoothed = 0, jumps = 0, stable = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].speedMetersPerSecond, listener.rows[i].speedMetersPerSecond);  // what was measured stays
    smoothed += rows[i].smoothSpeedMetersPerSecond != listener.rows[i].smoothSpeedMetersPerSecond;
    jumps += rows[i].jump;
    stable += rows[i].stable;
  }
  EXPECT_GT(smoothed, rows.size() / 2);
  EXPECT_GT(jumps, 0u);
  EXPECT_GT(stable, rows.size() / 2);
}

TEST_F(Replay, TheClockShowsTheTimeOfTheFixThatIsDelivered) {
  PassThroughPipeline pipeline(clock);
  replay(recordingOf(3), pipeline);
  EXPECT_THAT(pipeline.clockAtDelivery, ElementsAre(1000.0, 1001.0, 1002.0));
}

TEST_F(Replay, RowsAreNumberedWithinTheReplayAndKeepTheirLine) {
  PassThroughPipeline pipeline(clock);
  options.window = TimeWindow(parseTimeBound("+2"), parseTimeBound("+3"));
  const TripSummary summary = replay(recordingOf(10), pipeline);
  ASSERT_EQ(listener.rows.size(), 2u);
  EXPECT_EQ(listener.rows[0].index, 0u);
  EXPECT_EQ(listener.rows[0].line, 4u);
  EXPECT_EQ(summary.fixes, 2u);
  EXPECT_EQ(summary.firstSecondsSince1970, 1002.0);
  EXPECT_EQ(summary.lastSecondsSince1970, 1003.0);
  EXPECT_NEAR(summary.distanceMeters, 111.3, 0.1);
  EXPECT_EQ(listener.lastFraction, 1.0);
}

TEST_F(Replay, AReversedWindowIsRefusedBeforeAnythingIsDelivered) {
  PassThroughPipeline pipeline(clock);
  options.window = TimeWindow(parseTimeBound("+9"), parseTimeBound("+3"));
  EXPECT_THROW(replay(recordingOf(10), pipeline), ReversedWindow);
  EXPECT_EQ(pipeline.delivered, 0u);
}

TEST_F(Replay, TheHalfWayClientListensFromOneQuarterToThreeQuartersOfAFile) {
  PassThroughPipeline pipeline(clock);
  replay(recordingOf(1000), pipeline);
  EXPECT_NEAR(static_cast<double>(pipeline.deliveredHalfWay), 500.0, 10.0);
  EXPECT_FALSE(pipeline.halfWay);
}

TEST_F(Replay, StoppingDropsTheRestAndKeepsWhatWasReplayed) {
  PassThroughPipeline pipeline(clock);
  listener.stopAfter = 3;
  EXPECT_EQ(replay(recordingOf(1000), pipeline).fixes, 3u);
}

}  // namespace
}  // namespace trip
