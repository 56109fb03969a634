// SPDX-License-Identifier: Apache-2.0
// Other applications' sound while we speak, measured where it comes out.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <fstream>

#include "SoundServer.h"

using testing::ElementsAre;

namespace {

constexpr const char* kPrompt = "In four hundred meters, turn left onto Main Street";
constexpr float kSilent = 0.0F;  // the music can then be measured while the prompt goes on

class Ducking : public WithSoundServer {
 protected:
  /// A session that writes down whether it is active, before the real one.
  class Watched : public AVAudioSession {
   public:
    explicit Watched(std::shared_ptr<AVAudioSession> real) : real_(std::move(real)) {}
    bool isOtherAudioPlaying() const override { return real_->isOtherAudioPlaying(); }
    AVAudioSessionResult setCategoryWithOptions(const std::string& category,
                                                AVAudioSessionCategoryOptions options) override {
      return real_->setCategoryWithOptions(category, options);
    }
    AVAudioSessionResult setActiveWithOptions(bool active, AVAudioSessionSetActiveOptions options) override {
      isActive = active;
      return real_->setActiveWithOptions(active, options);
    }
    bool isActive = false;

   private:
    std::shared_ptr<AVAudioSession> real_;
  };

  /// The music itself may have gaps on a busy machine, so no single level counts.
  double medianToneWhileSpeaking() {
    std::vector<double> levels;
    EXPECT_TRUE(eventually([&] {
      levels.push_back(monitor->tone());
      return !audio->isSpeaking();
    }));
    std::nth_element(levels.begin(), levels.begin() + static_cast<std::ptrdiff_t>(levels.size() / 2), levels.end());
    return levels[levels.size() / 2];
  }

