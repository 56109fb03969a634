#include "SummaryText.h"

#include <trip/SummaryOutput.h>

#include <cmath>

#include "Messages.h"
#include "NumberText.h"

namespace {

std::string duration(double seconds) {
  const double minutes = std::floor(seconds / 60.0);
  return fixedText(minutes, 0) + " min " + fixedText(seconds - minutes * 60.0, 0) + " s";
}

std::string kilometers(double meters) {
  return fixedText(meters / 1000.0, 3) + " km";
}

}  // namespace

std::string summaryText(const trip::TripSummary& summary) {
  std::string text = shownName(summary.source) + " (" + summary.format + ", filter " + summary.filter + "): ";
  text += countText(summary.fixes, "fix", "fixes");
  const auto seconds = trip::durationSeconds(summary);
  if (seconds && *seconds >= 0.0) text += " in " + duration(*seconds);
  text += ", " + kilometers(summary.distanceMeters) + " (" + kilometers(summary.significantDistanceMeters) +
          " along the significant ones)\n";
  text += std::to_string(summary.significant) + " significant, " + countText(summary.jumps, "jump", "jumps") + ", " +
          std::to_string(summary.stableFixes) + " with a settled receiver; " +
          countText(summary.faults, "fault", "faults") + ", " + countText(summary.warnings, "warning", "warnings") +
          "\n";
  return text;
}
