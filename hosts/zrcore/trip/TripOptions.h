// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_TRIP_TRIPOPTIONS_H
#define ZRCORE_HOSTS_ZRCORE_TRIP_TRIPOPTIONS_H

#include <text/Numbers.h>
#include <trip/replay/TimeWindow.h>
#include <zrcore/CommandLine.h>
#include <zrcore/sound/SoundTarget.h>
#include <zrcore/view/TripView.h>

#include <cmath>
#include <optional>
#include <string>

/// A number above 0; nothing for "max".
inline std::optional<double> rateOf(const std::string& option, const std::string& given) {
  if (given == "max") return std::nullopt;
  const auto rate = text::numberIn<double>(given);
  if (rate && std::isfinite(*rate) && *rate > 0.0) return rate;
  throw UsageFault(option, inQuotes(given) + " is neither a number above 0 nor 'max'");
}

inline std::optional<trip::TimeBound> timeBoundOf(const std::string& option, const std::string& given) {
  if (const auto bound = trip::parseTimeBound(given)) return bound;
  throw UsageFault(option, inQuotes(given) + " is no time; give it as in 2026-05-09T09:30:00Z, 09:30:00 or +90");
}

/// What `zrcore trip` can be told.
struct TripOptions : Options {
  using Options::Options;
  using Time = std::optional<trip::TimeBound>;
  using File = std::optional<std::string>;  // "-": standard input

  Option<std::string> file{
      *this, "FILE", "The recording; - for standard input", {rule::required(), rule::offers(offer::kRecording)}};
  Option<File> outputFolder{*this,
                            "--out DIR",
                            "Write trip.csv, trip.geojson, summary.json, trip.png and trip.svg there",
                            {rule::notEmpty(), rule::offers(offer::kFolder)}};
  Option<bool> force{*this, "--force", "Let --out and --speak overwrite files"};
  Option<std::string> filter{
      *this,
      "--filter NAME",
      "measured: by the accuracy and speed that the receiver tells, so that jumps are found and speeds are "
      "smoothed; documented: without them, as a host's service does unless it is told otherwise [measured]",
      {rule::oneOf({"documented", "measured"})},
      "measured"};
  Option<std::optional<double>> rate{
      *this, "--rate RATE",
      "Times the recorded speed: 1, 10, or max for no waiting [max]. Pauses of over a minute are cut to one", rateOf};
  Option<Time> from{*this, "--from TIME",
                    "Leave out fixes before this time: ISO 8601, HH:MM[:SS] (UTC) on the recording's first day, or "
                    "+SECONDS after its start",
                    timeBoundOf};
  Option<Time> to{*this, "--to TIME", "Leave out fixes after this time", timeBoundOf};
  Option<std::optional<double>> assumedAccuracyMeters{
      *this, "--assume-accuracy METRES", "Accuracy of fixes that tell none", {rule::positive()}};
  Option<bool> derivesSpeed{*this, "--derive-speed", "Work out missing speeds from the places and times"};
  Option<bool> leavesOutEstimates{
      *this, "--no-estimates",
      "Leave out positions by dead reckoning or a simulator, as far as the receiver tells them"};
  Option<bool> repairsWeekRollover{*this, "--week-rollover",
                                   "Add 1024 weeks to dates, as often as they then still lie in the past: for "
                                   "receivers whose week counter has rolled over"};
  Option<File> routeFile{
      *this,
      "--route FILE",
      "A recording of the route that the second client snaps to; without it, the way already replayed",
      {rule::offers(offer::kRecording)}};
  Option<File> placesFile{
      *this,
      "--places FILE",
      "Mark these places in the pictures: what a geocoding service answered, as 'zrcore place' reads it",
      {rule::needs(outputFolder), rule::offers(offer::kPlaces)}};
  Option<std::optional<SoundTarget>> speech{
      *this,
      "--speak TARGET",
      "Speak at the start, at each turn and at the end. sound: through the sound server; wav:FILE: into a WAV "
      "file, on the recording's time",
      SoundTarget::parseOptional,
      {rule::offers(offer::kSoundTarget)}};
  ShapeOptions shape{*this};
};

#endif
