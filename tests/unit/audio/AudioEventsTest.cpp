// SPDX-License-Identifier: Apache-2.0
// What each event of the platform leads to, and the session that is deactivated in the end.
#include <ZRCore/ZRAudio.h>
#include <gmock/gmock.h>

#include <functional>

#include "WithFakePlatform.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class AudioEvents : public WithFakePlatform {
 protected:
  AudioEvents() { fake.device->version = "9.0"; }

  ZRFakeSpeechSynthesizer& synthesizer() { return *fake.speech->made.back(); }
  ZRFakeAudioPlayer& player() { return *fake.audioPlayers->made.back(); }

  void say(const char* text, bool interrupt = false) { audio->speakTextInterruptVolume(text, interrupt, 1.0F); }

  /// The calls since the last time.
  std::vector<std::string> calls() { return std::exchange(*fake.audioCalls, {}); }

  void postHint(std::int64_t interruption, std::int64_t hint, std::shared_ptr<const void> poster) {
    fake.notificationCenter->postNotification({.name = AVAudioSessionSilenceSecondaryAudioHintNotification,
                                               .object = std::move(poster),
                                               .userInfo = {{AVAudioSessionInterruptionTypeKey, interruption},
                                                            {AVAudioSessionSilenceSecondaryAudioHintTypeKey, hint}}});
  }

  std::shared_ptr<ZRAudio> audio = ZRAudio::init();
};

TEST_F(AudioEvents, TheEndOfOutputReleasesTheSessionWhereOtherAudioHadBeenPlaying) {
  const struct {
    const char* name;
    std::function<void()> event;
    bool isOfClip;
  } rows[] = {
      {"utterance finished", [this] { synthesizer().finish(); }, false},
      {"utterance cancelled", [this] { synthesizer().stopSpeakingImmediately(), fake.mainQueue->run(); }, false},
      {"utterance paused by a system that then counts it as not spoken",
       [this] { audio->speechSynthesizerDidPauseSpeechUtterance(nullptr, nullptr); }, false},
      {"clip finished", [this] { player().finish(true); }, true},
      {"clip damaged", [this] { player().failToDecode(); }, true},
      {"clip interrupted", [this] { player().interrupt(); }, true},
  };
  for (const auto& row : rows) {
    for (const bool otherAudio : {true, false}) {
      SCOPED_TRACE(std::string(row.name) + (otherAudio ? " with other audio" : ""));
      audio = ZRAudio::init();
      fake.audioSession->otherAudioIsPlaying = otherAudio;
      if (row.isOfClip) {
        audio->playAudioData("clip");
      } else {
        say("Turn left");
        if (std::string_view(row.name).find("paused") != std::string_view::npos) synthesizer().utterances.clear();
      }
      fake.audioSession->otherAudioIsPlaying = !otherAudio;  // what counts is how it was when the output began
      calls();
      row.event();
      EXPECT_EQ(fake.audioSession->isActive, !otherAudio);
      EXPECT_EQ(audio->audioPlayer(), nullptr);
      if (row.isOfClip) {
        EXPECT_TRUE(player().delegate().expired()) << "nothing later may come of it";
      }
      fake.audioSession->isActive = false;
    }
  }
}

