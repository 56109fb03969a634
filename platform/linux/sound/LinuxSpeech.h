// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_LINUXSPEECH_H
#define ZRCORE_LINUX_SOUND_LINUXSPEECH_H

#include <ZRCore/AVSpeechSynthesis.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "loop/Loop.h"
#include "sound/SoundOutput.h"

class LinuxSynthesizer;

/// Speech by an engine in a process of its own.
class LinuxSpeech final : public ZRSpeech {
 public:
  struct Options {
    /// The engine and its arguments; %v, %r and %a stand for the voice's tag, the words per minute and the amplitude.
    std::vector<std::string> command;
    std::string defaultVoice = "en-US";
    double patienceSeconds = 5.0;
  };

  LinuxSpeech(std::shared_ptr<Loop> loop, std::shared_ptr<SoundOutput> output, Options options);
  ~LinuxSpeech() override;

  /// Null for what is not a language tag. Whether the engine has the voice shows when it is used.
  std::shared_ptr<AVSpeechSynthesisVoice> voiceWithLanguage(const std::string& language) override;
  std::shared_ptr<AVSpeechSynthesizer> makeSynthesizer() override;

 private:
  friend class LinuxSynthesizer;
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

/// The command with the places of voice, rate and volume filled in; a voice that is not a language tag counts as
/// absent.
std::vector<std::string> engineCommand(const LinuxSpeech::Options& options, const AVSpeechUtterance& utterance);

#endif
