// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_HEADLESS_HEADLESSSOUND_H
#define ZRCORE_PLATFORM_HEADLESS_HEADLESSSOUND_H

#include <ZRCore/AVAudioPlayer.h>
#include <ZRCore/AVAudioSession.h>
#include <ZRCore/AVSpeechSynthesis.h>

/// A device without sound, to which every request is a success.
class HeadlessAudioSession final : public AVAudioSession {
 public:
  bool isOtherAudioPlaying() const override { return false; }
  AVAudioSessionResult setCategoryWithOptions(const std::string&, AVAudioSessionCategoryOptions) override { return {}; }
  AVAudioSessionResult setActiveWithOptions(bool, AVAudioSessionSetActiveOptions) override { return {}; }
};

/// No voices, and synthesizers that cancel each utterance, through the main queue of the platform in use.
class HeadlessSpeech final : public ZRSpeech {
 public:
  std::shared_ptr<AVSpeechSynthesisVoice> voiceWithLanguage(const std::string&) override { return nullptr; }
  std::shared_ptr<AVSpeechSynthesizer> makeSynthesizer() override;
};

/// Reads no clip.
class HeadlessAudioPlayers final : public ZRAudioPlayers {
 public:
  std::variant<std::shared_ptr<AVAudioPlayer>, NSError> playerWithData(std::string_view data) override;
};

#endif
