// SPDX-License-Identifier: Apache-2.0
#include "SpeechDesk.h"

#include <ZRCore/NSString_ZR.h>

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace demo {

namespace {

struct Language {
  const char* tag;
  const char* name;
};
/// The first is the one that prompts are spoken in unless a host says otherwise.
constexpr std::array<Language, 6> kLanguages{{{"en-US", "English (United States)"},
                                              {"en-GB", "English (Great Britain)"},
                                              {"de-DE", "Deutsch"},
                                              {"fr-FR", "Français"},
                                              {"es-ES", "Español"},
                                              {"it-IT", "Italiano"}}};

/// Null too where the system throws.
std::shared_ptr<AVSpeechSynthesisVoice> voiceOrNull(ZRSpeech& speech, const char* language) {
  try {
    return speech.voiceWithLanguage(language);
  } catch (const std::exception&) {
    return nullptr;
  }
}

}  // namespace

/// Which prompts have still to be heard.
class SpeechDesk::Hearing final : public ZRDidFinishSpeechUtterance {
 public:
  void speechSynthesizerDidFinishSpeechUtterance(const std::shared_ptr<AVSpeechSynthesizer>&,
                                                 const std::shared_ptr<AVSpeechUtterance>& utterance) override {
    std::erase(awaited, utterance);
  }

  std::vector<std::shared_ptr<AVSpeechUtterance>> awaited;
  bool hasMissed = false;
};

SpeechDesk::SpeechDesk(Services services) : services_(std::move(services)), hearing_(std::make_shared<Hearing>()) {
  services_.audio.setDelegate(hearing_);
  for (const auto& [tag, name] : kLanguages) {
    if (auto voice = voiceOrNull(services_.speech, tag)) voices_.push_back({name, std::move(voice)});
  }
}

bool SpeechDesk::speak(const Prompt& prompt) {
  if (!canSpeak() || NSString_ZR::isBlank(prompt.text)) return false;
  if (prompt.interrupts) hearing_->awaited.clear();
  hearing_->hasMissed = false;
  ZRAudio& audio = services_.audio;
  audio.setVoice(voices_[std::min(prompt.voice, voices_.size() - 1)].voice);
  audio.setSpeechUtteranceRate(prompt.rate);
  audio.speakTextInterruptVolume(prompt.text, prompt.interrupts, prompt.volume);
  hearing_->awaited.push_back(audio.utterance());
  return true;
}

void SpeechDesk::stop() {
  hearing_->awaited.clear();
  hearing_->hasMissed = false;
  services_.audio.stopAudioAndSpeechPlayback();
}

void SpeechDesk::step() {
  if (hearing_->awaited.empty() || isSpeaking()) return;
  // Behind what the synthesizer has still to tell.
  services_.mainQueue.post([weak = std::weak_ptr(hearing_), &audio = services_.audio] {
    const auto hearing = weak.lock();
    if (!hearing || audio.isSpeaking() || hearing->awaited.empty()) return;
    hearing->awaited.clear();
    hearing->hasMissed = true;
  });
}

std::string SpeechDesk::faultText() const {
  if (!hearing_->hasMissed) return {};
  const std::string fault = services_.lastFault();
  return "The prompt was not heard" + (fault.empty() ? "." : ": " + fault + ".") +
         " \u201Czrcore doctor\u201D tells what is missing.";
}

SpeechDesk::OtherAudio SpeechDesk::otherAudio() const {
  if (isSpeaking() && services_.audio.otherAudioWasPlayingWhenSpeechStarted()) return OtherAudio::ducked;
  return services_.session.isOtherAudioPlaying() ? OtherAudio::playing : OtherAudio::silent;
}

std::string SpeechDesk::statusText() const {
  if (!canSpeak()) return "This machine cannot speak";
  const std::string text = isSpeaking() ? "Speaking" : "Silent";
  switch (otherAudio()) {
    case OtherAudio::ducked:
      return text + "; the music is ducked";
    case OtherAudio::playing:
      return text + "; music is playing";
    case OtherAudio::silent:
      break;
  }
  return text + "; no music is playing";
}

}  // namespace demo
