// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSON.h>
#include <gmock/gmock.h>
#include <malloc.h>

#include <cmath>
#include <limits>
#include <string>
#include <tuple>

namespace {

using testing::HasSubstr;

class JSON : public testing::Test {
 protected:
  ZROHMValue read(std::string_view text, ZRJSONFragments fragments = ZRJSONFragments::allowed) {
    const auto result = json->valueFromJSON(text, fragments);
    if (const NSError* const error = std::get_if<NSError>(&result)) {
      ADD_FAILURE() << text << ": " << error->localizedDescription();
      return nullptr;
    }
    return std::get<ZROHMValue>(result);
  }
  std::string written(const ZROHMValue& value, ZRJSONLayout layout = ZRJSONLayout::compact) {
    const auto result = json->JSONFromValue(value, layout);
    const NSError* const error = std::get_if<NSError>(&result);
    return error != nullptr ? error->localizedDescription() : std::get<std::string>(result);
  }

  std::shared_ptr<ZRJSONService> json = ZRMakeJSONService();
};

TEST_F(JSON, DocumentsComeBackAsTheyWere) {
  const char* const documents[] = {
      R"({"z":1,"a":[true,false,null],"":{"deep":[[],{}]}})",
      R"([0,-1,9223372036854775807,-9223372036854775808,18446744073709551615])",
      R"([5.0,0.1,-0.0,1e-320,1.7976931348623157e+308,0.30000000000000004])",
      R"(["\"\\\b\f\n\r\t\u0000\u001f","ä€😀","/"])",
  };
  for (const char* const document : documents) EXPECT_EQ(written(read(document)), document);
}

TEST_F(JSON, NumbersKeepTheirKindAndBooleansTheirMemory) {
  using Type = ZROHMValue::NumberType;
  const std::pair<const char*, Type> rows[] = {{"1", Type::signed64},
                                               {"9223372036854775808", Type::unsigned64},
                                               {"18446744073709551616", Type::real},
                                               {"-9223372036854775809", Type::real},
                                               {"1.0", Type::real},
                                               {"1e2", Type::real},
                                               {"true", Type::boolean}};
  for (const auto& [text, type] : rows) EXPECT_EQ(read(text).numberType(), type) << text;
}

TEST_F(JSON, EntriesKeepTheirOrderAndTheLastDuplicateItsFirstPlace) {
  EXPECT_EQ(written(read(R"({"b":1,"a":2,"b":{"c":3}})")), R"({"b":{"c":3},"a":2})");
}

TEST_F(JSON, EscapesAndAByteOrderMarkAreRead) {
  EXPECT_EQ(read("\xEF\xBB\xBF[\"\\u00e4\\uD83D\\uDE00\\/\"]"), ZROHMValue(ZROHMArray{"ä😀/"}));
}

TEST_F(JSON, WhatIsNoDocumentIsAnErrorWithItsPosition) {
  const struct {
    std::string_view text;
    const char* position;
  } rows[] = {{{}, "0"},           {"", "0"},         {" \n", "2"},           {"[1,]", "3"},
              {"{\"a\":1}}", "7"}, {"['a']", "1"},    {"[01]", "2"},          {"[NaN]", "1"},
              {"[1e400]", "5"},    {"[-1e400]", "6"}, {"[\"\\ud800\"]", "8"}, {"[\"\xff\"]", "2"},
              {"[\"a\nb\"]", "3"}, {"[1] x", "4"},    {"{\"a\"", "4"},        {std::string_view("[1]\0", 4), "3"}};
  for (const auto& [text, position] : rows) {
    SCOPED_TRACE(text);
    const auto result = json->valueFromJSON(text, ZRJSONFragments::allowed);
    const NSError* const error = std::get_if<NSError>(&result);
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->domain, "NSCocoaErrorDomain");
    EXPECT_EQ(error->code, 3840);
    EXPECT_EQ(error->userInfo.at(NSJSONSerializationErrorIndex), position);
    EXPECT_THAT(error->localizedDescription(), HasSubstr("JSON"));
  }
}

