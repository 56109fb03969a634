// SPDX-License-Identifier: Apache-2.0
#include "FileOutput.h"
#include "OutputFile.h"
#include "TripJson.h"

namespace trip {

namespace {

void addQuantiles(Json& json, const std::optional<FilterEffect::Quantiles>& quantiles) {
  if (!quantiles) return;  // which leaves null
  json["median"] = quantiles->median;
  json["percentile90"] = quantiles->percentile90;
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
  JsonObject json;
  json["source"] = summary.source;
  json["format"] = summary.format;
  json["filter"] = summary.filter;
  json["fixes"] = summary.fixes;
  json["significant"] = summary.significant;
  json["jumps"] = summary.jumps;
  json["stableFixes"] = summary.stableFixes;
  json["faults"] = summary.faults;
  json["warnings"] = summary.warnings;
  json["firstTime"] = timeOrNull(summary.firstSecondsSince1970);
  json["lastTime"] = timeOrNull(summary.lastSecondsSince1970);
  json["durationSeconds"] = orNull(durationSeconds(summary));
  json["distanceMeters"] = summary.distanceMeters;
  json["significantDistanceMeters"] = summary.significantDistanceMeters;
  Json& topSpeed = json["topSpeedMetersPerSecond"];
  topSpeed["raw"] = orNull(effect.topRawSpeed);
  topSpeed["smoothed"] = orNull(effect.topSmoothedSpeed);
  Json& courseChange = json["courseChangeDegrees"];
  courseChange["fixes"] = effect.turns;
  addQuantiles(courseChange["raw"], effect.rawTurn);
  addQuantiles(courseChange["smoothed"], effect.smoothedTurn);
  json["deliveredByClient"] = summary.deliveredByClient;
  return json.text(indent, true);
}

std::unique_ptr<FileOutput> makeSummaryOutput(const std::filesystem::path& target, bool force) {
  return std::make_unique<SummaryOutput>(target, force);
}

}  // namespace trip
