// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_SOUND_TRIPSPEAKER_H
#define ZRCORE_HOSTS_ZRCORE_SOUND_TRIPSPEAKER_H

#include <ZRCore/ZRAudio.h>
#include <policy/ReplayPace.h>
#include <trip/TripRow.h>
#include <trip/replay/TurnDetector.h>
#include <zrcore/Messages.h>
#include <zrcore/view/TripView.h>

#include <memory>
#include <optional>

#include "Hearer.h"
#include "SoundTarget.h"

/// Speaks a trip while it goes on: its start, its turns, its end. Stands on the platform in use.
class TripSpeaker final : public trip::TripOutput {
 public:
  enum class Time {
    /// A file gets the time of the recording, so that each prompt stands where the fix stands that caused it; pauses of
    /// over a minute are cut to one. The loop is iterated within `row`.
    replayed,
    /// The loop goes on by itself. In a file prompts stand back to back.
    live,
  };

  /// @param file      null with the sound server
  /// @param messages  for what was not heard
  TripSpeaker(std::shared_ptr<SpokenFile> file, Time time, Messages& messages);

  void row(const trip::TripRow& row) override;
  /// Returns when all has been heard. A signal cuts the end of a replayed trip short; a live one ends by it, and says
  /// so.
  /// @throws trip::OutputError  the file could not be written
  void finish(const trip::TripSummary& summary) override;

 private:
  void passTime(const trip::TripRow& row);
  void say(const char* text);
  void settleFile();

  std::shared_ptr<SpokenFile> file_;
  Time time_;
  std::shared_ptr<ZRAudio> audio_ = ZRAudio::sharedInstance();
  std::shared_ptr<Hearer> hearer_ = std::make_shared<Hearer>();
  std::size_t spoken_ = 0;
  Messages& messages_;
  trip::TurnDetector turns_;
  policy::ReplayPace pace_{1.0};
};

/// Puts the platform to use, and then lets the view speak.
/// @param time  nothing: it does not speak
/// @return      false, with a message, when a platform is in use already
bool installPlatform(const SpeakingPlatform& speaking, std::optional<TripSpeaker::Time> time, TripView& view);

#endif
