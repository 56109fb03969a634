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

TEST(Unpacker, GivesOneVerdictHoweverTheBytesAreCut) {
  using namespace std::string_literals;
  const std::string plain = std::string(40'000, 'x') + "end", packed = gzipped(plain);
  const std::string bare = packed.substr(10, packed.size() - 18);  // without the frame of gzip
  const struct {
    const char* what;
    std::string bytes;
    Unpacker::Taken taken;
    bool isWhole;
    std::size_t length;
  } rows[] = {
      {"bare", bare, Unpacker::Taken::good, true, plain.size()},
      {"bare, cut", bare.substr(0, bare.size() - 1), Unpacker::Taken::good, false, 0},
      {"a byte", "\x1F", Unpacker::Taken::good, false, 0},
      {"padding that begins as a member does", packed + "\0\x1F\x8B\x08\0"s, Unpacker::Taken::good, true, plain.size()},
      {"padding of one such byte", packed + "\x1F", Unpacker::Taken::good, true, plain.size()},
      {"padding that is nearly a member", packed + "\x1F\x1F\x8B", Unpacker::Taken::good, true, plain.size()},
      {"two members", packed + packed, Unpacker::Taken::good, true, 2 * plain.size()},
      {"one, and a part", packed + packed.substr(0, 2), Unpacker::Taken::good, false, plain.size()},
      {"damage beyond the limit", packed + packed + packed + "x", Unpacker::Taken::tooLong, false, 0},
  };
  for (const auto& row : rows) {
    for (const std::size_t piece :
         {std::size_t{1}, std::size_t{2}, std::size_t{3}, row.bytes.size() - 1, row.bytes.size()}) {
      SCOPED_TRACE(std::string(row.what) + ", in pieces of " + std::to_string(piece));
      Unpacker unpacker;
      std::string body;
      auto taken = Unpacker::Taken::good;
      for (std::string_view rest = row.bytes; !rest.empty() && taken == Unpacker::Taken::good;) {
        const std::string_view next = rest.substr(0, std::max<std::size_t>(piece, 1));
        taken = unpacker.take(next, body, 100'000);
        rest.remove_prefix(next.size());
      }
      EXPECT_EQ(taken, row.taken);
      if (taken != Unpacker::Taken::good) continue;
      EXPECT_EQ(unpacker.isWhole(), row.isWhole);
      if (row.isWhole) {
        EXPECT_EQ(body.size(), row.length);
      }
    }
  }
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
