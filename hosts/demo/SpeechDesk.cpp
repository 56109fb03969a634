// SPDX-License-Identifier: Apache-2.0
#include "SpeechDesk.h"

#include <ZRCore/NSString_ZR.h>

#include <algorithm>
#include <array>
#include <exception>

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

SpeechDesk::SpeechDesk(ZRAudio& audio, ZRSpeech& speech, const AVAudioSession& session)
    : audio_(audio), session_(session) {
  for (const auto& [tag, name] : kLanguages) {
    if (auto voice = voiceOrNull(speech, tag)) voices_.push_back({name, std::move(voice)});
  }
}

bool SpeechDesk::speak(const Prompt& prompt) {
  if (!canSpeak() || NSString_ZR::isBlank(prompt.text)) return false;
  audio_.setVoice(voices_[std::min(prompt.voice, voices_.size() - 1)].voice);
  audio_.setSpeechUtteranceRate(prompt.rate);
  audio_.speakTextInterruptVolume(prompt.text, prompt.interrupts, prompt.volume);
  return true;
}

SpeechDesk::OtherAudio SpeechDesk::otherAudio() const {
  if (isSpeaking() && audio_.otherAudioWasPlayingWhenSpeechStarted()) return OtherAudio::ducked;
  return session_.isOtherAudioPlaying() ? OtherAudio::playing : OtherAudio::silent;
}

std::string SpeechDesk::statusText() const {
  if (!canSpeak()) return "This machine can't speak";
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
