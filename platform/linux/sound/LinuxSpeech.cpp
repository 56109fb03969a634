// SPDX-License-Identifier: Apache-2.0
#include "sound/LinuxSpeech.h"

#include <ZRCore/ZRPlatform.h>
#include <policy/SpeechRate.h>
#include <policy/SpokenText.h>
#include <policy/UtteranceQueue.h>
#include <text/ASCII.h>

#include <algorithm>
#include <utility>

#include "sound/EngineSpeech.h"

namespace {

/// Letters and digits in parts joined by "-": nothing that a command line could take for an option.
bool isLanguageTag(const std::string& tag) {
  if (tag.empty() || tag.size() > 35 || tag.front() == '-' || tag.back() == '-') return false;
  return std::all_of(tag.begin(), tag.end(), [&](char c) { return text::isAlphanumeric(c) || c == '-'; });
}

std::string filledIn(std::string word, const std::string& place, const std::string& value) {
  for (auto at = word.find(place); at != std::string::npos; at = word.find(place, at + value.size())) {
    word.replace(at, place.size(), value);
  }
  return word;
}

}  // namespace

std::vector<std::string> engineCommand(const LinuxSpeech::Options& options, const AVSpeechUtterance& utterance) {
  const bool hasVoice = utterance.voice() && isLanguageTag(utterance.voice()->language());
  const std::string voice = hasVoice ? utterance.voice()->language() : options.defaultVoice;
  std::vector<std::string> command;
  for (const std::string& word : options.command) {
    std::string filled = filledIn(word, "%v", voice);
    filled = filledIn(filled, "%r", std::to_string(policy::wordsPerMinuteForRate(utterance.rate())));
    command.push_back(filledIn(filled, "%a", std::to_string(policy::amplitudeForVolume(utterance.volume()))));
  }
  return command;
}

struct LinuxSpeech::Shared {
  std::shared_ptr<Loop> loop;
  std::shared_ptr<SoundOutput> output;
  Options options;
  std::set<std::shared_ptr<LinuxSynthesizer>> speaking;  ///< live until they have told all, whoever drops them
  std::string lastFault;

  /// One line a cause, not one a prompt.
  void log(const std::string& fault) {
    if (std::exchange(lastFault, fault) == fault || fault.empty()) return;
    ZRPlatformInUse().log->writeLine("An utterance is not spoken: " + fault);
  }
};

class LinuxSynthesizer final : public AVSpeechSynthesizer {
 public:
  explicit LinuxSynthesizer(std::shared_ptr<LinuxSpeech::Shared> shared) : shared_(std::move(shared)) {}

  void speakUtterance(std::shared_ptr<AVSpeechUtterance> utterance) override {
    if (!utterance) return;
    SpeechRequest request{policy::spokenText(utterance->speechString()), engineCommand(shared_->options, *utterance)};
    if (queue_.isEmpty()) shared_->speaking.insert(self());
    perform(queue_.add({std::move(utterance), std::make_shared<const SpeechRequest>(std::move(request))}));
  }

  void stopSpeakingImmediately() override {
    current_.reset();
    perform(queue_.stop());
  }

  bool isSpeaking() const override { return !queue_.isEmpty(); }

 private:
  struct Item {
    std::shared_ptr<AVSpeechUtterance> utterance;
    std::shared_ptr<const SpeechRequest> request;
  };
  using Queue = policy::UtteranceQueue<Item>;

  std::shared_ptr<LinuxSynthesizer> self() { return std::static_pointer_cast<LinuxSynthesizer>(shared_from_this()); }

  void perform(Queue::Step step) {
    const auto held = self();
    for (auto& event : step.events) shared_->loop->post([held, event = std::move(event)] { held->tell(event); });
    if (step.start) start(*step.start->request);
    if (queue_.isEmpty()) shared_->speaking.erase(held);
  }

  void start(const SpeechRequest& request) {
    current_ = std::make_unique<EngineSpeech>(
        *shared_->loop, *shared_->output, request, shared_->options.patienceSeconds,
        EngineSpeech::Events{.ended = [this](const std::string& fault) { end(fault); },
                             .silenced = [this](bool isSilenced) { perform(queue_.setPaused(isSilenced)); }});
  }

  void end(const std::string& fault) {
    const auto held = self();
    shared_->log(fault);
    current_.reset();
    perform(queue_.end(fault.empty()));
  }

  void tell(const Queue::Event& event) {
    const auto told = delegate().lock();
    if (!told) return;
    const std::shared_ptr<AVSpeechUtterance>& utterance = event.utterance.utterance;
    switch (event.told) {
      case Queue::Told::finished:
        return told->speechSynthesizerDidFinishSpeechUtterance(shared_from_this(), utterance);
      case Queue::Told::paused:
        return told->speechSynthesizerDidPauseSpeechUtterance(shared_from_this(), utterance);
      case Queue::Told::cancelled:
        return told->speechSynthesizerDidCancelSpeechUtterance(shared_from_this(), utterance);
    }
  }

  std::shared_ptr<LinuxSpeech::Shared> shared_;
  Queue queue_;
  std::unique_ptr<EngineSpeech> current_;
};

LinuxSpeech::LinuxSpeech(std::shared_ptr<Loop> loop, std::shared_ptr<SoundOutput> output, Options options)
    : shared_(std::make_shared<Shared>(Shared{std::move(loop), std::move(output), std::move(options), {}, {}})) {}

LinuxSpeech::~LinuxSpeech() { shared_->speaking.clear(); }

std::shared_ptr<AVSpeechSynthesisVoice> LinuxSpeech::voiceWithLanguage(const std::string& language) {
  return isLanguageTag(language) ? std::make_shared<AVSpeechSynthesisVoice>(language) : nullptr;
}

std::shared_ptr<AVSpeechSynthesizer> LinuxSpeech::makeSynthesizer() {
  return std::make_shared<LinuxSynthesizer>(shared_);
}
