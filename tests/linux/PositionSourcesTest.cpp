// SPDX-License-Identifier: Apache-2.0
// Sources of positions on a loop whose time stands still: when a recording's fixes are told, and a device that fails.
#include <fcntl.h>
#include <gmock/gmock.h>

#include <cerrno>
#include <cstring>
#include <fstream>

#include "ManualLoop.h"
#include "TemporaryFolder.h"
#include "positioning/FileSource.h"
#include "positioning/StreamSource.h"

using testing::ElementsAre;

namespace {

struct Told final : PositionSourceListener {
  void sourceFixes(const std::vector<ZRPositionFix>& some) override { fixes += some.size(); }
  void sourceFails(policy::PositioningFault fault, const std::string& detail) override {
    faults.push_back(fault);
    lastDetail = detail;
  }
  std::size_t fixes = 0;
  std::vector<policy::PositioningFault> faults;
  std::string lastDetail;
};

class PositionSources : public testing::Test {
 protected:
  std::shared_ptr<ZRFakeClock> clock = std::make_shared<ZRFakeClock>();
  ManualLoop loop{clock};
  Told told;
};

TEST_F(PositionSources, ARecordingIsToldAtThePaceAtWhichItWasRecorded) {
  const TemporaryFolder folder;
  std::ofstream(folder.at("drive.csv")) << "time,lat,lon\n1778319000,52.5,13.4\n1778319002.5,52.5,13.5\n,52.5,13.6\n"
                                           "1778319004,52.5,13.7\n";
  const auto source =
      std::make_shared<FileSource>(loop, folder.at("drive.csv"), [this] { return clock->now().secondsSince1970; });
  source->start(told);
  const std::pair<double, std::size_t> rows[] = {{0.0, 1}, {2.4, 1}, {0.2, 3}, {1.3, 3}, {0.2, 4}};
  for (const auto& [seconds, fixes] : rows) {
    loop.advance(seconds);
    EXPECT_EQ(told.fixes, fixes) << "after " << seconds << " s more";
  }
  EXPECT_THAT(told.faults, ElementsAre(policy::PositioningFault::lost)) << "it is over";
}

TEST_F(PositionSources, ADeviceThatCannotBeReadAnyMoreIsLostAndLookedForAgain) {
  struct OpensAFolder final : Connector {
    void connect(Done done) override { done(FileDescriptor(::open("/", O_RDONLY | O_CLOEXEC)), ""); }
  };
  const auto source = std::make_shared<StreamSource>(loop, std::make_unique<OpensAFolder>(), StreamSource::Options{});
  source->start(told);
  EXPECT_TRUE(loop.runUntil([this] { return !told.faults.empty(); }));
  EXPECT_EQ(told.faults[0], policy::PositioningFault::lost);
  EXPECT_EQ(told.lastDetail, std::strerror(EISDIR));
  source->stop();
}

}  // namespace