TEST_F(AudioEvents, ThePauseOfAnUtteranceLeavesTheSession) {
  fake.audioSession->otherAudioIsPlaying = true;
  say("Turn left");
  calls();
  synthesizer().pause();
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(AudioEvents, TheSessionWaitsForAllOutput) {
  fake.audioSession->otherAudioIsPlaying = true;
  say("Turn left");
  say("Turn right");
  const auto own = std::make_shared<AVSpeechUtterance>("Arrived");
  audio->playAudioData("clip");
  audio->speakUtterance(own);  // stops no clip
  calls();
  synthesizer().finish();
  EXPECT_THAT(calls(), IsEmpty()) << "the clip plays on";
  player().finish(true);
  EXPECT_THAT(calls(), ElementsAre("stop player", "deactivate 1"));
}

TEST_F(AudioEvents, OnlyTheSessionsOwnHintIsHeardAndItsInterruptionKeyDecides) {
  const struct {
    std::int64_t interruption, hint;
    bool otherAudio, isOwn, releases;
  } rows[] = {
      {1, 0, false, true, true},  {1, 0, false, false, false}, {0, 1, false, true, false},
      {2, 1, false, true, false}, {0, 0, true, true, true},    {0, 1, true, true, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(std::vector<std::int64_t>{row.interruption, row.hint, row.otherAudio}));
    audio->setOtherAudioWasPlayingWhenSpeechStarted(true);
    fake.audioSession->otherAudioIsPlaying = row.otherAudio;
    calls();
    postHint(row.interruption, row.hint, row.isOwn ? fake.audioSession : std::make_shared<ZRFakeAudioSession>(nullptr));
    EXPECT_EQ(calls().size(), row.releases ? 1U : 0U);
  }
  audio->setOtherAudioWasPlayingWhenSpeechStarted(false);
  postHint(1, 1, fake.audioSession);
  EXPECT_THAT(calls(), IsEmpty()) << "a request only";
}

TEST_F(AudioEvents, SystemsBelowVersion8GiveNoHintAndAReleasedObjectHearsNothing) {
  fake.device->version = "7.1.2";
  const auto old = ZRAudio::init();
  old->setOtherAudioWasPlayingWhenSpeechStarted(true);
  audio.reset();
  fake.audioSession->otherAudioIsPlaying = true;
  postHint(1, 1, fake.audioSession);
  EXPECT_THAT(calls(), IsEmpty());
  fake.audioSession->otherAudioIsPlaying = false;
  fake.notificationCenter->postNotificationName(UIApplicationWillEnterForegroundNotification);
  EXPECT_THAT(calls(), ElementsAre("category AVAudioSessionCategoryPlayback 19", "activate"))
      << "of the one that lives";
}

TEST_F(AudioEvents, TheBackgroundReleasesTheSessionAndTheForegroundClaimsItUnlessOthersPlay) {
  say("Turn left");
  calls();
  fake.notificationCenter->postNotificationName(UIApplicationDidEnterBackgroundNotification);
  EXPECT_THAT(calls(), IsEmpty()) << "while it speaks";
  synthesizer().finish();
  fake.notificationCenter->postNotificationName(UIApplicationDidEnterBackgroundNotification);
  EXPECT_THAT(calls(), ElementsAre("deactivate 1"));
  fake.notificationCenter->postNotificationName(UIApplicationWillEnterForegroundNotification);
  EXPECT_THAT(calls(), ElementsAre("category AVAudioSessionCategoryPlayback 19", "activate"));

  fake.audioSession->otherAudioIsPlaying = true;
  fake.notificationCenter->postNotificationName(UIApplicationDidEnterBackgroundNotification);
  fake.notificationCenter->postNotificationName(UIApplicationWillEnterForegroundNotification);
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(AudioEvents, ASessionThatRefusesIsAskedAgainAfterAnAllButSilentUtterance) {
  std::vector<std::string> posted;
  fake.notificationCenter->addObserver(audio, ZRNavRecordingUtteranceNotification, [&](const NSNotification& post) {
    posted.push_back(std::static_pointer_cast<const AVSpeechUtterance>(post.object)->speechString());
  });
  fake.audioSession->otherAudioIsPlaying = true;
  fake.audioSession->deactivationResult = {.success = false};
  say("Turn left");
  for (int attempt = 0; attempt < 3; ++attempt) {
    calls();
    const auto former = fake.speech->made.back();
    synthesizer().finish();
    EXPECT_THAT(calls(), ElementsAre("deactivate 1", "stop speech", "category AVAudioSessionCategoryPlayback 19",
                                     "activate", "speak no worky"));
    EXPECT_NE(fake.speech->made.back(), former) << "a fresh one, for the former had fallen silent";
    EXPECT_EQ(audio->utterance()->volume(), 0.001F);
  }
  EXPECT_THAT(posted, ElementsAre("Turn left", "no worky", "no worky", "no worky"));

  fake.audioSession->otherAudioIsPlaying = false;
  synthesizer().finish();
  EXPECT_FALSE(audio->otherAudioWasPlayingWhenSpeechStarted()) << "the silent utterance looks anew, too";
  calls();
  synthesizer().finish();
  EXPECT_THAT(calls(), IsEmpty()) << "and so ends the attempts";
}

TEST_F(AudioEvents, ACancellationInsideTheStopIsSafe) {
  fake.audioSession->otherAudioIsPlaying = true;
  fake.audioSession->deactivationResult = {.success = false};
  say("one");
  say("two");
  const std::weak_ptr<ZRFakeSpeechSynthesizer> first = fake.speech->made.front();
  fake.speech->made.front()->cancelsInsideStop = true;
  fake.speech->made.clear();  // only the audio object holds it
  calls();
  say("three", true);
  EXPECT_TRUE(first.expired());
  EXPECT_THAT(calls(), testing::Contains("speak three"));
  EXPECT_EQ(audio->utterance()->speechString(), "three");
  ASSERT_EQ(fake.speech->made.size(), 1U) << "the silent one is spoken, so three waits behind it";
  EXPECT_EQ(synthesizer().utterances.back()->speechString(), "three");

  fake.notificationCenter->addObserver(fake.log, ZRNavRecordingUtteranceNotification,
                                       [&](const std::string&) { audio.reset(); });
  synthesizer().cancelsInsideStop = true;
  audio->stopAudioAndSpeechPlayback();  // a sanitizer tells if the object does not outlive this
  EXPECT_EQ(audio, nullptr);
}

class EveryAnswer : public ZRDidFailInitialization,
                    public ZRDidFinishSpeechUtterance,
                    public ZRAudioPlayerDidFinishPlaying {
 public:
  explicit EveryAnswer(ZRFakeAudioCalls calls) : calls_(std::move(calls)) {}
  void didFailInitialization() override { calls_->emplace_back("told of voice"); }
  void speechSynthesizerDidFinishSpeechUtterance(const std::shared_ptr<AVSpeechSynthesizer>& synthesizer,
                                                 const std::shared_ptr<AVSpeechUtterance>& utterance) override {
    calls_->push_back("told of " + utterance->speechString());
    finished = synthesizer;
  }
  void audioPlayerDidFinishPlayingSuccessfully(const std::shared_ptr<AVAudioPlayer>& player,
                                               bool successfully) override {
    calls_->push_back(successfully ? "told of clip" : "told of half a clip");
    finishedPlayer = player;
  }
  std::shared_ptr<AVSpeechSynthesizer> finished;
  std::shared_ptr<AVAudioPlayer> finishedPlayer;

 private:
  ZRFakeAudioCalls calls_;
};

TEST_F(AudioEvents, TheDelegateIsToldLastOfWhatHasFinishedWithTheObjectsThatDidIt) {
  const auto delegate = std::make_shared<EveryAnswer>(fake.audioCalls);
  audio->setDelegate(delegate);
  fake.audioSession->otherAudioIsPlaying = true;
  fake.audioSession->deactivationResult = {.success = false};
  say("Turn left");
  const AVSpeechSynthesizer* const first = audio->speechSynth().get();
  fake.speech->made.front()->finish();
  EXPECT_EQ(calls().back(), "told of Turn left");
  EXPECT_EQ(delegate->finished.get(), first) << "which has been replaced meanwhile";
  EXPECT_NE(audio->speechSynth().get(), first);

  fake.audioSession->deactivationResult = {};
  for (const bool successfully : {true, false}) {
    audio->playAudioData("clip");
    fake.mainQueue->run();
    calls();
    player().finish(successfully);
    EXPECT_THAT(calls(),
                ElementsAre("stop player", "deactivate 1", successfully ? "told of clip" : "told of half a clip"));
    EXPECT_EQ(delegate->finishedPlayer, fake.audioPlayers->made.back());
  }
  for (const bool damaged : {true, false}) {
    audio->playAudioData("clip");
    fake.mainQueue->run();
    calls();
    damaged ? player().failToDecode() : player().interrupt();
    EXPECT_THAT(calls(), ElementsAre("stop player", "deactivate 1")) << "nothing has finished";
  }
}

TEST_F(AudioEvents, ADelegateMayAnswerNothingOrBeGone) {
  const auto silent = std::make_shared<ZRAudioDelegate>();
  auto gone = std::make_shared<EveryAnswer>(fake.audioCalls);
  fake.speech->voices = ZRFakeSpeech::Voices::absent;
  for (const bool isGone : {false, true}) {
    audio->setDelegate(isGone ? std::shared_ptr<ZRAudioDelegate>(gone) : silent);
    if (isGone) gone.reset();
    say("Turn left");
    synthesizer().finish();
    audio->playAudioData("clip");
    player().finish(true);
  }
  EXPECT_THAT(calls(), testing::Not(testing::Contains(testing::HasSubstr("told"))));
}

}  // namespace
