// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fstream>

#include "RunTool.h"

namespace {

/// A made-up drive of so many fixes, one each second.
std::string longRecording(const ToolFolder& folder, int fixes) {
  const std::string path = folder.path("long.csv");
  std::ofstream file(path);
  file.precision(10);
  file << "time,lat,lon,accuracy,speed,course\n";
  double latitude = 45.0, longitude = 7.0;
  for (int i = 0; i < fixes; ++i) {
    latitude += i / 700 % 2 == 0 ? 1e-4 : -9e-5;
    longitude += i / 300 % 3 == 0 ? -1e-5 : 2e-5;
    file << 1700000000 + i << ',' << latitude << ',' << longitude << ",5,14," << i % 360 << '\n';
  }
  return path;
}

long peakKilobytes(int fixes) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"trip", longRecording(folder, fixes), "--quiet", "--out", folder.path("out")});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  return run.peakKilobytes;
}

TEST(TripMemory, AMillionFixesTakeNoMoreThanAHundredThousand) {
  const long some = peakKilobytes(100'000), many = peakKilobytes(1'000'000);
  RecordProperty("peakKilobytesOf100000", static_cast<int>(some));
  RecordProperty("peakKilobytesOf1000000", static_cast<int>(many));
  EXPECT_LE(static_cast<double>(many), 1.2 * static_cast<double>(some));
}

}  // namespace
