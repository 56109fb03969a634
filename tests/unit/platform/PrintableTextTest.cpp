// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatform.h>
#include <ZRCore/ZRPrintableText.h>
#include <gtest/gtest.h>

namespace {

TEST(PrintableText, DoesNothingToATerminalAndPassesForNothingElse) {
  const std::string_view rows[][2] = {
      {"", ""},
      {"Grüße 100 % \u05e9 \U0001F600", "Grüße 100 % \u05e9 \U0001F600"},
      {"a\nERROR b\r\t", "a\\x0AERROR b\\x0D\\x09"},
      {"\x1B[2J\x7F", "\\x1B[2J\\x7F"},
      {std::string_view("a\0b", 3), "a\\x00b"},
      {"\u009B2J\u00A0\u2028\u2029", "\\xC2\\x9B2J\u00A0\\xE2\\x80\\xA8\\xE2\\x80\\xA9"},
      {"\u2027\u202A\u202E\u202F", "\u2027\\xE2\\x80\\xAA\\xE2\\x80\\xAE\u202F"},
      {"\u2065\u2066\u2069\u206A", "\u2065\\xE2\\x81\\xA6\\xE2\\x81\\xA9\u206A"},
      {"\xFF\xC3", "\\xFF\\xC3"},
      {"\xC0\xAF\xED\xA0\x80\xE2\x80", "\\xC0\\xAF\\xED\\xA0\\x80\\xE2\\x80"},
  };
  for (const auto& [text, shown] : rows) EXPECT_EQ(ZRPrintableText(text), shown);
}

TEST(PrintableText, IsCutBetweenCharactersAndShowsThatItWas) {
  EXPECT_EQ(ZRPrintableText("abc", 3), "abc");
  EXPECT_EQ(ZRPrintableText("abcd", 3), "abc...");
  EXPECT_EQ(ZRPrintableText("ab\u20acd", 4), "ab...");
  EXPECT_EQ(ZRPrintableText("\x1b\x1b", 1), "\\x1B...");
  EXPECT_EQ(ZRPrintableText(std::string(60'000'000, 'x'), ZRLongestExcerpt).size(), ZRLongestExcerpt + 3);
}

TEST(PrintableText, IsWhatAHeadlessHostsLogWrites) {
  testing::internal::CaptureStderr();
  ZRPlatformInUse().log->writeLine("a\n\u202Eb");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "a\\x0A\\xE2\\x80\\xAEb\n");
}

}  // namespace
