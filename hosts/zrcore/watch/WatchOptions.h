// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_WATCH_WATCHOPTIONS_H
#define ZRCORE_HOSTS_ZRCORE_WATCH_WATCHOPTIONS_H

#include <policy/PositioningSource.h>
#include <zrcore/CommandLine.h>
#include <zrcore/sound/SoundTarget.h>
#include <zrcore/view/TripView.h>

#include <optional>
#include <string>
#include <variant>

inline std::string sourceOf(const std::string& option, const std::string& given) {
  const auto source = policy::parsePositioningSource(given);
  if (const auto* const why = std::get_if<std::string>(&source)) throw UsageFault(option, *why);
  return given;
}

/// What `zrcore watch` can be told.
struct WatchOptions : Options {
  using Options::Options;

  Option<std::string> source{
      *this, "SOURCE", "Where positions come from [auto]", sourceOf, {rule::offers(offer::kSource)}, "auto"};
  Option<std::optional<std::string>> recordFile{
      *this,
      "--record FILE.gpx",
      "Write the fixes there, as GPX. The file appears with the first fix, and is whole at any moment from "
      "then on, whatever becomes of the tool",
      {rule::notEmpty(), rule::offers(offer::kRecording)}};
  Option<bool> force{*this, "--force", "Let --record and --speak overwrite files"};
  Option<std::string> filter{*this,
                             "--filter NAME",
                             "As in 'zrcore trip': measured or documented [measured]",
                             {rule::oneOf({"documented", "measured"})},
                             "measured"};
  Option<std::optional<SoundTarget>> speech{
      *this,
      "--speak TARGET",
      "Speak at the start, at each turn and at the end. sound: through the sound server; wav:FILE: into a WAV "
      "file, one prompt after the other",
      SoundTarget::parseOptional,
      {rule::offers(offer::kSoundTarget)}};
  Option<bool> leavesOutEstimates{*this, "--no-estimates", "As in 'zrcore trip'"};
  Option<bool> repairsWeekRollover{*this, "--week-rollover", "As in 'zrcore trip'"};
  Option<std::optional<double>> forSeconds{*this, "--for SECONDS", "End after so long", {rule::positive()}};
  ShapeOptions shape{*this};
};

#endif
