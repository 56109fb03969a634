// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <zrcore/place/PlaceTable.h>

#include <clocale>
#include <sstream>

namespace {

TEST(PlaceTable, CutsTextsToTheTerminalAndSaysSo) {
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  const auto address = ZRGeoAddress::init();
  address->setStreet("東京の長い長い長い長い通り 1\x1b[2J\xff");
  address->setCity("Quillmere");
  address->setState(std::string(300, 'a'));
  address->setCoordinate({-12.5, -123.25});
  const std::vector<place::Result> results{{12, ZRPlace::placeFromGeoAddress(address)}};
  for (const int columns : {70, 80, 200}) {
    SCOPED_TRACE(columns);
    std::istringstream table(placeTable(results, {.columns = columns, .rows = 24, .color = false, .unicode = true}));
    std::vector<std::string> lines;
    for (std::string line; std::getline(table, line);) lines.push_back(line);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_THAT(lines[1], testing::AllOf(testing::StartsWith("12  東京"), testing::HasSubstr("-12.500000")));
    EXPECT_THAT(lines[2], testing::AllOf(testing::StartsWith("    Quillmere, aaa"), testing::EndsWith("a…")));
    // The ellipsis takes one column and three bytes.
    EXPECT_EQ(lines[2].size(), static_cast<std::size_t>(columns) + 2);
    EXPECT_THAT(lines[1], testing::Not(testing::HasSubstr("\x1b")));
  }
}

}  // namespace
