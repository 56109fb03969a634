// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <zrcore/CommandLine.h>

#include <stdexcept>

namespace {

struct TestOptions : Options {
  using Options::Options;
  Option<std::string> read{*this, "--read TEXT", "Read by each run"};
  Option<bool> forgotten{*this, "--forgotten", "Read by none"};
};

int run(std::vector<std::string> words, int exitCode) {
  CommandLine tool("tool", "1", "A tool");
  tool.add<TestOptions>("command", "A command", "", [exitCode](const TestOptions& options) {
    EXPECT_EQ(*options.read, "x");
    return exitCode;
  });
  words.insert(words.begin(), {"tool", "command", "--read", "x"});
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  return tool.run(static_cast<int>(arguments.size()), arguments.data());
}

TEST(CommandLine, AnOptionThatARunThatEndsWellHasNotReadIsAFaultOfTheTool) {
  EXPECT_EQ(run({}, 0), 0);
  EXPECT_THROW(run({"--forgotten"}, 0), std::logic_error);
  EXPECT_EQ(run({"--forgotten"}, 1), 1);  // it may have ended before its turn
}

}  // namespace