TEST_F(JSON, ErrorsAreShortAndNameThePlaceWhateverTheSize) {
  const std::string many(200'000, 'a');
  const std::tuple<std::string, std::size_t, const char*> rows[] = {
      {"[\n \r\n\t[] ,\n\n\"a \n", 15, "line 5, column 4: syntax error"},
      {"{\"a\\\"  b\" :\n\n  1  2", 18, "line 3, column 6: syntax error"},
      {std::string(100'000, '\n') + "x", 100'000, "line 100001, column 1: syntax error"},
      {"[\"" + many, 200'002, "line 1, column 200003: syntax error"},
      {"[\"" + many + "é\x01", 200'004, "line 1, column 200005: syntax error"},
      {"[1,\n-1." + std::string(200'000, '1') + "]", 65'541, "line 2, column 65538: a number does not end"},
  };
  for (const auto& [text, position, place] : rows) {
    const auto result = json->valueFromJSON(text, ZRJSONFragments::allowed);
    ASSERT_TRUE(std::holds_alternative<NSError>(result)) << place;
    const auto& error = std::get<NSError>(result);
    EXPECT_THAT(error.localizedDescription(), HasSubstr(place));
    EXPECT_LT(error.localizedDescription().size(), 400U);
    EXPECT_EQ(error.userInfo.at(NSJSONSerializationErrorIndex), std::to_string(position));
  }
}

TEST_F(JSON, PartsAreHeardInTheirOrderUpToTheFault) {
  struct Ear final : ZRJSONListener {
    void beginObject() override { heard += '{'; }
    void key(std::string key) override { heard += key + ":"; }
    void endObject() override { heard += '}'; }
    void beginArray() override { heard += '['; }
    void endArray() override { heard += ']'; }
    void scalar(ZROHMValue value) override { heard += value.text() + " "; }
    std::string heard;
  };
  Ear whole, damaged;
  EXPECT_FALSE(ZRReadJSON(R"( {"a" : [1, "b\n", {}], "":null} )", ZRJSONFragments::refused, whole));
  EXPECT_EQ(whole.heard, "{a:[1 b\n {}]:<null> }");
  EXPECT_TRUE(ZRReadJSON("[1,{}}", ZRJSONFragments::refused, damaged));
  EXPECT_EQ(damaged.heard, "[1 {}");
  Ear fragment;
  EXPECT_TRUE(ZRReadJSON("7", ZRJSONFragments::refused, fragment));
}

TEST_F(JSON, ABareValueIsADocumentOnlyWhenAskedFor) {
  for (const char* const text : {"null", "1", "\"a\"", "true"}) {
    const auto result = json->valueFromJSON(text, ZRJSONFragments::refused);
    EXPECT_TRUE(std::holds_alternative<NSError>(result)) << text;
    EXPECT_EQ(written(read(text)), text);
  }
  EXPECT_EQ(read("[]", ZRJSONFragments::refused), ZROHMValue(ZROHMArray()));
}

TEST_F(JSON, ADocumentOfTooManyValuesIsAnErrorOfItsOwn) {
  const std::pair<const char*, std::uint64_t> rows[] = {
      {"[1,null,true,\"a\"]", 5}, {R"({"a":{},"b":[]})", 5}, {R"({"a":1,"a":1})", 5}, {"7", 1}};
  for (const auto& [text, values] : rows) {
    EXPECT_TRUE(
        std::holds_alternative<ZROHMValue>(ZRMakeJSONService(values)->valueFromJSON(text, ZRJSONFragments::allowed)))
        << text;
    const auto refused = ZRMakeJSONService(values - 1)->valueFromJSON(text, ZRJSONFragments::allowed);
    ASSERT_TRUE(std::holds_alternative<NSError>(refused)) << text;
    EXPECT_EQ(std::get<NSError>(refused).domain, ZRDocumentErrorDomain);
    EXPECT_EQ(std::get<NSError>(refused).code, ZRDocumentErrorTooManyValues);
    EXPECT_THAT(std::get<NSError>(refused).localizedDescription(),
                HasSubstr("more than " + std::to_string(values - 1) + " values"));
  }
}

TEST_F(JSON, EmptyObjectsAndArraysTakeNoMemoryOfTheirOwn) {
  std::string document = "[0";
  for (int i = 0; i < 200'000; ++i) document += i % 2 ? ",{}" : ",[]";
  const auto held = [] { return mallinfo2().uordblks; };
  const std::size_t before = held();
  const ZROHMValue value = read(document + "]");
  EXPECT_LT(held() - before, 200'000 * 2 * sizeof(ZROHMValue)) << "the places in the array alone";
  EXPECT_EQ((*value.array())[1], ZROHMValue(ZROHMArray()));
  EXPECT_EQ((*value.array())[2], ZROHMValue(ZROHMDictionary()));
  ZROHMValue changed = (*value.array())[1];
  changed.modifiableArray().emplace_back(1);
  EXPECT_EQ((*value.array())[1].array()->size(), 0U);
}

TEST_F(JSON, TenThousandLevelsAreReadAndWrittenOneMoreIsRefused) {
  const auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
  const ZROHMValue deep = read(nested(10000));
  EXPECT_EQ(written(deep), nested(10000));
  EXPECT_LT(written(deep, ZRJSONLayout::pretty).size(), 10'000'000u);
  const auto result = json->valueFromJSON(nested(10001), ZRJSONFragments::refused);
  ASSERT_TRUE(std::holds_alternative<NSError>(result));
  EXPECT_THAT(std::get<NSError>(result).localizedDescription(), HasSubstr("10000"));
}

TEST_F(JSON, PrettyDocumentsReadBackAsTheSameValue) {
  const ZROHMValue value = read(R"({"a":[1,{}],"b":[],"c":{"d":"x"}})");
  EXPECT_EQ(written(value, ZRJSONLayout::pretty), R"({
  "a": [
    1,
    {}
  ],
  "b": [],
  "c": {
    "d": "x"
  }
})");
  EXPECT_EQ(read(written(value, ZRJSONLayout::pretty)), value);
}

TEST_F(JSON, WhatJSONCannotSayIsAnErrorThatNamesItsPlace) {
  const std::pair<ZROHMValue, const char*> rows[] = {
      {ZROHMDictionary{{"places", ZROHMArray{1, ZROHMDictionary{{"position", CLLocationCoordinate2D{}}}}}},
       "coordinate, which stands at places[1].position"},
      {ZROHMArray{ZROHMArray{}, ZROHMArray{std::make_shared<NSObject>()}}, "object reference, which stands at [1][0]"},
      {std::nan(""), "number nan."},
      {ZROHMDictionary{{"x", -std::numeric_limits<double>::infinity()}}, "number -inf, which stands at x."},
      {ZROHMDictionary{{"x", "\xff"}}, "not UTF-8, which stands at x."},
  };
  for (const auto& [value, place] : rows) {
    EXPECT_TRUE(std::holds_alternative<NSError>(json->JSONFromValue(value, ZRJSONLayout::compact))) << place;
    EXPECT_THAT(written(value), HasSubstr(place));
  }
  const ZROHMValue wrongKey = ZROHMDictionary{{"\xff", 1}};
  EXPECT_TRUE(std::holds_alternative<NSError>(json->JSONFromValue(wrongKey, ZRJSONLayout::compact)));
}

}  // namespace
