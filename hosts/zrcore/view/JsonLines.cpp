// SPDX-License-Identifier: Apache-2.0
#include "JsonLines.h"

#include <trip/outputs/RowJson.h>
#include <trip/outputs/SummaryOutput.h>

void JsonLines::row(const trip::TripRow& row) {
  using trip::Json, trip::orNull, trip::timeOrNull;
  const Json json{
      {"index", row.index},
      {"line", row.line},
      {"time", timeOrNull(row.secondsSince1970)},
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
  output_.write(json.dump() + '\n');
}

void JsonLines::finish(const trip::TripSummary& summary) {
  output_.write("{\"summary\":" + trip::summaryJson(summary, -1) + "}\n");
}
