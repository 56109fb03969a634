// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

/// All that the tool writes to a terminal of 80 by 12 characters.
std::string shownOnTerminal(const char* recording, const char* noColor) {
  winsize size{.ws_row = 12, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
  int terminal = -1;
  const pid_t tool = ::forkpty(&terminal, nullptr, nullptr, &size);
  if (tool == 0) {
    ::setenv("TERM", "xterm", 1);
    ::setenv("NO_COLOR", noColor, 1);
    ::execl(ZRCORE_TOOL, ZRCORE_TOOL, "trip", recording, "--filter", "measured", "--rate", "2000", nullptr);
    ::_exit(127);
  }
  std::string shown;
  std::array<char, 4096> bytes;
  for (ssize_t count = 0; (count = ::read(terminal, bytes.data(), bytes.size())) > 0;) {
    shown.append(bytes.data(), static_cast<std::size_t>(count));
  }
  ::close(terminal);
  int status = 0;
  ::waitpid(tool, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  return shown;
}

TEST(TripOnATerminal, IsATableThatIsDrawnAgainInPlace) {
  const std::string shown = shownOnTerminal(ZRCORE_SAMPLES "/drive.csv", "");
  EXPECT_THAT(shown, AllOf(HasSubstr("latitude"), HasSubstr("\x1b[32m"), HasSubstr("100 %"), HasSubstr("656 fixes")));
  EXPECT_THAT(shown, ContainsRegex("09:41:40 .* yes"));
  EXPECT_THAT(shown, ContainsRegex("\x1b.1?[0-9]A"));  // back up over the earlier drawing
  EXPECT_THAT(shown, HasSubstr("2 jumps"));            // the summary stands below

  // Drawings are bounded by time, not by fixes: the recording's 700 seconds take 0.35 here.
  std::size_t drawings = 0;
  for (std::size_t at = shown.find("latitude"); at != std::string::npos; at = shown.find("latitude", at + 1)) {
    ++drawings;
  }
  EXPECT_GE(drawings, 3u);
  EXPECT_LE(drawings, 200u);
}

TEST(TripOnATerminal, ShowsNoColorWhereNoneIsWanted) {
  EXPECT_THAT(shownOnTerminal(ZRCORE_SAMPLES "/drive.csv", "1"),
              AllOf(HasSubstr("latitude"), Not(ContainsRegex("\x1b.[0-9]*m"))));
}

}  // namespace
