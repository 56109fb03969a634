// SPDX-License-Identifier: Apache-2.0
// A day of a receiver's reports, as fast as they are read.
#include <gtest/gtest.h>

#include <cstdio>

#include "GpsdPeer.h"

namespace {

class PositioningEndurance : public WithGpsdPeer {};

long residentKilobytes() {
  long size = 0, resident = 0;
  std::FILE* const file = std::fopen("/proc/self/statm", "r");
  if (std::fscanf(file, "%ld %ld", &size, &resident) != 2) resident = 0;
  std::fclose(file);
  return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

TEST_F(PositioningEndurance, ADayAtFullSpeedLeavesNothingBehind) {
  begin();
  greet();
  struct Counter final : ZRDidUpdateLocations {
    void locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) override {
      count += locations.size();
    }
    std::size_t count = 0;
  };
  const auto counter = std::make_shared<Counter>();
  managers[0]->setDelegate(counter);
  constexpr int kSeconds = 86400;
  long early = 0;
  std::string waiting;
  for (int second = 0; second < kSeconds || !waiting.empty();) {
    for (; waiting.size() < 60000 && second < kSeconds; ++second) waiting += report(second, "") + report(second);
    waiting.erase(0, peer.saySome(waiting));
    runWhatIsReady();
    if (early == 0 && second > kSeconds / 10) early = residentKilobytes();
  }
  runUntil([&] { return counter->count == kSeconds; });
  const long late = residentKilobytes();
  RecordProperty("kilobytesAfterATenth", static_cast<int>(early));
  RecordProperty("kilobytesAtTheEnd", static_cast<int>(late));
  EXPECT_LE(late - early, 256) << early << " kB after a tenth of the day, " << late << " kB at its end";
}

}  // namespace
