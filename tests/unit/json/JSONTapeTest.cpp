// SPDX-License-Identifier: Apache-2.0
// The quick reader against the careful one.
#include <ZRCore/ZRJSON.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include "ExactText.h"
#include "JSON.h"
#include "JSONTape.h"
#include "MappingFromJSON.h"
#include "TestSeed.h"

namespace {

std::string accountOf(const std::variant<ZROHMValue, NSError>& result) {
  if (const ZROHMValue* const value = std::get_if<ZROHMValue>(&result)) return exactText(*value);
  const NSError& error = std::get<NSError>(result);
  std::string account = "error " + error.domain + std::to_string(error.code);
  for (const auto& [key, text] : error.userInfo) account += ' ' + key + ' ' + text;
  return account;
}

TEST(JSONTape, ReadsOrdinaryDocumentsAndLeavesTheOthersToTheCarefulReader) {
  const std::pair<std::string, bool> rows[] = {
      {R"([{"a":"\u00e4\uD83D\uDE00","b":[-0,1.5,9223372036854775808]},[],{},null])", true},
      {"\xEF\xBB\xBF[1]", true},
      {"7", true},
      {R"({"a":1,"b":2,"a":3})", true},
      {std::string(9999, '[') + "1" + std::string(9999, ']'), true},
      {std::string(10000, '[') + "1" + std::string(10000, ']'), false},
      {"[18446744073709551616]", false},
      {"[1,]", false},
      {"[0." + std::string(200'000, '0') + "1]", false},
      {"[\"" + std::string(ZRLongestParsedBodyBytes, 'a') + "\"]", false},
  };
  for (const auto& [document, isRead] : rows) {
    EXPECT_EQ(JSONTape().read(document, ZRMostDocumentValues), isRead) << document.substr(0, 80);
    EXPECT_EQ(accountOf(ZRMakeJSONService()->valueFromJSON(document, ZRJSONFragments::allowed)),
              accountOf(readJSONCarefully(document, ZRJSONFragments::allowed, ZRMostDocumentValues)));
  }
}

TEST(JSONTape, ReadsAnyDocumentAsTheCarefulReaderDoes) {
  const std::array<std::string_view, 42> pieces{"{",
                                                "}",
                                                "[",
                                                "]",
                                                ",",
                                                ":",
                                                "\"a\"",
                                                "\"a\":",
                                                "\"b\":1,",
                                                "\"a\":[",
                                                "1",
                                                "-0",
                                                "0.1e+5",
                                                "1e400",
                                                "1e-9",
                                                " ",
                                                "\n",
                                                "true",
                                                "null",
                                                "\"\\u00e4\"",
                                                "\"\\ud800\"",
                                                "\"\\udc00\"",
                                                "\"\\ud800\\u0041\"",
                                                "\"\\n\\\"\"",
                                                "\"\x01\"",
                                                "\"é\"",
                                                "\xff",
                                                "\\",
                                                "\"",
                                                "-",
                                                "01",
                                                "[]",
                                                "{}",
                                                "{\"a\":",
                                                "[[",
                                                "]]",
                                                "},{",
                                                "2,",
                                                "\"\",",
                                                "9223372036854775808",
                                                "-9223372036854775809",
                                                "\xEF\xBB\xBF"};
  std::mt19937 random(testSeed(20261122));
  const auto upTo = [&random](std::size_t count) { return std::size_t{random()} % count; };
  for (int round = 0; round < 20'000; ++round) {
    std::string document;
    if (upTo(2) == 0) {  // something that is nearly right
      document = R"([{"street":"1 Lantern Row","latLng":{"lat":39.9,"lng":-89.4},"x":[1,true,null]},"\u0041",-1.5e3])";
      for (std::size_t changes = upTo(3); changes > 0; --changes) {
        const std::size_t at = upTo(document.size());
        document.replace(at, upTo(3), pieces[upTo(pieces.size())]);
      }
    } else {
      for (std::size_t count = upTo(9); count > 0; --count) document += pieces[upTo(pieces.size())];
    }
    const auto fragments = upTo(2) == 0 ? ZRJSONFragments::allowed : ZRJSONFragments::refused;
    const std::uint64_t mostValues = upTo(4) == 0 ? upTo(12) : ZRMostDocumentValues;
    ASSERT_EQ(accountOf(ZRMakeJSONService(mostValues)->valueFromJSON(document, fragments)),
              accountOf(readJSONCarefully(document, fragments, mostValues)))
        << document;
  }
}

TEST(JSONTape, FillsObjectsAsValuesDo) {
  std::mt19937 random(testSeed(20261122));
  for (int round = 0; round < 1500; ++round) {
    std::vector<std::uint8_t> bytes(random() % 400);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    ASSERT_EQ(differenceInMapping(bytes, {fillFromJSON}), "");
  }
}

}  // namespace
