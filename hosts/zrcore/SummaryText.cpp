#include "SummaryText.h"

#include <trip/SummaryOutput.h>

#include <cmath>
#include <cstdint>

#include "FixedText.h"
#include "Messages.h"

namespace {

std::string counted(std::uint64_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string duration(double seconds) {
  const double minutes = std::floor(std::abs(seconds) / 60.0);
  return (seconds < 0.0 ? "-" : "") + fixedText(minutes, 0) + " min " +
         fixedText(std::abs(seconds) - minutes * 60.0, 0) + " s";
}

std::string kilometers(double meters) { return fixedText(meters / 1000.0, 3) + " km"; }

}  // namespace

std::string summaryText(const trip::TripSummary& summary) {
  std::string text = shownName(summary.source) + " (" + summary.format + ", filter " + summary.filter +
                     "): " + std::to_string(summary.fixes) + (summary.fixes == 1 ? " fix" : " fixes");
  if (const auto seconds = trip::durationSeconds(summary)) text += " in " + duration(*seconds);
  text += ", " + kilometers(summary.distanceMeters) + " (" + kilometers(summary.significantDistanceMeters) +
          " along the significant ones)\n";
  text += std::to_string(summary.significant) + " significant, " + counted(summary.jumps, "jump") + ", " +
          std::to_string(summary.stableFixes) + " with a settled receiver; " + counted(summary.faults, "fault") +
          ", " + counted(summary.warnings, "warning") + "\n";
  return text;
}
