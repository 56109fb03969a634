// SPDX-License-Identifier: Apache-2.0
#include "SipHash.h"

#include <ZRCore/ZROHMOrderedMap.h>
#include <gmock/gmock.h>

#include <set>

#include "CollidingTexts.h"

namespace {

TEST(SipHash, IsThatOfItsAuthors) {
  // As CPython 3.11 computes them with a key of zeros (PYTHONHASHSEED=0); without a byte as the authors' first vector.
  const std::pair<std::string_view, std::uint64_t> rows[] = {
      {"a", 0x407448d2b89b1813U},
      {"abcdefg", 0x6db12aae9070f506U},
      {"abcdefgh", 0x3f7b849c0b8e35eaU},
      {"abcdefghi", 0xf89b34a3d11eb6e5U},
      {"0123456789abcdef0123456789abcdefxyz", 0xf14e801442684499U}};
  for (const auto& [text, hash] : rows) EXPECT_EQ(sipHash13({}, text), hash) << text;
  EXPECT_EQ(sipHash13({0x0706050403020100U, 0x0f0e0d0c0b0a0908U}, {}), 0xabac0158050fc4dcU);
}

TEST(SipHash, TextsThatCollideElsewhereDoNotCollideInAMap) {
  constexpr std::size_t kCount = 200, kSlots = 4096;
  std::set<std::size_t> standard, places;
  for (const std::string& text : collidingTexts(kCount)) {
    standard.insert(std::hash<std::string_view>{}(text));
    places.insert(ZROHMHashOfText(text) % kSlots);
  }
#ifdef __GLIBCXX__
  EXPECT_EQ(standard.size(), 1U) << "these texts prove nothing any more";
#endif
  EXPECT_GT(places.size(), 180U) << "by chance it is about 195";
}

}  // namespace
