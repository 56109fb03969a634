// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <readers/FixReader.h>
#include <trip/outputs/GpxJournal.h>

namespace trip {
namespace {

/// What the project's own reader finds in a file.
struct Found final : readers::Listener {
  void fix(const readers::SourceFix& fix) override { fixes.push_back(fix); }
  void remark(const readers::Remark& remark) override { remarks.push_back(remark.text); }
  std::vector<readers::SourceFix> fixes;
  std::vector<std::string> remarks;
};

Found read(const std::string& file) {
  Found found;
  const auto reader = readers::makeReader(readers::Format::gpx);
  reader->feed(file, found);
  reader->finish(found);
  return found;
}

TripRow recordedRow(int index) {
  TripRow row;
  row.coordinate = {52.5 + index / 7.0e6, -13.0 - index / 3.0e6};
  row.secondsSince1970 = 1778319000.0 + index / 4.0;
  if (index % 2 == 0) row.altitudeMeters = -4.5;
  if (index % 3 == 0) row.accuracyMeters = 4.75;
  if (index % 5 == 0) row.speedMetersPerSecond = 13.25;
  if (index % 7 == 0) row.courseDegrees = 359.5;
  return row;
}

TEST(GpxJournal, TheFileIsWholeAfterEachWriteAndAfterEachPartThatASystemMayStopAt) {
  GpxJournal journal;
  std::string file = journal.begin();
  std::size_t pagesFilled = 0;
  for (int index = 0; index < 200; ++index) {
    for (const auto& write : journal.append(recordedRow(index))) {
      const auto page = [](std::uint64_t offset) { return offset / GpxJournal::kPageBytes; };
      ASSERT_EQ(page(write.offset), page(write.offset + write.bytes.size() - 1)) << "a write crosses a page's end";
      ASSERT_LE(write.offset, file.size()) << "a hole";
      pagesFilled += write.offset % GpxJournal::kPageBytes == 0 ? 1 : 0;
      file.replace(write.offset, std::min<std::size_t>(write.bytes.size(), file.size() - write.offset), write.bytes);
      const Found found = read(file);
      ASSERT_TRUE(found.remarks.empty()) << found.remarks.front();
      ASSERT_GE(found.fixes.size(), static_cast<std::size_t>(index));
    }
  }
  EXPECT_GE(pagesFilled, 5u);

  const Found found = read(file);
  ASSERT_EQ(found.fixes.size(), 200u);
  for (int index = 0; index < 200; ++index) {
    const auto& fix = found.fixes[static_cast<std::size_t>(index)];
    const TripRow row = recordedRow(index);
    EXPECT_EQ(fix.coordinate.latitude, row.coordinate.latitude);
    EXPECT_EQ(fix.coordinate.longitude, row.coordinate.longitude);
    EXPECT_EQ(fix.secondsSince1970, row.secondsSince1970);
    EXPECT_EQ(fix.altitudeMeters, row.altitudeMeters);
    EXPECT_EQ(fix.accuracyMeters, row.accuracyMeters);
    EXPECT_EQ(fix.speedMetersPerSecond, row.speedMetersPerSecond);
    EXPECT_EQ(fix.courseDegrees, row.courseDegrees);
  }
}

}  // namespace
}  // namespace trip
