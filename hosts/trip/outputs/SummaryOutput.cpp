// SPDX-License-Identifier: Apache-2.0
#include "FileOutput.h"
#include "OutputFile.h"
#include "TripJson.h"

namespace trip {

namespace {

Json quantilesOrNull(const std::optional<FilterEffect::Quantiles>& quantiles) {
  if (!quantiles) return nullptr;
  return {{"median", quantiles->median}, {"percentile90", quantiles->percentile90}};
}

class SummaryOutput final : public FileOutput {
 public:
  SummaryOutput(const std::filesystem::path& target, bool force) : file_(target, force) {}
  void row(const TripRow&) override {}
  void finish(const TripSummary& summary) override {
    file_.write(summaryJson(summary, 2) + "\n");
    file_.store();
  }
  void commit() override { file_.commit(); }

 private:
  OutputFile file_;
};

}  // namespace

std::string summaryJson(const TripSummary& summary, int indent) {
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

std::unique_ptr<FileOutput> makeSummaryOutput(const std::filesystem::path& target, bool force) {
  return std::make_unique<SummaryOutput>(target, force);
}

}  // namespace trip
