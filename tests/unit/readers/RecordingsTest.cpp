// SPDX-License-Identifier: Apache-2.0
#include <fstream>
#include <sstream>

#include "ReadInput.h"

namespace readers {
namespace {

struct Recording {
  const char* name;
  const char* file;
  Format format;
  std::size_t fixes;
  std::size_t timedFixes;
  std::size_t warnings;
};

class Recordings : public testing::TestWithParam<Recording> {};

TEST_P(Recordings, ReadWithoutFaults) {
  const Recording& recording = GetParam();
  std::ifstream file(std::string(ZRCORE_SHARED_SAMPLES "/") + recording.file, std::ios::binary);
  if (!file) GTEST_SKIP() << "no " << ZRCORE_SHARED_SAMPLES << " on this machine";
  std::stringstream content;
  content << file.rdbuf();
  const std::string input = content.str();

  EXPECT_EQ(detectFormat(std::string_view(input).substr(0, 8192)), recording.format);
  const auto events = readInput(recording.format, input);
  EXPECT_EQ(events.fixes.size(), recording.fixes);
  EXPECT_TRUE(events.faults.empty());
  EXPECT_EQ(events.warnings.size(), recording.warnings);
  std::size_t timedFixes = 0;
  for (const auto& fix : events.fixes) timedFixes += fix.secondsSince1970 ? 1 : 0;
  EXPECT_EQ(timedFixes, recording.timedFixes);
}

INSTANTIATE_TEST_SUITE_P(
    , Recordings,
    testing::Values(Recording{"CarGpx", "around-visnjan-with-car.gpx", Format::gpx, 104, 104, 0},
                    Recording{"PinePhone", "pinephone-quectel-eg25-g.log", Format::nmea, 23, 23, 0},
                    Recording{"Haicom", "haicom-305N-walk.log", Format::nmea, 68, 68, 0},
                    // Reports between the receiver's sentences, which tell of two instants more. Two
                    // recordings were joined, the later one first.
                    Recording{"Gpsd", "gpsd-json-bt451.log.chk", Format::gpsdJson, 15, 15, 1}),
    [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace readers
