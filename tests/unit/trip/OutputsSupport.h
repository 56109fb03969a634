// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_TRIP_OUTPUTSSUPPORT_H
#define ZRCORE_TESTS_TRIP_OUTPUTSSUPPORT_H

#include <gtest/gtest.h>
#include <trip/TripRow.h>
#include <trip/sample/SampleTrip.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace trip {

inline std::string contentsOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A folder of its own for each test, gone afterwards.
class WithFolder : public testing::Test {
 protected:
  void SetUp() override {
    std::string name = testing::TempDir() + "/zr-outputs-XXXXXX";
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    folder = name;
  }
  void TearDown() override { std::filesystem::remove_all(folder); }

  /// Everything in the folder, hidden files too.
  std::set<std::string> names() const {
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) found.insert(entry.path().filename());
    return found;
  }

  std::filesystem::path folder;
};

inline TripRow rowAt(double latitude, double longitude, std::uint64_t index) {
  TripRow row;
  row.coordinate = {latitude, longitude};
  row.index = index;
  row.secondsSince1970 = 1.7e9 + static_cast<double>(index);
  row.speedMetersPerSecond = 10.0;
  row.courseDegrees = 90.0;
  row.smoothSpeedMetersPerSecond = 9.0;
  row.smoothCourseDegrees = 88.0;
  row.significant = true;
  return row;
}

/// The sample drive with the marks that the filter would give its plain parts.
inline std::vector<TripRow> markedSampleTrip() {
  std::vector<TripRow> rows = sampleTrip(kSampleSeed);
  for (TripRow& row : rows) {
    row.jump = row.speedMetersPerSecond >= 54.0;
    row.significant = row.speedMetersPerSecond >= 2.0;
    row.smoothSpeedMetersPerSecond = row.jump ? 0.0 : *row.speedMetersPerSecond;
    row.smoothCourseDegrees = *row.courseDegrees;
  }
  return rows;
}

}  // namespace trip

#endif
