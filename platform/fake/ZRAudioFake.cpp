// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRAudioFake.h>

#include <stdexcept>
#include <utility>

ZRFakeAudioSession::~ZRFakeAudioSession() = default;
ZRFakeSpeechSynthesizer::~ZRFakeSpeechSynthesizer() = default;
ZRFakeSpeech::~ZRFakeSpeech() = default;
ZRFakeAudioPlayer::~ZRFakeAudioPlayer() = default;
ZRFakeAudioPlayers::~ZRFakeAudioPlayers() = default;

AVAudioSessionResult ZRFakeAudioSession::setCategoryWithOptions(const std::string& category,
                                                                AVAudioSessionCategoryOptions options) {
  calls_->push_back("category " + category + " " + std::to_string(options));
  return categoryResult;
}

AVAudioSessionResult ZRFakeAudioSession::setActiveWithOptions(bool active, AVAudioSessionSetActiveOptions options) {
  calls_->push_back(active ? "activate" : "deactivate " + std::to_string(options));
  const AVAudioSessionResult& result = active ? activationResult : deactivationResult;
  if (result.success) isActive = active;
  return result;
}

void ZRFakeSpeechSynthesizer::speakUtterance(std::shared_ptr<AVSpeechUtterance> utterance) {
  calls_->push_back("speak " + utterance->speechString());
  utterances.push_back(std::move(utterance));
}

void ZRFakeSpeechSynthesizer::stopSpeakingImmediately() {
  calls_->emplace_back("stop speech");
  for (auto& utterance : std::exchange(utterances, {})) {
    const auto tell = [self = shared_from_this(), utterance = std::move(utterance)] {
      if (const auto told = self->delegate().lock()) told->speechSynthesizerDidCancelSpeechUtterance(self, utterance);
    };
    if (cancelsInsideStop) {
      tell();
    } else if (const auto queue = queue_.lock()) {
      queue->post(tell);
    }
  }
}

void ZRFakeSpeechSynthesizer::finish() {
  if (utterances.empty()) return;
  const auto utterance = utterances.front();
  utterances.pop_front();
  if (const auto told = delegate().lock()) {
    told->speechSynthesizerDidFinishSpeechUtterance(shared_from_this(), utterance);
  }
}

void ZRFakeSpeechSynthesizer::pause() {
  if (utterances.empty()) return;
  const auto told = delegate().lock();
  if (told) told->speechSynthesizerDidPauseSpeechUtterance(shared_from_this(), utterances.front());
}

std::shared_ptr<AVSpeechSynthesisVoice> ZRFakeSpeech::voiceWithLanguage(const std::string& language) {
  if (voices == Voices::throwing) throw std::runtime_error("no voice");
  return voices == Voices::made ? std::make_shared<AVSpeechSynthesisVoice>(language) : nullptr;
}

std::shared_ptr<AVSpeechSynthesizer> ZRFakeSpeech::makeSynthesizer() {
  made.push_back(std::make_shared<ZRFakeSpeechSynthesizer>(calls_, queue_));
  return made.back();
}

void ZRFakeAudioPlayer::play() {
  calls_->emplace_back("play");
  isPlaying_ = true;
}

void ZRFakeAudioPlayer::stop() {
  calls_->emplace_back("stop player");
  isPlaying_ = false;
}

void ZRFakeAudioPlayer::finish(bool successfully) {
  isPlaying_ = false;
  const auto told = delegate().lock();
  if (told) told->audioPlayerDidFinishPlayingSuccessfully(shared_from_this(), successfully);
}

void ZRFakeAudioPlayer::failToDecode() {
  isPlaying_ = false;
  const auto told = delegate().lock();
  if (told) {
    told->audioPlayerDecodeErrorDidOccur(shared_from_this(), {AVFoundationErrorDomain, AVErrorDecodeFailed, {}});
  }
}

void ZRFakeAudioPlayer::interrupt() {
  isPlaying_ = false;
  if (const auto told = delegate().lock()) told->audioPlayerBeginInterruption(shared_from_this());
}

std::variant<std::shared_ptr<AVAudioPlayer>, NSError> ZRFakeAudioPlayers::playerWithData(std::string_view data) {
  if (!readsClips || data.empty()) {
    return NSError{
        AVFoundationErrorDomain, AVErrorFileFormatNotRecognized, {{NSLocalizedDescriptionKey, "no audio clip"}}};
  }
  made.push_back(std::make_shared<ZRFakeAudioPlayer>(calls_));
  made.back()->data = data;
  return made.back();
}
