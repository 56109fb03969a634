// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSString_ZR.h>
#include <ZRCore/NSURL_ZR.h>
#include <gmock/gmock.h>

#include <limits>
#include <set>

#include "WithFakePlatform.h"

using namespace NSString_ZR;
using namespace NSURL_ZR;
using testing::Optional;

namespace {

std::string utf8(char32_t c) {
  const auto low = [&](unsigned shift) { return static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
  if (c < 0x80) return {static_cast<char>(c)};
  if (c < 0x800) return {static_cast<char>(0xC0U | c >> 6U), low(0)};
  if (c < 0x10000) return {static_cast<char>(0xE0U | c >> 12U), low(6), low(0)};
  return {static_cast<char>(0xF0U | c >> 18U), low(12), low(6), low(0)};
}

TEST(WhitespaceTest, OfAllCharactersThese26AreTrimmedAndBlank) {
  std::set<char32_t> blank;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    const std::string text = utf8(c);
    if (isBlank(text)) blank.insert(c);
    ASSERT_EQ(stripWhitespace(text + "a" + text + "b" + text),
              isBlank(text) ? "a" + text + "b" : text + "a" + text + "b" + text);
  }
  std::set<char32_t> expected = {' ', 0x85, 0xA0, 0x1680, 0x2028, 0x2029, 0x202F, 0x205F, 0x3000};
  for (char32_t c = 0x09; c <= 0x0D; ++c) expected.insert(c);
  for (char32_t c = 0x2000; c <= 0x200B; ++c) expected.insert(c);
  EXPECT_EQ(blank, expected);
  EXPECT_EQ(blank.size(), 26U);
}

TEST(WhitespaceTest, AbsentAndEmptyTextsAreBlankAndStrayBytesAreKept) {
  EXPECT_TRUE(isBlank(std::nullopt));
  EXPECT_TRUE(isBlank(""));
  EXPECT_TRUE(isBlank("  \n "));
  for (const std::string bytes : {"\xC2", "\x85", "\xA0", "\xE2\x80", "\x80\x80", "\xE3\x80", "\xE1\x9A"}) {
    EXPECT_EQ(stripWhitespace(" " + bytes + " "), bytes);
  }
}

class OrdinalTest : public WithFakePlatform {};

TEST_F(OrdinalTest, EnglishSuffixesGoByTheLastDigitButForElevenToThirteenThemselves) {
  const std::pair<std::int64_t, const char*> rows[] = {{0, "0th"},
                                                       {1, "1st"},
                                                       {2, "2nd"},
                                                       {3, "3rd"},
                                                       {4, "4th"},
                                                       {10, "10th"},
                                                       {11, "11th"},
                                                       {12, "12th"},
                                                       {13, "13th"},
                                                       {21, "21st"},
                                                       {22, "22nd"},
                                                       {101, "101st"},
                                                       {111, "111st"},
                                                       {112, "112nd"},
                                                       {113, "113rd"},
                                                       {-1, "-1th"},
                                                       {-12, "-12th"},
                                                       {-21, "-21th"},
                                                       {2147483647, "2147483647th"},
                                                       {4294967297, "1th"},  // the low 32 bits, the suffix of the whole
                                                       {std::numeric_limits<std::int64_t>::min(), "0th"}};
  for (const auto& [number, text] : rows) EXPECT_EQ(stringOrdinalFor(number), text);
}

TEST_F(OrdinalTest, OtherLanguagesTakeNoSuffix) {
  const std::pair<std::optional<std::string>, const char*> rows[] = {
      {std::nullopt, "21st"}, {"en", "21st"}, {"EN", "21st"}, {"eN", "21st"}, {"fr", "21"}, {"", "21"}, {"eng", "21"}};
  for (const auto& [code, text] : rows) {
    fake.device->language = code;
    EXPECT_EQ(stringOrdinalFor(21), text) << code.value_or("absent");
  }
}

TEST(EscaperTest, EachByteOfASCIIIsEscapedOrLeftAlone) {
  const std::string leftAlone = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.~%";
  for (int code = 0; code < 128; ++code) {
    const std::string text(1, static_cast<char>(code));
    char escaped[4];
    std::snprintf(escaped, sizeof escaped, "%%%02X", static_cast<unsigned>(code));
    const bool passes = leftAlone.find(text) != std::string::npos;
    EXPECT_THAT(urlQueryParameterEscaped(text), Optional(passes ? text : escaped));
    EXPECT_THAT(urlQueryParameterKeyEscaped(text), Optional(passes || text == "[" || text == "]" ? text : escaped));
    const std::string run(15, 'x');  // sixteen are judged at once
    EXPECT_THAT(urlQueryParameterEscaped(run + text), Optional(run + (passes ? text : escaped)));
  }
}

TEST(EscaperTest, TheFormForABufferWritesTheSameWhereItFits) {
  // Plain runs around the sixteen bytes that are judged at once, and a character to escape at each place in them.
  for (std::size_t length = 0; length < 70; ++length) {
    for (const char* const odd : {"", "/", "é", "[", "%", "\xFF"}) {
      const std::string text = std::string(length, 'a') + odd + std::string(length % 5, 'Z');
      const auto value = urlQueryParameterEscaped(text), key = urlQueryParameterKeyEscaped(text);
      std::string buffer(3 * text.size() + 1, '?');
      for (const bool isKey : {false, true}) {
        const auto& expected = isKey ? key : value;
        const auto into =
            isKey ? NSString_ZR::urlQueryParameterKeyEscapedInto : NSString_ZR::urlQueryParameterEscapedInto;
        const auto written = into(buffer.data(), buffer.size(), text);
        ASSERT_EQ(written.has_value(), expected.has_value()) << text;
        if (!expected) continue;
        EXPECT_EQ(buffer.substr(0, *written), *expected);
        std::string exact(expected->size() + 1, '?');
        EXPECT_EQ(into(exact.data(), expected->size(), text), expected->size());
        EXPECT_EQ(exact, *expected + '?') << "not a byte beyond";
        if (expected->empty()) continue;
        exact.assign(expected->size() + 1, '?');
        EXPECT_EQ(into(exact.data(), expected->size() - 1, text), expected->size());
        EXPECT_EQ(exact, std::string(expected->size() + 1, '?')) << "nothing where it does not fit";
      }
    }
  }
  const std::string plain(100'000, 'x');
  EXPECT_THAT(urlQueryParameterEscaped(plain + " " + plain), Optional(plain + "%20" + plain));
}

TEST(EscaperTest, TextsBeyondASCIIBecomeTheirBytesAndWhatIsNoUTF8IsAbsent) {
  EXPECT_THAT(urlQueryParameterEscaped("é€😀"), Optional(std::string("%C3%A9%E2%82%AC%F0%9F%98%80")));
  EXPECT_THAT(urlQueryParameterEscaped("%41%zz 50%"), Optional(std::string("%41%zz%2050%")));
  EXPECT_THAT(urlQueryParameterKeyEscaped(""), Optional(std::string()));
  EXPECT_EQ(urlQueryParameterEscaped(std::nullopt), std::nullopt);
  // The first and the last of each length, and what stands beside the surrogates.
  for (const std::string_view text :
       {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xE1\x80\x80", "\xED\x9F\xBF", "\xEE\xBF\xBF", "\xEE\x80\x80",
        "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF1\x80\x80\x80", "\xF3\xBF\xBF\xBF", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_EQ(urlQueryParameterEscaped(text).value_or("").size(), 3 * text.size()) << testing::PrintToString(text);
  }
  const std::string_view damaged[] = {
      "\x80",          "a\xC3",        "\xC3(",        "\xC0\x80",         "\xC1\xBF",
      "\xE0\x9F\xBF",  "\xED\xA0\x80", "\xE2\x82",     "\xE2(\x80",        "\xF0\x8F\xBF\xBF",
      "\xF0\x9F(\x80", "\xFF",         "\xF0\x9F\x98", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80"};
  for (const std::string_view bytes : damaged) {
    EXPECT_EQ(urlQueryParameterEscaped(bytes), std::nullopt) << testing::PrintToString(bytes);
    EXPECT_EQ(urlQueryParameterKeyEscaped(bytes), std::nullopt);
  }
}

TEST(URLTest, TheParserLooksAtCharactersAlone) {
  for (const char* text : {"", "http://h/p?k=a%20b", "http://h/?a[0].b=1", "http://h/a#b", "x//y", "?k=v", "//h",
                           "http:", "1http://h", "http://h:port/"}) {
    const auto url = NSURL::URLWithString(text);
    ASSERT_TRUE(url) << text;
    EXPECT_EQ(url->absoluteString(), text);
  }
  for (const char* text :
       {"http://h/p?k=50%", "50%&b=1", "http://h/%4", "http://h/%zz", "http://h/%4g", "http://h/#a#b", " http://h/",
        "a\tb", "\"", "<", ">", "\\", "^", "`", "{", "}", "|", "\x7f", "é"}) {
    EXPECT_EQ(NSURL::URLWithString(text), std::nullopt) << text;
  }
  EXPECT_EQ(NSURL::URLWithString(std::string("a\0b", 3)), std::nullopt);
}

TEST(URLTest, BaseAndPathMeetAtOneAddedSlash) {
  EXPECT_EQ(stringWithBaseUrlStringPath("x", "y"), "x/y");
  EXPECT_EQ(stringWithBaseUrlStringPath("x/", "y"), "x/y");
  EXPECT_EQ(stringWithBaseUrlStringPath("x/", "/y"), "x//y");
  EXPECT_EQ(stringWithBaseUrlStringPath("", "y"), "/y");
  for (const auto path : std::initializer_list<std::optional<std::string_view>>{std::nullopt, "", " \n"}) {
    EXPECT_EQ(stringWithBaseUrlStringPath("x", path), "x");
  }
}

TEST(URLTest, ParametersFollowInTheirOrderAsText) {
  const auto text = [](std::string_view base, std::optional<std::string_view> path, const ZROHMDictionary& parameters) {
    const auto url = urlWithBaseUrlStringPathParameters(base, path, parameters);
    return url ? url->absoluteString() : "absent";
  };
  EXPECT_EQ(text("b", "p", {}), "b/p");
  EXPECT_EQ(text("b", "p", {{"k", "v"}}), "b/p?k=v");
  EXPECT_EQ(text("b?", std::nullopt, {{"k", 5}, {"a", true}, {"n", false}}), "b?k=5&a=1&n=0");
  EXPECT_EQ(text("b?x=1", "", {{"k", 1.5}}), "b?x=1?k=1.5") << "only a \"?\" at the end is seen";
  EXPECT_EQ(text("b", "p", {{"a[0].b", "a b&c"}, {"c d", ""}}), "b/p?a[0].b=a%20b%26c&c%20d=");
  EXPECT_EQ(text("b", "p", {{"k", nullptr}}), "b/p?k=%3Cnull%3E");
  EXPECT_EQ(text("b", "p", {{"k", "%20"}}), "b/p?k=%20") << "escaped already";
  EXPECT_EQ(text("b", "p", {{"k", "50%"}}), "absent") << "a stray percent sign";
  EXPECT_EQ(text("b", "p q", {}), "absent") << "paths are not escaped";
  EXPECT_EQ(text("b", "p", {{"k", "\xFF"}}), "absent");
  EXPECT_EQ(text("b", "p", {{"\xFF", "k"}}), "absent");
}

}  // namespace