  bool isSilentAgain() {
    return eventually([this] { return !audio->isSpeaking(); });
  }
};

TEST_F(Ducking, MusicFallsBy18DecibelsWhileAPromptIsHeardAndTheSessionIsReleased) {
  startServer();
  const auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  const double before = monitor->tone();
  install();
  say(kPrompt, kSilent);
  EXPECT_TRUE(audio->otherAudioWasPlayingWhenSpeechStarted()) << "known at the first prompt";
  EXPECT_TRUE(toneBecomes(kLowered));
  EXPECT_TRUE(audio->isSpeaking());
  EXPECT_TRUE(
      eventually([&, end = monitor->samples.size() + 4 * Monitor::kBlock] { return monitor->samples.size() > end; }));
  const double during = monitor->tone();
  EXPECT_TRUE(toneBecomes(kToneAmplitude));
  EXPECT_FALSE(audio->isSpeaking());
  EXPECT_TRUE(ZRLinuxSoundIsSettled(ZRPlatformInUse()));
  EXPECT_TRUE(std::filesystem::is_empty(server.folder() / "zrcore")) << "nothing is left to be restored";
  EXPECT_TRUE(
      eventually([&, end = monitor->samples.size() + 4 * Monitor::kBlock] { return monitor->samples.size() > end; }));
  const auto row = [before](const char* when, double level) {
    return std::string("| ") + when + " | " + std::to_string(level) + " | " +
           std::to_string(20.0 * std::log10(level / before)) + " |\n";
  };
  std::ofstream(ZRCORE_REPORTS "/levels.md")
      << "| the tone on the monitor | amplitude | dB |\n|---|---|---|\n"
      << row("before", before) << row("during the prompt", during) << row("after", monitor->tone());
}

TEST_F(Ducking, MusicBetweenPromptsIsLoudThoughTheSessionStaysActive) {
  startServer();
  ZRPlatform platform = makeLinuxPlatform();
  const auto session = std::make_shared<Watched>(platform.audioSession);
  platform.audioSession = session;
  ASSERT_TRUE(ZRPlatformInstall(platform));
  audio = ZRAudio::init();
  say(kPrompt, kSilent);
  ASSERT_TRUE(isSilentAgain());
  EXPECT_TRUE(session->isActive) << "there was no music";
  const auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  say(kPrompt, kSilent);
  EXPECT_TRUE(toneBecomes(kLowered));
  EXPECT_TRUE(eventually([&] { return !session->isActive; }));
  EXPECT_TRUE(toneBecomes(kToneAmplitude));
}

TEST_F(Ducking, MusicThatStartsDuringAPromptIsLoweredUntilItsEndAndHinted) {
  startServer();
  install();
  std::vector<std::int64_t> hints;
  ZRPlatformInUse().notificationCenter->addObserver(
      audio, AVAudioSessionSilenceSecondaryAudioHintNotification, ZRPlatformInUse().audioSession,
      [&](const NSNotification& hint) {
        hints.push_back(hint.integerForKey(AVAudioSessionSilenceSecondaryAudioHintTypeKey));
      });
  say(std::string(kPrompt) + ". " + kPrompt, kSilent);
  ASSERT_TRUE(eventually([] { return !ZRLinuxSoundIsSettled(ZRPlatformInUse()); }));
  auto player = server.music();
  EXPECT_TRUE(toneBecomes(kLowered));
  EXPECT_TRUE(audio->isSpeaking());
  EXPECT_TRUE(toneBecomes(kToneAmplitude));
  EXPECT_THAT(hints, ElementsAre(1));
  player.reset();
  EXPECT_TRUE(eventually([&] { return hints.size() == 2; }));
  EXPECT_EQ(hints.back(), 0);
}

TEST_F(Ducking, HostsThatSpeakAtOnceLowerMusicOnceAndTheLastAliveRestoresIt) {
  startServer();
  const auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  install();
  const std::string longer = std::string(kPrompt) + ". " + kPrompt;
  say(kPrompt, kSilent);
  ASSERT_TRUE(toneBecomes(kLowered));
  ChildProcess other({ZRCORE_TOOL, "say", longer, "--volume", "0"});
  EXPECT_NEAR(medianToneWhileSpeaking(), kLowered, 0.1 * kLowered);
  ASSERT_TRUE(eventually([] { return ZRLinuxSoundIsSettled(ZRPlatformInUse()); }));
  monitor->forget();
  ASSERT_TRUE(eventually([&] { return monitor->samples.size() > 4 * Monitor::kBlock; }));
  EXPECT_NEAR(monitor->tone(), kLowered, 0.1 * kLowered) << "the other one still speaks";
  EXPECT_EQ(other.exitCode(std::chrono::seconds(20)), 0);
  EXPECT_TRUE(toneBecomes(kToneAmplitude));
  const ChildProcess killed({ZRCORE_TOOL, "say", longer, "--volume", "0"});
  ASSERT_TRUE(toneBecomes(kLowered));
  say(kPrompt, kSilent);
  killed.send(SIGKILL);
  EXPECT_NEAR(medianToneWhileSpeaking(), kLowered, 0.1 * kLowered);
  EXPECT_TRUE(toneBecomes(kToneAmplitude));
  EXPECT_TRUE(std::filesystem::is_empty(server.folder() / "zrcore"));
}

TEST_F(Ducking, AMoviesSessionLowersNothing) {
  startServer();
  const auto player = server.music();
  install();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  audio->speechSynth()->speakUtterance(std::make_shared<AVSpeechUtterance>(""));  // no session at all
  audio->startAudioSessionForMovie();
  const auto utterance = std::make_shared<AVSpeechUtterance>(kPrompt);
  utterance->setVolume(kSilent);
  audio->speechSynth()->speakUtterance(utterance);
  EXPECT_NEAR(medianToneWhileSpeaking(), kToneAmplitude, 0.1 * kToneAmplitude);
}

TEST_F(Ducking, AServerThatLowersStreamsItselfIsLeftToIt) {
  startServer({"module-role-ducking trigger_roles=phone ducking_roles=music volume=-18dB"});
  const auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  install();
  say(kPrompt, kSilent);
  EXPECT_TRUE(toneBecomes(kLowered)) << "and not by 36 dB";
  EXPECT_NEAR(medianToneWhileSpeaking(), kLowered, 0.1 * kLowered);
  EXPECT_TRUE(toneBecomes(kToneAmplitude));
}

}  // namespace
