// SPDX-License-Identifier: Apache-2.0
#include "JsonLines.h"

#include <trip/OutputText.h>
#include <trip/outputs/SummaryOutput.h>

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

Json orNull(std::optional<double> value) { return value ? Json(*value) : Json(nullptr); }

}  // namespace

void JsonLines::row(const trip::TripRow& row) {
  Json json{
      {"index", row.index},
      {"line", row.line},
      {"time", row.secondsSince1970 ? Json(trip::timeText(*row.secondsSince1970)) : Json(nullptr)},
      {"latitude", row.coordinate.latitude},
      {"longitude", row.coordinate.longitude},
      {"altitudeMeters", orNull(row.altitudeMeters)},
      {"accuracyMeters", orNull(row.accuracyMeters)},
      {"speedMetersPerSecond", orNull(row.speedMetersPerSecond)},
      {"courseDegrees", orNull(row.courseDegrees)},
      {"smoothSpeedMetersPerSecond", orNull(trip::knownSmoothSpeed(row))},
      {"smoothCourseDegrees", row.smoothCourseDegrees},
      {"significant", row.significant},
      {"jump", row.jump},
      {"stable", row.stable},
      {"snappedLatitude", row.snapped ? Json(row.snapped->latitude) : Json(nullptr)},
      {"snappedLongitude", row.snapped ? Json(row.snapped->longitude) : Json(nullptr)},
  };
  if (row.isEstimated) json["estimated"] = true;
  output_.write(json.dump() + '\n');
}

void JsonLines::finish(const trip::TripSummary& summary) {
  output_.write("{\"summary\":" + trip::summaryJson(summary, -1) + "}\n");
}
