// SPDX-License-Identifier: Apache-2.0
// What speaking, playing and starting the session ask of the platform, in which order.
#include <ZRCore/ZRAudio.h>
#include <gmock/gmock.h>

#include "SystemVersion.h"
#include "WithFakePlatform.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* kNavigation = "category AVAudioSessionCategoryPlayback 19";

class AudioOutput : public WithFakePlatform {
 protected:
  std::vector<std::string> calls() { return std::exchange(*fake.audioCalls, {}); }
  void say(const char* text, bool interrupt = false) { audio->speakTextInterruptVolume(text, interrupt, 0.5F); }

  std::shared_ptr<ZRAudio> audio = ZRAudio::init();
};

TEST(SystemVersion, ChoosesTheRateByComponentsAsNumbers) {
  const struct {
    std::optional<std::string_view> version;
    float rate;
    bool hint;
  } rows[] = {
      {"7", 0.25F, false},        {"7.1.2", 0.25F, false}, {"7.99999999999999999999999", 0.25F, false},
      {"8", 0.12F, true},         {"8.0", 0.12F, true},    {"8.0.0", 0.12F, true},
      {"8.4.1", 0.12F, true},     {"8.10", 0.12F, true},   {"9.0", 0.5F, true},
      {"9", 0.5F, true},          {"10.2", 0.5F, true},    {"99999999999999999999999", 0.5F, true},
      {"12", 0.5F, true},         {"", 0.25F, false},      {"trixie/sid", 0.25F, false},
      {std::nullopt, 0.5F, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.version.value_or("none"));
    EXPECT_EQ(speechRateForVersion(row.version), row.rate);
    EXPECT_EQ(versionHasSilenceHint(row.version), row.hint);
  }
}

TEST_F(AudioOutput, APromptStartsTheSessionThenSpeaksWithVoiceRateAndVolumeThenIsPosted) {
  fake.device->version = "8.1";
  audio = ZRAudio::init();
  EXPECT_FALSE(audio->isSpeaking());
  EXPECT_EQ(audio->utterance(), nullptr);
  EXPECT_THAT(fake.speech->made, IsEmpty()) << "asking makes no synthesizer";
  std::shared_ptr<const void> posted;
  fake.notificationCenter->addObserver(audio, "ZRNavRecordingUtteranceNotification", [&](const NSNotification& post) {
    posted = post.object;
    EXPECT_EQ(fake.audioCalls->back(), "speak Turn left");
    EXPECT_EQ(audio->utterance(), post.object);
  });
  say("Turn left");
  EXPECT_THAT(calls(), ElementsAre(kNavigation, "activate", "speak Turn left"));
  ASSERT_NE(audio->utterance(), nullptr);
  EXPECT_EQ(posted, audio->utterance());
  EXPECT_EQ(audio->utterance()->rate(), 0.12F);
  EXPECT_EQ(audio->utterance()->volume(), 0.5F);
  EXPECT_EQ(audio->utterance()->voice()->language(), "en-US");
  EXPECT_EQ(audio->utterance()->voice(), audio->voice()) << "made once";
  EXPECT_TRUE(audio->isSpeaking());
  EXPECT_EQ(audio->speechSynth()->delegate().lock(), audio);
}

TEST_F(AudioOutput, ASecondPromptWaitsOnTheSameSynthesizerOrSilencesIt) {
  say("one");
  say("two");
  EXPECT_EQ(fake.speech->made.size(), 1U);
  EXPECT_THAT(fake.speech->made[0]->utterances, testing::SizeIs(2));
  calls();
  say("three", true);
  EXPECT_THAT(calls(), ElementsAre("stop speech", kNavigation, "activate", "speak three"));
  ASSERT_EQ(fake.speech->made.size(), 2U) << "one that has fallen silent is replaced";
  fake.mainQueue->run();  // the two cancellations
  EXPECT_TRUE(audio->isSpeaking());
  fake.speech->made[1]->finish();
  say("four");
  EXPECT_EQ(fake.speech->made.size(), 3U);
}

TEST_F(AudioOutput, WhetherOtherAudioPlaysIsLookedAtForEachTextAndClipAlone) {
  for (const bool playing : {true, false}) {
    fake.audioSession->otherAudioIsPlaying = playing;
    say("text");
    EXPECT_EQ(audio->otherAudioWasPlayingWhenSpeechStarted(), playing);
    fake.audioSession->otherAudioIsPlaying = !playing;
    audio->speakUtterance(std::make_shared<AVSpeechUtterance>("utterance"));
    EXPECT_EQ(audio->otherAudioWasPlayingWhenSpeechStarted(), playing);
    audio->playAudioData("clip");
    EXPECT_EQ(audio->otherAudioWasPlayingWhenSpeechStarted(), !playing);
  }
}

TEST_F(AudioOutput, AClipStopsSpeechAndEarlierClipsAndTextStopsClips) {
  say("Turn left");
  audio->playAudioData("first");
  calls();
  audio->playAudioData("second");
  EXPECT_THAT(calls(), ElementsAre("stop speech", "stop player", kNavigation, "activate", "play"));
  EXPECT_EQ(audio->audioPlayer(), fake.audioPlayers->made.at(1));
  EXPECT_EQ(audio->audioPlayer()->delegate().lock(), audio);
  EXPECT_EQ(fake.audioPlayers->made.at(1)->data, "second");
  say("Turn right");
  EXPECT_THAT(calls(), ElementsAre("stop player", kNavigation, "activate", "speak Turn right"));
  EXPECT_EQ(audio->audioPlayer(), nullptr);
  EXPECT_TRUE(fake.audioPlayers->made.at(1)->delegate().expired());
}

