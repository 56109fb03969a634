// SPDX-License-Identifier: Apache-2.0
#include "HeadlessSound.h"

#include <ZRCore/ZRPlatform.h>

namespace {

class HeadlessSynthesizer final : public AVSpeechSynthesizer {
 public:
  void speakUtterance(std::shared_ptr<AVSpeechUtterance> utterance) override {
    ZRPlatformInUse().mainQueue->post([self = shared_from_this(), utterance = std::move(utterance)] {
      if (const auto delegate = self->delegate().lock()) {
        delegate->speechSynthesizerDidCancelSpeechUtterance(self, utterance);
      }
    });
  }
  void stopSpeakingImmediately() override {}
  bool isSpeaking() const override { return false; }
};

}  // namespace

std::shared_ptr<AVSpeechSynthesizer> HeadlessSpeech::makeSynthesizer() {
  return std::make_shared<HeadlessSynthesizer>();
}

std::variant<std::shared_ptr<AVAudioPlayer>, NSError> HeadlessAudioPlayers::playerWithData(std::string_view) {
  return NSError{
      AVFoundationErrorDomain,
      AVErrorFileFormatNotRecognized,
      {{NSLocalizedDescriptionKey, "No audio players: install a platform with its `audioPlayers` member filled."}}};
}
