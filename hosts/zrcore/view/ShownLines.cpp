// SPDX-License-Identifier: Apache-2.0
#include "ShownLines.h"

#include <trip/OutputText.h>
#include <trip/Words.h>
#include <trip/outputs/TripJson.h>

#include <string>

namespace {

constexpr const char* kHeader =
    "time\tlat\tlon\taccuracy_m\tcourse\tsmooth_course\tspeed_mps\tsmooth_speed_mps\tmark\tstable\n";

class FixLines final : public trip::TripOutput {
 public:
  explicit FixLines(StandardOutput& output) : output_(output) {}
  void row(const trip::TripRow& row) override {
    if (row.index == 0) output_.write(kHeader);
    std::string line = row.secondsSince1970 ? trip::timeText(*row.secondsSince1970) : "-";
    const auto add = [&line](const std::string& cell) { (line += '\t') += cell; };
    add(trip::fixedText(row.coordinate.latitude, 7));
    add(trip::fixedText(row.coordinate.longitude, 7));
    add(trip::fixedText(row.accuracyMeters, 1));
    add(trip::fixedText(row.courseDegrees, 1));
    add(trip::fixedText(row.smoothCourseDegrees, 1));
    add(trip::fixedText(row.speedMetersPerSecond, 2));
    add(trip::fixedText(trip::knownSmoothSpeed(row), 2));
    add(row.jump ? "J" : row.significant ? "S" : "-");
    add(row.stable ? "stable" : "-");
    output_.write(line += '\n');
  }
  void finish(const trip::TripSummary&) override {}

 private:
  StandardOutput& output_;
};

class JsonLines final : public trip::TripOutput {
 public:
  explicit JsonLines(StandardOutput& output) : output_(output) {}
  void row(const trip::TripRow& row) override {
    using trip::Json, trip::orNull, trip::timeOrNull;
    trip::JsonObject json;
    json["index"] = row.index;
    json["line"] = row.line;
    json["time"] = timeOrNull(row.secondsSince1970);
    json["latitude"] = row.coordinate.latitude;
    json["longitude"] = row.coordinate.longitude;
    json["altitudeMeters"] = orNull(row.altitudeMeters);
    json["accuracyMeters"] = orNull(row.accuracyMeters);
    json["speedMetersPerSecond"] = orNull(row.speedMetersPerSecond);
    json["courseDegrees"] = orNull(row.courseDegrees);
    json["smoothSpeedMetersPerSecond"] = orNull(trip::knownSmoothSpeed(row));
    json["smoothCourseDegrees"] = row.smoothCourseDegrees;
    json["significant"] = row.significant;
    json["jump"] = row.jump;
    json["stable"] = row.stable;
    json["snappedLatitude"] = row.snapped ? Json(row.snapped->latitude) : Json(nullptr);
    json["snappedLongitude"] = row.snapped ? Json(row.snapped->longitude) : Json(nullptr);
    if (row.isEstimated) json["estimated"] = true;
    output_.write(json.text() + '\n');
  }
  void finish(const trip::TripSummary& summary) override {
    output_.write("{\"summary\":" + trip::summaryJson(summary, -1) + "}\n");
  }

 private:
  StandardOutput& output_;
};

}  // namespace

std::unique_ptr<trip::TripOutput> makeFixLines(StandardOutput& output) { return std::make_unique<FixLines>(output); }
std::unique_ptr<trip::TripOutput> makeJsonLines(StandardOutput& output) { return std::make_unique<JsonLines>(output); }
