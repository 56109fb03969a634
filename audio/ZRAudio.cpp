// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRAudio.h>
#include <ZRCore/ZRPlatform.h>

#include <utility>
#include <variant>

#include "SystemVersion.h"

const char* const ZRNavRecordingUtteranceNotification = "ZRNavRecordingUtteranceNotification";

namespace {

constexpr const char* kVoiceLanguage = "en-US";
constexpr const char* kVoiceFailedLine = "Encountered Apple bug with voice synthesis -- mitigating";

bool isOtherAudioPlaying() { return ZRPlatformInUse().audioSession->isOtherAudioPlaying(); }

/// A voice that cannot be made comes as null or, from some systems, as an exception of whatever kind.
std::shared_ptr<AVSpeechSynthesisVoice> voiceOrNull() {
  try {
    return ZRPlatformInUse().speech->voiceWithLanguage(kVoiceLanguage);
  } catch (...) {
    return nullptr;
  }
}

}  // namespace

ZRAudioDelegate::~ZRAudioDelegate() = default;
ZRDidFailInitialization::~ZRDidFailInitialization() = default;
ZRDidFinishSpeechUtterance::~ZRDidFinishSpeechUtterance() = default;
ZRAudioPlayerDidFinishPlaying::~ZRAudioPlayerDidFinishPlaying() = default;

const std::shared_ptr<ZRAudio>& ZRAudio::sharedInstance() {
  static const auto& instance = *new std::shared_ptr<ZRAudio>(init());  // never released
  return instance;
}

std::shared_ptr<ZRAudio> ZRAudio::init() {
  const std::shared_ptr<ZRAudio> audio(new ZRAudio);
  audio->observe();
  return audio;
}

ZRAudio::ZRAudio() : speechUtteranceRate_(speechRateForVersion(ZRPlatformInUse().device->systemVersion())) {}

ZRAudio::~ZRAudio() = default;

void ZRAudio::observe() {
  const ZRPlatform& platform = ZRPlatformInUse();
  NSNotificationCenter& center = *platform.notificationCenter;
  const std::weak_ptr<ZRAudio> self = weak_from_this();
  if (versionHasSilenceHint(platform.device->systemVersion())) {
    center.addObserver(self, AVAudioSessionSilenceSecondaryAudioHintNotification, platform.audioSession,
                       [this](const NSNotification& notification) { handleInterruption(notification); });
  }
  for (const char* name : {UIApplicationDidEnterBackgroundNotification, UIApplicationWillEnterForegroundNotification}) {
    center.addObserver(self, name, [this](const NSNotification& notification) { handleBackground(notification); });
  }
}

void ZRAudio::setDelegate(std::weak_ptr<ZRAudioDelegate> delegate) {
  const auto asked = delegate.lock();
  didFailInitialization_ = std::dynamic_pointer_cast<ZRDidFailInitialization>(asked);
  didFinishSpeechUtterance_ = std::dynamic_pointer_cast<ZRDidFinishSpeechUtterance>(asked);
  audioPlayerDidFinishPlaying_ = std::dynamic_pointer_cast<ZRAudioPlayerDidFinishPlaying>(asked);
  delegate_ = std::move(delegate);
}

const std::shared_ptr<AVSpeechSynthesizer>& ZRAudio::speechSynth() {
  if (!speechSynth_) {
    speechSynth_ = ZRPlatformInUse().speech->makeSynthesizer();
    speechSynth_->setDelegate(weak_from_this());
  }
  return speechSynth_;
}

void ZRAudio::setSpeechSynth(std::shared_ptr<AVSpeechSynthesizer> synthesizer) {
  speechSynth_ = std::move(synthesizer);
}

void ZRAudio::setAudioPlayer(std::shared_ptr<AVAudioPlayer> player) { audioPlayer_ = std::move(player); }

std::shared_ptr<AVSpeechSynthesisVoice> ZRAudio::voice() {
  const auto held = shared_from_this();  // the delegate may let go of this object
  if (!voice_) voice_ = voiceOrNull();
  if (!voice_) {
    ZRPlatformInUse().log->writeLine(kVoiceFailedLine);
    if (const auto delegate = didFailInitialization_.lock()) delegate->didFailInitialization();
  }
  return voice_;
}

void ZRAudio::setVoice(std::shared_ptr<AVSpeechSynthesisVoice> voice) { voice_ = std::move(voice); }

void ZRAudio::setUtterance(std::shared_ptr<AVSpeechUtterance> utterance) { utterance_ = std::move(utterance); }

void ZRAudio::speakTextInterruptVolume(const std::string& text, bool interrupt, float volume) {
  const auto held = shared_from_this();  // as in `voice`
  otherAudioWasPlayingWhenSpeechStarted_ = isOtherAudioPlaying();
  const auto utterance = std::make_shared<AVSpeechUtterance>(text);
  if (const auto english = voice()) utterance->setVoice(english);
  utterance->setRate(speechUtteranceRate_);
  utterance->setVolume(volume);
  stopAudioPlayer();
  if (interrupt) stopSpeechPlayback();
  speakUtterance(utterance);
}

void ZRAudio::speakUtterance(const std::shared_ptr<AVSpeechUtterance>& utterance) {
  startAudioSesssionForNavigation();
  if (!isSpeaking()) speechSynth_.reset();
  speechSynth()->speakUtterance(utterance);
  utterance_ = utterance;
  ZRPlatformInUse().notificationCenter->postNotification(
      {.name = ZRNavRecordingUtteranceNotification, .object = utterance, .userInfo = {}});
}

void ZRAudio::playAudioData(std::string_view data) {
  const auto held = shared_from_this();  // as in `stopAudioAndSpeechPlayback`
  otherAudioWasPlayingWhenSpeechStarted_ = isOtherAudioPlaying();
  stopAudioAndSpeechPlayback();
  auto made = ZRPlatformInUse().audioPlayers->playerWithData(data);
  auto* const player = std::get_if<std::shared_ptr<AVAudioPlayer>>(&made);
  if (player == nullptr) return;
  audioPlayer_ = std::move(*player);
  audioPlayer_->setDelegate(weak_from_this());
  startAudioSesssionForNavigation();
  audioPlayer_->play();
}

void ZRAudio::setVolume(float volume) {
  if (utterance_) utterance_->setVolume(volume);
  if (audioPlayer_) audioPlayer_->setVolume(volume);
}

bool ZRAudio::isSpeaking() const { return speechSynth_ && speechSynth_->isSpeaking(); }

void ZRAudio::stopSpeechPlayback() {
  // Held: a cancellation that is reported inside the call may lead to a fresh synthesizer.
  if (const auto synthesizer = speechSynth_) synthesizer->stopSpeakingImmediately();
}

void ZRAudio::stopAudioPlayer() {
  const auto player = std::exchange(audioPlayer_, nullptr);
  if (!player) return;
  player->stop();
  player->setDelegate({});
}

void ZRAudio::stopAudioAndSpeechPlayback() {
  const auto held = shared_from_this();  // a cancellation that is reported inside the stop may lead to its release
  stopSpeechPlayback();
  stopAudioPlayer();
}
