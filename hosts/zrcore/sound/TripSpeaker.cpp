// SPDX-License-Identifier: Apache-2.0
#include "TripSpeaker.h"

#include <trip/Words.h>
#include <zrcore/InterruptibleLoop.h>
#include <zrcore/Interruption.h>

namespace {

const char* textOf(trip::Turn turn) {
  switch (turn) {
    case trip::Turn::left:
      return "Turn left";
    case trip::Turn::right:
      return "Turn right";
    case trip::Turn::around:
      break;
  }
  return "Turn around";
}

}  // namespace

TripSpeaker::TripSpeaker(std::shared_ptr<SpokenFile> file, Time time, Messages& messages)
    : file_(std::move(file)), time_(time), messages_(messages) {
  audio_->setDelegate(hearer_);
}

void TripSpeaker::row(const trip::TripRow& row) {
  passTime(row);
  if (row.index == 0) say("The trip starts");
  if (!row.significant) return;
  if (const auto turn = turns_.add(row.smoothCourseDegrees)) say(textOf(*turn));
}

void TripSpeaker::passTime(const trip::TripRow& row) {
  if (!file_ || time_ == Time::live || !row.secondsSince1970) return;
  file_->sound()->setTimeSeconds(pace_.secondsAfterFirst(*row.secondsSince1970));
  settleFile();
}

void TripSpeaker::say(const char* text) {
  ++spoken_;
  audio_->speakTextInterruptVolume(text, false, 1.0F);
  settleFile();
}

/// In the file the time of the replay stands still while the engine works.
void TripSpeaker::settleFile() {
  if (file_ && time_ == Time::replayed) runLoopUntil([this] { return file_->sound()->isSettled(); });
}

void TripSpeaker::finish(const trip::TripSummary& summary) {
  if (summary.fixes > 0) say("The trip ends");
  if (file_) file_->sound()->letTimePass();
  const auto isSilent = [this] { return !audio_->isSpeaking(); };
  time_ == Time::live ? ZRRunLinuxLoopUntil(isSilent) : runLoopUntil(isSilent);
  endSound(*audio_);
  if (hearer_->heard < spoken_ && interruption::signal() == 0) {
    messages_.about("--speak", std::to_string(hearer_->heard) + " of " + trip::countText(spoken_, "prompt", "prompts") +
                                   " were heard; " + kSeeDoctor);
  }
  if (file_) file_->completeUnlessSilent();
}

bool installPlatform(const SpeakingPlatform& speaking, std::optional<TripSpeaker::Time> time, TripView& view) {
  if (!ZRPlatformInstall(speaking.platform)) {
    view.messages().say("the location service is in use already");
    return false;
  }
  // Only now: it stands on the platform in use.
  if (time) view.addOutput(std::make_unique<TripSpeaker>(speaking.file, *time, view.messages()));
  return true;
}
