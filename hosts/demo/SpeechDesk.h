// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_SPEECHDESK_H
#define ZRCORE_HOSTS_DEMO_SPEECHDESK_H

#include <ZRCore/ZRAudio.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace demo {

/// Prompts as a person words them, spoken by the process's one owner of spoken output. Main thread.
class SpeechDesk {
 public:
  struct Prompt {
    std::string text;
    std::size_t voice = 0;  ///< index into `voices`
    float rate = AVSpeechUtteranceDefaultSpeechRate;
    float volume = 1.0F;
    bool interrupts = false;
  };

  struct Voice {
    std::string name;  ///< for people
    std::shared_ptr<AVSpeechSynthesisVoice> voice;
  };

  /// What becomes of other applications' sound.
  enum class OtherAudio { silent, playing, ducked };

  /// Asks `speech` which of the voices that the demonstration knows it can make; all must outlive the desk.
  SpeechDesk(ZRAudio& audio, ZRSpeech& speech, const AVAudioSession& session);

  /// Empty when this machine can't speak.
  const std::vector<Voice>& voices() const { return voices_; }
  bool canSpeak() const { return !voices_.empty(); }

  /// @return whether there was something to speak: not without a voice, nor a text of blanks.
  bool speak(const Prompt& prompt);
  void stop() { audio_.stopAudioAndSpeechPlayback(); }
  /// Makes what is being spoken louder or softer, as far as the system heeds it.
  void setVolume(float volume) { audio_.setVolume(volume); }

  bool isSpeaking() const { return audio_.isSpeaking(); }
  OtherAudio otherAudio() const;
  /// "Speaking; the music is ducked", "Silent; music is playing" …
  std::string statusText() const;

 private:
  ZRAudio& audio_;
  const AVAudioSession& session_;
  std::vector<Voice> voices_;
};

}  // namespace demo

#endif
