// SPDX-License-Identifier: Apache-2.0
// Our own sound on a real server: queueing, interruption, loss.
#include <gmock/gmock.h>
#include <sndfile.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <numbers>

#include "Ends.h"
#include "SoundServer.h"

using testing::ElementsAre;

namespace {

class Prompts : public WithSoundServer {
 protected:
  void listen() {
    synthesizer = ZRPlatformInUse().speech->makeSynthesizer();
    synthesizer->setDelegate(hearing);
  }
  void speak(const std::string& text) { synthesizer->speakUtterance(std::make_shared<AVSpeechUtterance>(text)); }
  bool isHeard() {
    return eventually([this] { return monitor->loudness() > 500.0; });
  }
  bool ended(std::size_t count) {
    return eventually([&] { return hearing->ends.size() >= count; });
  }

  std::shared_ptr<Ends> hearing = std::make_shared<Ends>();
  std::shared_ptr<AVSpeechSynthesizer> synthesizer;
};

TEST_F(Prompts, ASecondPromptStartsWhenTheFirstHasBeenHeard) {
  startServer();
  install();
  listen();
  int hints = 0;
  ZRPlatformInUse().notificationCenter->addObserver(audio, AVAudioSessionSilenceSecondaryAudioHintNotification,
                                                    [&](const NSNotification&) { ++hints; });
  monitor->forget();
  speak("Turn left");
  speak("Turn right");
  ASSERT_TRUE(ended(1));
  const double firstEnd = static_cast<double>(monitor->samples.size()) / Monitor::kSamplesPerSecond;
  ASSERT_TRUE(ended(2));
  EXPECT_THAT(hearing->ends, ElementsAre("finished Turn left", "finished Turn right"));
  const auto stretches = monitor->stretches(0.2);
  ASSERT_EQ(stretches.size(), 2U) << "two prompts, with the engine's silence in between";
  EXPECT_LT(stretches[0].second, firstEnd + 0.3) << "told when it has been heard, not when it was made";
  EXPECT_GT(stretches[1].first, firstEnd - 0.3);
  for (const auto& [begin, end] : stretches) EXPECT_NEAR(end - begin, 0.55, 0.3);

  const std::size_t later = monitor->samples.size() + static_cast<std::size_t>(3.0 * Monitor::kSamplesPerSecond);
  ASSERT_TRUE(eventually([&] { return monitor->samples.size() >= later; }));
  speak("Arrived");
  ASSERT_TRUE(ended(3));
  EXPECT_EQ(monitor->stretches(0.2).size(), 3U) << "a stream that has rested sounds again";
  EXPECT_EQ(hints, 0) << "the engine is no other application";
}

TEST_F(Prompts, AnInterruptionSilencesTheFirstBeforeTheSecondIsHeard) {
  startServer();
  install();
  monitor->forget();
  say("In four hundred meters, turn left onto a road whose name is very long indeed");
  ASSERT_TRUE(isHeard());
  audio->speechSynth()->setDelegate(hearing);
  say("Stop", 1.0F, true);
  ASSERT_TRUE(ended(1));
  EXPECT_TRUE(eventually([this] { return !audio->isSpeaking(); }));
  EXPECT_THAT(hearing->ends, ElementsAre(testing::StartsWith("cancelled In four")));
  const auto stretches = monitor->stretches(0.03);
  EXPECT_LT(stretches.back().second, 3.0) << "the long one would have taken longer";
}

TEST_F(Prompts, ALostServerCancelsAndTheNextUseConnectsAgain) {
  startServer();
  install();
  listen();
  speak("one two three four five six seven eight nine ten");
  speak("eleven");
  ASSERT_TRUE(isHeard());
  monitor.reset();
  server.stop();
  ASSERT_TRUE(ended(2));
  EXPECT_THAT(hearing->ends, ElementsAre(testing::StartsWith("cancelled one"), "cancelled eleven"));
  EXPECT_FALSE(ZRPlatformInUse().audioSession->isOtherAudioPlaying());
  EXPECT_TRUE(ZRPlatformInUse().audioSession->setActiveWithOptions(false, 1).success);
  hearing->ends.clear();
  speak("twelve");
  ASSERT_TRUE(ended(1));
  EXPECT_THAT(hearing->ends, ElementsAre("cancelled twelve"));

  hearing->ends.clear();
  startServer();
  speak("thirteen");
  EXPECT_TRUE(isHeard());
  ASSERT_TRUE(ended(1));
  EXPECT_THAT(hearing->ends, ElementsAre("finished thirteen"));
}

TEST_F(Prompts, AServerThatHangsCancelsAndHoldsNobodyUp) {
  startServer();
  install();
  listen();
  speak("one two three four five six seven eight nine ten");
  ASSERT_TRUE(isHeard());
  server.freeze();
  ASSERT_TRUE(ended(1));
  EXPECT_THAT(hearing->ends, ElementsAre(testing::StartsWith("cancelled one")));
  EXPECT_TRUE(ZRPlatformInUse().audioSession->setActiveWithOptions(false, 1).success);
}

TEST_F(Prompts, AServersPolicyPausesAPromptAndTellsItAsAnInterruption) {
  startServer({"module-role-cork trigger_roles=alarm cork_roles=phone"});
  install();
  listen();
  std::vector<std::int64_t> interruptions;
  ZRPlatformInUse().notificationCenter->addObserver(
      audio, AVAudioSessionSilenceSecondaryAudioHintNotification, [&](const NSNotification& hint) {
        if (hint.userInfo.contains(AVAudioSessionInterruptionTypeKey)) {
          interruptions.push_back(hint.integerForKey(AVAudioSessionInterruptionTypeKey));
        }
      });
  speak("one two three four five six seven eight nine ten");
  ASSERT_TRUE(isHeard());
  {
    const auto alarm = server.music("alarm");
    ASSERT_TRUE(ended(1));
    EXPECT_THAT(hearing->ends, ElementsAre(testing::StartsWith("paused one")));
    EXPECT_TRUE(eventually([&] { return !interruptions.empty(); }));
    ASSERT_TRUE(toneBecomes(kToneAmplitude));
    EXPECT_TRUE(synthesizer->isSpeaking());
  }
  ASSERT_TRUE(ended(2));
  EXPECT_THAT(hearing->ends.back(), testing::StartsWith("finished one"));
  EXPECT_THAT(interruptions, ElementsAre(1, 0));
}

class Player : public AVAudioPlayerDelegate {
 public:
  void audioPlayerDidFinishPlayingSuccessfully(std::shared_ptr<AVAudioPlayer>, bool successfully) override {
    ends.push_back(successfully ? "finished" : "failed");
  }
  void audioPlayerDecodeErrorDidOccur(std::shared_ptr<AVAudioPlayer>, const NSError&) override {
    ends.emplace_back("damaged");
  }
  std::vector<std::string> ends;
};

/// Half a second of the tone as a file of that format.
std::string clip(const std::string& path, int format) {
  SF_INFO info{};
  info.samplerate = 44100;
  info.channels = 2;
  info.format = format;
  SNDFILE* const file = ::sf_open(path.c_str(), SFM_WRITE, &info);
  std::vector<double> samples;
  for (int i = 0; i < 2 * 22050; ++i) {
    samples.push_back(0.5 * std::sin(2.0 * std::numbers::pi * 440.0 * (i / 2) / 44100));
  }
  ::sf_write_double(file, samples.data(), static_cast<sf_count_t>(samples.size()));
  ::sf_close(file);
  std::ifstream bytes(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(bytes), {}};
}

TEST_F(Prompts, AClipIsHeardAndItsEndReported) {
  startServer();
  install();
  const std::string bytes = clip(server.folder() / "clip", SF_FORMAT_OGG | SF_FORMAT_VORBIS);
  const auto player = std::get<std::shared_ptr<AVAudioPlayer>>(ZRPlatformInUse().audioPlayers->playerWithData(bytes));
  const auto told = std::make_shared<Player>();
  player->setDelegate(told);
  player->setVolume(0.5F);
  player->play();
  EXPECT_TRUE(player->isPlaying());
  EXPECT_TRUE(toneBecomes(0.25 * 32768.0));
  ASSERT_TRUE(eventually([&] { return !told->ends.empty(); }));
  EXPECT_THAT(told->ends, ElementsAre("finished"));
  EXPECT_FALSE(player->isPlaying());
}

}  // namespace
