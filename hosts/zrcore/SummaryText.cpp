// SPDX-License-Identifier: Apache-2.0
#include "SummaryText.h"

#include <trip/SummaryOutput.h>

#include <cmath>
#include <cstdint>

#include "Messages.h"
#include "NumberText.h"

namespace {

/// "H:MM:SS".
std::string duration(double seconds) {
  const auto whole = static_cast<std::uint64_t>(std::llround(seconds));
  const auto twoDigits = [](std::uint64_t value) { return (value < 10 ? ":0" : ":") + std::to_string(value); };
  return std::to_string(whole / 3600) + twoDigits(whole / 60 % 60) + twoDigits(whole % 60);
}

std::string kilometers(double meters) { return fixedText(meters / 1000.0, 3) + " km"; }

}  // namespace

std::string summaryText(const trip::TripSummary& summary) {
  std::string text = shownName(summary.source) + " (" + summary.format + ", filter " + summary.filter + "): ";
  text += countText(summary.fixes, "fix", "fixes");
  const auto seconds = trip::durationSeconds(summary);
  if (seconds) text += " in " + duration(*seconds);
  text += ", " + kilometers(summary.distanceMeters) + "\n";
  text += std::to_string(summary.significant) + " significant along " + kilometers(summary.significantDistanceMeters);
  text += ", " + countText(summary.jumps, "jump", "jumps");
  text += ", " + std::to_string(summary.stableFixes) + " with a settled receiver\n";
  text += countText(summary.faults, "fault", "faults") + ", " + countText(summary.warnings, "warning", "warnings");
  return text += '\n';
}
