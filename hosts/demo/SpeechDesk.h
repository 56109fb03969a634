// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_SPEECHDESK_H
#define ZRCORE_HOSTS_DEMO_SPEECHDESK_H

#include <ZRCore/ZRAudio.h>

#include <ZRCore/ZRMainQueue.h>

#include <cstddef>
#include <functional>
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

  /// What the desk stands on; all of it must outlive the desk.
  struct Services {
    ZRAudio& audio;
    ZRSpeech& speech;
    const AVAudioSession& session;
    ZRMainQueue& mainQueue;
    std::function<std::string()> lastFault;  ///< why speech was not heard, as far as anybody knows
  };

  /// Asks which of the voices that the demonstration knows can be made, and becomes the audio's delegate.
  explicit SpeechDesk(Services services);

  /// Empty when this machine cannot speak.
  const std::vector<Voice>& voices() const { return voices_; }
  bool canSpeak() const { return !voices_.empty(); }

  /// @return whether there was something to speak: not without a voice, nor a text of blanks.
  bool speak(const Prompt& prompt);
  void stop();
  /// Looks whether what has ended was heard: a few times a second.
  void step();
  /// Makes what is being spoken louder or softer, as far as the system heeds it.
  void setVolume(float volume) { services_.audio.setVolume(volume); }

  bool isSpeaking() const { return services_.audio.isSpeaking(); }
  OtherAudio otherAudio() const;
  /// "Speaking; the music is ducked", "Silent; music is playing" …
  std::string statusText() const;
  /// What was to be heard last and was not, and why, in a sentence; empty when all is well.
  std::string faultText() const;

 private:
  class Hearing;

  Services services_;
  std::shared_ptr<Hearing> hearing_;
  std::vector<Voice> voices_;
};

}  // namespace demo

#endif
