// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "OutputsSupport.h"

namespace trip {
namespace {

TEST(SampleTrip, IsTheCommittedRecordingByteForByte) {
  EXPECT_TRUE(sampleTripCsv(kSampleSeed) == contentsOf(ZR_SAMPLES "/drive.csv"))
      << "samples/drive.csv is out of date: run zrcore-make-sample > samples/drive.csv";
}

TEST(SampleTrip, HoldsWhatAFilterHasToCopeWith) {
  const std::vector<TripRow> fixes = sampleTrip(kSampleSeed);
  const auto count = [&](auto property) { return std::count_if(fixes.begin(), fixes.end(), property); };
  EXPECT_EQ(fixes.front().accuracyMeters, 300.0);
  EXPECT_LT(fixes[10].accuracyMeters, 10.0);
  EXPECT_EQ(count([](const TripRow& fix) { return fix.speedMetersPerSecond >= 54.0; }), 2);
  EXPECT_GE(count([](const TripRow& fix) { return fix.speedMetersPerSecond < 1.0; }), 30);  // the red light

  std::vector<TripRow>::size_type afterTunnel = 0;
  double longest = 0.0;
  for (std::size_t i = 1; i < fixes.size(); ++i) {
    const double pause = *fixes[i].secondsSince1970 - *fixes[i - 1].secondsSince1970;
    ASSERT_GE(pause, 1.0);
    if (pause > longest) {
      longest = pause;
      afterTunnel = i;
    }
  }
  EXPECT_EQ(longest, 46.0);  // 45 fixes are missing
  EXPECT_GT(fixes[afterTunnel].accuracyMeters, 100.0);
  const double duration = *fixes.back().secondsSince1970 - *fixes.front().secondsSince1970;
  EXPECT_NEAR(duration, 720.0, 60.0);
}

TEST(SampleTrip, FollowsItsSeed) { EXPECT_NE(sampleTripCsv(1), sampleTripCsv(2)); }

}  // namespace
}  // namespace trip
