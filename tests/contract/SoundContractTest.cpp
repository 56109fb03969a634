// SPDX-License-Identifier: Apache-2.0
// What every implementation of the services for sound promises, also on a machine without any.
#include <gmock/gmock.h>

#include <cstdlib>
#include <functional>

#include "Implementations.h"
#include "PlatformTestPeer.h"
#ifdef ZRCORE_TESTS_LINUX
#include <ZRCore/ZRLinuxPlatform.h>
#endif

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

#ifdef ZRCORE_TESTS_LINUX
/// A Linux system with neither a sound server nor a speech engine.
Running runningSoundlessLinux() {
  ::setenv("PULSE_SERVER", "unix:/nonexistent/server", 1);
  const auto sound = std::make_shared<ZRLinuxSoundOptions>();
  sound->speechCommand = {"/nonexistent/engine"};
  ZRLinuxOptions options;
  options.sound = sound;
  Running running{makeLinuxPlatform(options), nullptr};
  running.settle = [queue = running.platform.mainQueue] {
    bool isOver = false;
    queue->post([&isOver] { isOver = true; });
    ZRRunLinuxLoopUntil([&isOver] { return isOver; });
  };
  return running;
}
#endif

class CancelListener : public AVSpeechSynthesizerDelegate {
 public:
  void speechSynthesizerDidCancelSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer> synthesizer,
                                                 std::shared_ptr<AVSpeechUtterance> utterance) override {
    cancelled.push_back(utterance->speechString());
    EXPECT_FALSE(synthesizer->isSpeaking());
  }
  std::vector<std::string> cancelled;
};

class SoundContract : public testing::TestWithParam<Implementation> {
 protected:
  SoundContract() {
    PlatformTestPeer::forget();
    installed_ = ZRPlatformInstall(running.platform);
  }
  ~SoundContract() override { PlatformTestPeer::forget(); }
  void SetUp() override { ASSERT_TRUE(installed_); }

  Running running = GetParam().start();
  const ZRPlatform& platform = running.platform;

 private:
  bool installed_ = false;
};

TEST_P(SoundContract, WhatIsStoppedIsCancelledOnceLaterAndInOrderAlsoWhenTheSynthesizerIsDropped) {
  const auto listener = std::make_shared<CancelListener>();
  auto synthesizer = platform.speech->makeSynthesizer();
  ASSERT_NE(synthesizer, nullptr);
  EXPECT_FALSE(synthesizer->isSpeaking());
  synthesizer->setDelegate(listener);
  for (const char* text : {"one", "", "three"}) synthesizer->speakUtterance(std::make_shared<AVSpeechUtterance>(text));
  EXPECT_THAT(listener->cancelled, IsEmpty());
  synthesizer->stopSpeakingImmediately();
  EXPECT_FALSE(synthesizer->isSpeaking());
  synthesizer.reset();
  running.settle();
  EXPECT_THAT(listener->cancelled, ElementsAre("one", "", "three"));
}

TEST_P(SoundContract, SynthesizersOutliveTheirDelegatesAndAreSeparate) {
  const auto first = platform.speech->makeSynthesizer();
  first->setDelegate(std::make_shared<CancelListener>());
  first->speakUtterance(std::make_shared<AVSpeechUtterance>("one"));
  EXPECT_FALSE(platform.speech->makeSynthesizer()->isSpeaking());
  first->stopSpeakingImmediately();
  first->stopSpeakingImmediately();
  running.settle();
}

TEST_P(SoundContract, AVoiceKnowsItsLanguageAndMayBeAbsent) {
  const auto voice = platform.speech->voiceWithLanguage("en-US");
  if (voice) {
    EXPECT_EQ(voice->language(), "en-US");
  }
}

TEST_P(SoundContract, NoBytesAreNoClip) {
  const auto made = platform.audioPlayers->playerWithData("");
  const auto* const error = std::get_if<NSError>(&made);
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->domain, AVFoundationErrorDomain);
  EXPECT_FALSE(error->localizedDescription().empty());
}

TEST_P(SoundContract, ASessionCanBeStartedAndStoppedInAnyOrder) {
  AVAudioSession& session = *platform.audioSession;
  EXPECT_FALSE(session.isOtherAudioPlaying());
  EXPECT_TRUE(session.setActiveWithOptions(false, 1).success);
  EXPECT_TRUE(session.setActiveWithOptions(true, 0).success);
  EXPECT_TRUE(session.setCategoryWithOptions(AVAudioSessionCategoryPlayback, 19).success);
  EXPECT_TRUE(session.setActiveWithOptions(true, 0).success);
  for (int round = 0; round < 2; ++round) EXPECT_TRUE(session.setActiveWithOptions(false, 1).success);
  EXPECT_FALSE(session.isOtherAudioPlaying());
}

INSTANTIATE_TEST_SUITE_P(, SoundContract,
                         testing::Values(Implementation{"fake", runningFake},
                                         Implementation{"headless", runningHeadless}),
                         [](const auto& row) { return row.param.name; });
#ifdef ZRCORE_TESTS_LINUX
INSTANTIATE_TEST_SUITE_P(Linux, SoundContract, testing::Values(Implementation{"linux", runningSoundlessLinux}),
                         [](const auto& row) { return row.param.name; });
#endif

}  // namespace
