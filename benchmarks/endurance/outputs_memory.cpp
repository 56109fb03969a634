// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <trip/drawing/TripPicture.h>
#include <trip/outputs/Outputs.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <new>

namespace {
std::int64_t liveBytes = 0;
constexpr std::size_t kHeader = alignof(std::max_align_t);  // in front of each block: its size
}  // namespace

void* operator new(std::size_t size) {
  void* const block = std::malloc(size + kHeader);
  if (block == nullptr) throw std::bad_alloc();
  *static_cast<std::size_t*>(block) = size;
  liveBytes += static_cast<std::int64_t>(size);
  return static_cast<char*>(block) + kHeader;
}
void operator delete(void* memory) noexcept {
  if (memory == nullptr) return;
  void* const block = static_cast<char*>(memory) - kHeader;
  liveBytes -= static_cast<std::int64_t>(*static_cast<std::size_t*>(block));
  std::free(block);
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace trip {
namespace {

/// A track that never becomes simple, with everything marked now and then.
TripRow restlessRow(std::uint64_t i) {
  const double t = static_cast<double>(i);
  TripRow row;
  row.index = i;
  row.secondsSince1970 = 1.7e9 + t + (i % 1000 == 0 ? 60.0 : 0.0);
  row.coordinate = {47.0 + 0.3 * std::sin(t * 1e-3) + 0.01 * std::sin(t * 1.3), 8.0 + 0.4 * std::cos(t * 7e-4)};
  row.speedMetersPerSecond = 20.0 + 10.0 * std::sin(t * 0.7);
  row.courseDegrees = std::fmod(t * 0.37, 360.0);
  row.smoothCourseDegrees = row.courseDegrees.value();
  row.significant = i % 10 == 0;
  row.jump = i % 99 == 0;
  return row;
}

TEST(Memory, OfAllOutputsDoesNotGrowWithTheTrip) {
  std::string folder = testing::TempDir() + "/zr-memory-XXXXXX";
  ASSERT_NE(mkdtemp(folder.data()), nullptr);
  {
    const auto outputs = makeOutputs(folder, false);
    TripPicture picture;
    const auto feed = [&](std::uint64_t from, std::uint64_t to) {
      for (std::uint64_t i = from; i < to; ++i) {
        const TripRow row = restlessRow(i);
        outputs->row(row);
        picture.add(row);
      }
      return liveBytes;
    };
    const auto atHundredThousand = feed(0, 100'000);
    EXPECT_GT(picture.retainedPoints(), 1000u);  // it does show detail
    const auto atAMillion = feed(100'000, 1'000'000);
    EXPECT_LE(atAMillion, atHundredThousand + atHundredThousand / 10);
    EXPECT_LE(picture.retainedPoints(), 21'000u);
    outputs->finish({});
  }
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace trip
