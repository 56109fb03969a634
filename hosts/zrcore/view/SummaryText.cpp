// SPDX-License-Identifier: Apache-2.0
#include "SummaryText.h"

#include <trip/SummaryHints.h>
#include <trip/Words.h>
#include <zrcore/Messages.h>

#include <cmath>
#include <cstdint>

namespace {

std::string degrees(double value) { return trip::fixedText(value, 1) + "°"; }

/// "raw:      top speed 9.6 km/h, course change per fix 11.2° (median), 102.7° (90 %)"; nothing when nothing is known.
std::string effectLine(const char* name, std::optional<double> topSpeed,
                       const std::optional<trip::FilterEffect::Quantiles>& turn) {
  if (!topSpeed) return {};
  std::string line =
      std::string(name) + " top speed " + trip::fixedText(trip::kilometersPerHour(topSpeed), 1) + " km/h";
  if (turn) {
    line +=
        ", course change per fix " + degrees(turn->median) + " (median), " + degrees(turn->percentile90) + " (90 %)";
  }
  return line + "\n";
}

std::string hintLine(const std::string& hint) { return hint.empty() ? hint : hint + "\n"; }

}  // namespace

std::string summaryText(const trip::TripSummary& summary) {
  std::string text = shownName(summary.source) + " (" + summary.format + ", filter " + summary.filter + "): ";
  text += trip::countText(summary.fixes, "fix", "fixes");
  const auto seconds = trip::durationSeconds(summary);
  if (seconds) text += " in " + trip::clockText(std::round(*seconds), true);
  text += ", " + trip::measuredLengthText(summary.distanceMeters) + "\n";
  text += trip::countText(summary.jumps, "jump", "jumps") + " marked, " + std::to_string(summary.significant);
  text +=
      " significant, " + trip::measuredLengthText(summary.significantDistanceMeters) + " along the smoothed track, ";
  text += std::to_string(summary.stableFixes) + " with a settled receiver\n";
  text += effectLine("raw:     ", summary.effect.topRawSpeed, summary.effect.rawTurn);
  text += effectLine("smoothed:", summary.effect.topSmoothedSpeed, summary.effect.smoothedTurn);
  text += hintLine(missingSpeedHint(summary)) + hintLine(missingAccuracyHint(summary));
  text += trip::countText(summary.faults, "fault", "faults") + ", " +
          trip::countText(summary.warnings, "warning", "warnings");
  return text += '\n';
}
