// SPDX-License-Identifier: Apache-2.0
#include "sound/EngineSpeech.h"

#include <utility>

EngineSpeech::EngineSpeech(Loop& loop, SoundOutput& output, const SpeechRequest& request, double patienceSeconds,
                           Events events)
    : loop_(loop),
      events_(std::move(events)),
      engineName_(request.command.empty() ? "" : request.command.front()),
      isBlank_(request.text.find_first_not_of(" \t\r\n") == std::string::npos),
      patienceSeconds_(patienceSeconds),
      stream_(output, {.wantsMore = [this] { readOn(); },
                       .heard = [this] { end(""); },
                       .lost = [this](const std::string& why) { end(why); },
                       .silenced = [this](bool isSilenced) { events_.silenced(isSilenced); }}) {
  std::string fault;
  engine_ = EngineProcess::start(loop_, request.command, request.text,
                                 {.output = [this](std::string_view bytes) { takeOutput(bytes); },
                                  .ended = [this](const std::string& why) { engineEnded(why); }},
                                 fault);
  if (engine_) {
    watchOver();
  } else {
    watchdog_ =
        loop_.after(0.0, [this, fault] { end("the speech engine " + engineName_ + " cannot be started: " + fault); });
  }
}

void EngineSpeech::takeOutput(std::string_view bytes) {
  hasProgressed_ = true;
  std::vector<std::int16_t> samples;
  if (!reader_.feed(bytes, samples)) {
    return end("the speech engine " + engineName_ + " writes what is no WAV: " + reader_.fault());
  }
  if (!reader_.hasReachedSamples()) return;
  if (!std::exchange(hasStarted_, true)) stream_.start(*reader_.format());
  stream_.push(samples);
  if (stream_.pushedSeconds() > kLongestSeconds) return end("the speech engine " + engineName_ + " does not end");
  isEngineReading_ = !stream_.isFull();
  if (!isEngineReading_) engine_->setPaused(true);
}

void EngineSpeech::engineEnded(const std::string& fault) {
  watchdog_.reset();
  if (!fault.empty()) return end("the speech engine " + engineName_ + " " + fault);
  if (!hasStarted_) {
    return end(isBlank_ ? ""
                        : "the speech engine " + engineName_ + " has written no sound");  // nothing is said at once
  }
  engine_.reset();
  stream_.end();
}

void EngineSpeech::readOn() {
  if (!engine_ || std::exchange(isEngineReading_, true)) return;
  engine_->setPaused(false);
}

/// Looks after a while whether the engine has written anything meanwhile: one timer for many pieces of output.
void EngineSpeech::watchOver() {
  hasProgressed_ = false;
  watchdog_ = loop_.after(patienceSeconds_, [this] {
    if (hasProgressed_ || !isEngineReading_) return watchOver();
    end("the speech engine " + engineName_ + " hangs");
  });
}

void EngineSpeech::end(const std::string& fault) { events_.ended(fault); }
