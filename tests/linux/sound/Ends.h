// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_LINUX_SOUND_ENDS_H
#define ZRCORE_TESTS_LINUX_SOUND_ENDS_H

#include <ZRCore/AVSpeechSynthesis.h>

#include <memory>
#include <string>
#include <vector>

/// Writes down how utterances end.
class Ends : public AVSpeechSynthesizerDelegate {
 public:
  using Synthesizer = std::shared_ptr<AVSpeechSynthesizer>;
  using Utterance = std::shared_ptr<AVSpeechUtterance>;
  void speechSynthesizerDidFinishSpeechUtterance(Synthesizer, Utterance utterance) override {
    ends.push_back("finished " + utterance->speechString());
  }
  void speechSynthesizerDidPauseSpeechUtterance(Synthesizer, Utterance utterance) override {
    ends.push_back("paused " + utterance->speechString());
  }
  void speechSynthesizerDidCancelSpeechUtterance(Synthesizer, Utterance utterance) override {
    ends.push_back("cancelled " + utterance->speechString());
  }
  std::vector<std::string> ends;
};

#endif
