// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <text/Whitespace.h>

#include <string>

namespace {

std::string utf8(std::uint32_t code) {
  if (code < 0x80) return {static_cast<char>(code)};
  if (code < 0x800) return {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
  return {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
          static_cast<char>(0x80 | (code & 0x3F))};
}

TEST(Trimmed, TakesTwentySixCharactersFromBothEndsAndNoOthers) {
  int spaces = 0;
  for (std::uint32_t code = 0; code < 0x10000; ++code) {
    if (code >= 0xD800 && code < 0xE000) continue;
    const std::string character = utf8(code);
    const std::string inner = "a" + character + "b";
    EXPECT_EQ(text::trimmedOfWhitespace(inner), inner);
    const bool isSpace = text::trimmedOfWhitespace(character).empty();
    spaces += isSpace ? 1 : 0;
    EXPECT_EQ(text::trimmedOfWhitespace(character + character + inner + character),
              isSpace ? inner : character + character + inner + character);
  }
  EXPECT_EQ(spaces, 26);
  for (const std::uint32_t code :
       {0x09, 0x0D, 0x20, 0x85, 0xA0, 0x1680, 0x2000, 0x200B, 0x2028, 0x202F, 0x205F, 0x3000}) {
    EXPECT_EQ(text::trimmedOfWhitespace(utf8(code)), "") << code;
  }
}

TEST(Trimmed, LeavesBytesThatAreNoText) {
  for (const std::string bytes : {"\x80\x80", "\xC2", "\xE2\x80", "a\xE2\x80", "\x85", "\xA0"}) {
    EXPECT_EQ(text::trimmedOfWhitespace(bytes), bytes);
  }
}

}  // namespace
