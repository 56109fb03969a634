// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <packed/MaybeGzip.h>

#include "Gzip.h"

namespace packed {
namespace {

struct Fed {
  bool isGood = true, isWhole = false;
  std::string bytes;
};

Fed fed(std::string_view file, std::size_t piece) {
  MaybeGzip unpacking;
  Fed result;
  for (; !file.empty() && result.isGood; file.remove_prefix(std::min(piece, file.size()))) {
    result.isGood = unpacking.feed(file.substr(0, piece), result.bytes);
  }
  result.isWhole = unpacking.isWhole();
  return result;
}

TEST(MaybeGzip, GivesTheSameBytesPackedOrNotWhereverTheFileIsSplit) {
  const std::string plain = "time,lat,lon\n1,2,3\n" + std::string(100000, 'x');
  for (const std::string& file : {plain, gzipped(plain), gzipped(plain.substr(0, 50)) + gzipped(plain.substr(50))}) {
    for (const std::size_t piece : {std::size_t{1}, std::size_t{2}, std::size_t{7}, file.size()}) {
      const Fed result = fed(file, piece);
      EXPECT_TRUE(result.isGood && result.isWhole);
      EXPECT_TRUE(result.bytes == plain) << piece;
    }
  }
  EXPECT_EQ(fed("\x1F"
                "A",
                1)
                .bytes,
            "\x1F"
            "A");
  EXPECT_TRUE(fed("", 1).isWhole);
}

TEST(MaybeGzip, KeepsWhatComesBeforeDamageOrACut) {
  const std::string plain = "the beginning, and then " + std::string(1000, '.'), packed = gzipped(plain);
  const Fed cut = fed(packed.substr(0, packed.size() - 9), 1);
  EXPECT_TRUE(cut.isGood);
  EXPECT_FALSE(cut.isWhole);
  EXPECT_TRUE(plain.starts_with(cut.bytes) && cut.bytes.size() > 100);

  std::string damaged = packed;
  damaged[damaged.size() - 6] ^= 1;  // of the checksum
  EXPECT_FALSE(fed(damaged, 1).isGood);
  EXPECT_TRUE(fed(damaged, 1).bytes == plain);
}

}  // namespace
}  // namespace packed
