// SPDX-License-Identifier: Apache-2.0
#include "SummaryOutput.h"

#include <trip/OutputText.h>

#include <nlohmann/json.hpp>

namespace trip {

namespace {
nlohmann::ordered_json timeOrNull(std::optional<double> secondsSince1970) {
  if (!secondsSince1970) return nullptr;
  return timeText(*secondsSince1970);
}

nlohmann::ordered_json orNull(std::optional<double> value) {
  if (!value) return nullptr;
  return *value;
}

nlohmann::ordered_json quantilesOrNull(const std::optional<FilterEffect::Quantiles>& quantiles) {
  if (!quantiles) return nullptr;
  return {{"median", quantiles->median}, {"percentile90", quantiles->percentile90}};
}
}  // namespace

std::string summaryJson(const TripSummary& summary, int indent) {
  using Json = nlohmann::ordered_json;
  const FilterEffect& effect = summary.effect;
  const Json json{
      {"source", summary.source},
      {"format", summary.format},
      {"filter", summary.filter},
      {"fixes", summary.fixes},
      {"significant", summary.significant},
      {"jumps", summary.jumps},
      {"stableFixes", summary.stableFixes},
      {"faults", summary.faults},
      {"warnings", summary.warnings},
      {"firstTime", timeOrNull(summary.firstSecondsSince1970)},
      {"lastTime", timeOrNull(summary.lastSecondsSince1970)},
      {"durationSeconds", orNull(durationSeconds(summary))},
      {"distanceMeters", summary.distanceMeters},
      {"significantDistanceMeters", summary.significantDistanceMeters},
      {"topSpeedMetersPerSecond", {{"raw", orNull(effect.topRawSpeed)}, {"smoothed", orNull(effect.topSmoothedSpeed)}}},
      {"courseChangeDegrees",
       {{"fixes", effect.turns},
        {"raw", quantilesOrNull(effect.rawTurn)},
        {"smoothed", quantilesOrNull(effect.smoothedTurn)}}},
      {"deliveredByClient", Json(summary.deliveredByClient)},
  };
  return json.dump(indent, ' ', true, Json::error_handler_t::replace);
}

SummaryOutput::SummaryOutput(const std::filesystem::path& target, bool force) : file_(target, force) {}

void SummaryOutput::row(const TripRow&) {}

void SummaryOutput::finish(const TripSummary& summary) {
  file_.write(summaryJson(summary, 2));
  file_.write("\n");
  file_.store();
}

}  // namespace trip