TEST_F(AudioOutput, AClipThatCannotBeReadHasAlreadyStoppedTheOutputAndDoesNothingElse) {
  say("Turn left");
  audio->playAudioData("clip");
  calls();
  fake.audioPlayers->readsClips = false;
  audio->playAudioData("junk");
  EXPECT_THAT(calls(), ElementsAre("stop speech", "stop player"));
  EXPECT_EQ(audio->audioPlayer(), nullptr);
  EXPECT_THAT(fake.log->lines, IsEmpty());
}

TEST_F(AudioOutput, TheVolumeGoesToTheUtteranceAndTheClip) {
  audio->setVolume(0.1F);  // of nothing
  say("Turn left");
  audio->playAudioData("clip");
  audio->setVolume(0.25F);
  EXPECT_EQ(audio->utterance()->volume(), 0.25F);
  EXPECT_EQ(fake.audioPlayers->made[0]->volume, 0.25F);
}

TEST_F(AudioOutput, AVoiceThatCannotBeMadeIsToldEachTimeAndSpeechGoesOn) {
  struct Host : ZRDidFailInitialization {
    void didFailInitialization() override {
      ++told;
      const std::weak_ptr<ZRAudio> speaking = owner != nullptr ? std::exchange(*owner, nullptr) : nullptr;
      EXPECT_EQ(speaking.expired(), owner == nullptr);
    }
    int told = 0;
    std::shared_ptr<ZRAudio>* owner = nullptr;
  };
  const auto host = std::make_shared<Host>();
  audio->setDelegate(host);
  for (const auto voices : {ZRFakeSpeech::Voices::absent, ZRFakeSpeech::Voices::throwing}) {
    fake.speech->voices = voices;
    say("Turn left");
    EXPECT_EQ(audio->utterance()->voice(), nullptr);
    EXPECT_EQ(calls().back(), "speak Turn left");
  }
  EXPECT_EQ(host->told, 2);
  EXPECT_THAT(fake.log->lines, testing::ElementsAreArray(std::vector<std::string>(
                                   2, "Encountered Apple bug with voice synthesis -- mitigating")));
  fake.speech->voices = ZRFakeSpeech::Voices::made;
  say("Turn left");
  EXPECT_NE(audio->utterance()->voice(), nullptr);

  fake.speech->voices = ZRFakeSpeech::Voices::absent;
  audio->setVoice(nullptr);
  host->owner = &audio;
  say("Turn right");
  EXPECT_EQ(calls().back(), "speak Turn right") << "though nobody else holds the object";
}

TEST_F(AudioOutput, TheSessionsOperationsAskForWhatTheyAreFor) {
  audio->enableVolumeRockerControl();
  EXPECT_THAT(calls(), ElementsAre(kNavigation, "activate"));
  audio->setUseHFP(true);
  audio->startAudioSesssionForNavigation();
  EXPECT_THAT(calls(), ElementsAre("category AVAudioSessionCategoryPlayAndRecord 6", "activate"));
  audio->startAudioSessionForMovie();
  EXPECT_THAT(calls(), ElementsAre("category AVAudioSessionCategoryAmbient 0", "activate"));
  fake.audioSession->otherAudioIsPlaying = true;
  audio->enableVolumeRockerControl();
  EXPECT_THAT(calls(), IsEmpty());

  EXPECT_TRUE(audio->stopAudioSession());
  fake.audioSession->deactivationResult = {.success = false};
  EXPECT_FALSE(audio->stopAudioSession());
  audio->forceStopSession();
  EXPECT_THAT(calls(), ElementsAre("deactivate 1", "deactivate 1", "deactivate 1")) << "and no silent utterance";
  EXPECT_THAT(fake.log->lines, IsEmpty());
}

TEST_F(AudioOutput, WhatFailsInStartingTheSessionIsLoggedAndTheOutputGoesOn) {
  const NSError error{.domain = "D", .code = -50, .userInfo = {{NSLocalizedDescriptionKey, "no"}}};
  const std::string text = "Error Domain=D Code=-50 \"no\"", none = "(null)";
  const struct {
    AVAudioSessionResult category, activation;
    const char* successful;  ///< null: nothing is logged
  } rows[] = {
      {{true, std::nullopt}, {true, std::nullopt}, nullptr}, {{false, std::nullopt}, {true, std::nullopt}, "NO"},
      {{true, std::nullopt}, {false, error}, "NO"},          {{true, error}, {true, std::nullopt}, "YES"},
      {{true, std::nullopt}, {true, error}, "YES"},          {{false, error}, {false, error}, "NO"},
  };
  for (const auto& row : rows) {
    fake.audioSession->categoryResult = row.category;
    fake.audioSession->activationResult = row.activation;
    fake.log->lines.clear();
    say("text");
    EXPECT_THAT(calls(), ElementsAre(kNavigation, "activate", testing::_)) << "both are tried";
    if (row.successful) {
      EXPECT_THAT(fake.log->lines,
                  ElementsAre(std::string("ERROR STARTING AUDIO SESSION. SUCCESSFUL: ") + row.successful +
                              " ||| SESSION ERROR: " + (row.category.error ? text : none) +
                              " ||| ACTIVE ERROR: " + (row.activation.error ? text : none)));
    } else {
      EXPECT_THAT(fake.log->lines, IsEmpty());
    }
    audio->speechSynth()->stopSpeakingImmediately();
    calls();
  }
}

TEST_F(AudioOutput, TheInstanceIsShared) {
  EXPECT_EQ(ZRAudio::sharedInstance(), ZRAudio::sharedInstance());
  EXPECT_FALSE(ZRAudio::sharedInstance()->useHFP());
}

}  // namespace
