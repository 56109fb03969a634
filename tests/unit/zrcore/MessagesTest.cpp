#include <Messages.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class MessagesTest : public testing::Test {
 protected:
  std::vector<std::string> lines;
  Messages messages{[this](std::string_view line) { lines.emplace_back(line); }};
};

TEST_F(MessagesTest, ARemarkNamesFileAndLineAndWhetherSomethingWasLost) {
  messages.remark("a.gpx", {readers::Severity::fault, 7, "bad"});
  messages.remark("a.gpx", {readers::Severity::warning, 9, "odd"});
  messages.endRemarks("a.gpx");
  EXPECT_THAT(lines, ElementsAre("zrcore: a.gpx:7: bad", "zrcore: a.gpx:9: warning: odd"));
}

TEST_F(MessagesTest, AFloodIsCountedAndTheNextFileIsHeardAgain) {
  for (std::uint64_t line = 1; line <= 332; ++line) messages.remark("a", {readers::Severity::fault, line, "bad"});
  messages.endRemarks("a");
  ASSERT_EQ(lines.size(), Messages::kMostRemarks + 1);
  EXPECT_EQ(lines.back(), "zrcore: a: … and 312 more");
  lines.clear();
  messages.remark("b", {readers::Severity::fault, 1, "bad"});
  messages.endRemarks("b");
  EXPECT_THAT(lines, ElementsAre("zrcore: b:1: bad"));
}

TEST(ShownName, HoldsNothingThatATerminalWouldObey) {
  EXPECT_EQ(shownName("-"), "standard input");
  EXPECT_EQ(shownName("a\x1b[2Jb\n.gpx"), "a?[2Jb?.gpx");
}

}  // namespace
