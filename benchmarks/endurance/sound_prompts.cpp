// SPDX-License-Identifier: Apache-2.0
// What five hundred prompts leave behind, and what hosts leave that are killed while they speak.
#include <gmock/gmock.h>
#include <sys/wait.h>

#include <csignal>
#include <fstream>
#include <random>

#include "SoundServer.h"
#include "SpeechEngine.h"

namespace {

std::size_t entriesIn(const char* folder) {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

long residentPages() {
  long size = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident;
}

TEST_F(SpeechEngine, FiveHundredPromptsLeaveNothingBehind) {
  install({"cat", file("good.wav", squareWav(200))});
  const auto speakMany = [this](std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) speak("p");
    return ended(ends.size() + count);
  };
  ASSERT_TRUE(speakMany(100));
  const auto files = entriesIn("/proc/self/fd"), threads = entriesIn("/proc/self/task");
  const long pages = residentPages();
  ASSERT_TRUE(speakMany(400));
  EXPECT_THAT(ends, testing::Each("finished p"));
  EXPECT_EQ(entriesIn("/proc/self/fd"), files);
  EXPECT_EQ(entriesIn("/proc/self/task"), threads);
  EXPECT_NE(::waitpid(-1, nullptr, WNOHANG), 0) << "a child that was not waited for";
  EXPECT_NEAR(soundFile->lengthSeconds(), 100.0, 0.1);
#ifndef __SANITIZE_ADDRESS__
  EXPECT_LT(residentPages() - pages, 1024) << "4 MiB";
#else
  (void)pages;
#endif
}

class SoundEndurance : public WithSoundServer {};

TEST_F(SoundEndurance, AHostKilledAtAnyMomentIsPutRightByTheNextStart) {
  startServer();
  const auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  std::mt19937 random(20261121);
  std::uniform_real_distribution<double> seconds(0.0, 0.3);
  for (int round = 0; round < 10; ++round) {
    const ChildProcess host(
        {ZRCORE_TOOL, "say", "In four hundred meters, turn left onto Main Street", "--volume", "0"});
    if (round % 2 == 1) {  // before the music is lowered, and after
      ASSERT_TRUE(toneBecomes(kLowered));
    }
    ZRRunLinuxLoopFor(seconds(random), [] { return false; });
    host.send(SIGKILL);
    EXPECT_EQ(ChildProcess({ZRCORE_TOOL, "say", ""}).exitCode(std::chrono::seconds(20)), 0);
    EXPECT_TRUE(toneBecomes(kToneAmplitude)) << "round " << round;
    EXPECT_TRUE(std::filesystem::is_empty(server.folder() / "zrcore"));
  }
}

}  // namespace
