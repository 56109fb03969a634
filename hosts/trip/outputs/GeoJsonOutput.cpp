// SPDX-License-Identifier: Apache-2.0
#include "GeoJsonOutput.h"

#include <trip/OutputText.h>

#include <cmath>
#include <nlohmann/json.hpp>

namespace trip {

namespace {
using Json = nlohmann::ordered_json;

std::string position(double latitude, double longitude) {
  std::string text = "[";
  appendNumber(text, longitude);
  text += ',';
  appendNumber(text, latitude);
  text += ']';
  return text;
}

/// The latitude at which a straight step (in degrees) that passes the antimeridian meets it.
double latitudeAtAntimeridian(CLLocationCoordinate2D from, CLLocationCoordinate2D to) {
  const double toEdge = 180.0 - std::fabs(from.longitude);
  const double fromEdge = 180.0 - std::fabs(to.longitude);
  if (toEdge + fromEdge <= 0.0) return from.latitude;
  return from.latitude + (to.latitude - from.latitude) * toEdge / (toEdge + fromEdge);
}

Json numberOrNull(std::optional<double> value) { return value ? Json(*value) : Json(nullptr); }

std::string pointFeature(const TripRow& row) {
  const Json properties{
      {"index", row.index},
      {"time", row.secondsSince1970 ? Json(timeText(*row.secondsSince1970)) : Json(nullptr)},
      {"significant", row.significant},
      {"jump", row.jump},
      {"stable", row.stable},
      {"altitudeMeters", numberOrNull(row.altitudeMeters)},
      {"accuracyMeters", numberOrNull(row.accuracyMeters)},
      {"speedMetersPerSecond", numberOrNull(row.speedMetersPerSecond)},
      {"courseDegrees", numberOrNull(row.courseDegrees)},
      {"smoothSpeedMetersPerSecond", numberOrNull(knownSmoothSpeed(row))},
      {"smoothCourseDegrees", row.smoothCourseDegrees},
  };
  return R"({"type":"Feature","geometry":{"type":"Point","coordinates":)" +
         position(row.coordinate.latitude, row.coordinate.longitude) + R"(},"properties":)" + properties.dump() + "}";
}
}  // namespace

void GeoJsonLine::add(CLLocationCoordinate2D coordinate) {
  std::string text;
  if (count_ > 0) {
    text = ",\n";
    if (std::fabs(coordinate.longitude - last_.longitude) > 180.0) {
      const double latitude = latitudeAtAntimeridian(last_, coordinate);
      const double edge = std::copysign(180.0, last_.longitude);
      text += position(latitude, edge) + "],\n[" + position(latitude, -edge) + ",\n";
      isCut_ = true;
    }
  }
  coordinates_.write(text + position(coordinate.latitude, coordinate.longitude));
  last_ = coordinate;
  ++count_;
}

void GeoJsonLine::writeGeometry(OutputFile& file) {
  const bool isPoint = count_ == 1;
  file.write(isPoint  ? R"({"type":"Point","coordinates":)"
             : isCut_ ? R"({"type":"MultiLineString","coordinates":[[)"
                      : R"({"type":"LineString","coordinates":[)");
  coordinates_.copyTo(file);
  file.write(isPoint ? "}" : isCut_ ? "]]}" : "]}");
}

GeoJsonOutput::GeoJsonOutput(const std::filesystem::path& target, bool force)
    : file_(target, force), raw_(target), smoothed_(target), points_(target) {}

void GeoJsonOutput::row(const TripRow& row) {
  raw_.add(row.coordinate);
  if (track_.takes(row)) smoothed_.add(row.coordinate);
  if (row.significant || row.jump) points_.write(",\n" + pointFeature(row));
}

void GeoJsonOutput::finish(const TripSummary&) {
  file_.write(R"({"type":"FeatureCollection","features":[)");
  if (!raw_.empty()) {
    file_.write(
        "\n"
        R"({"type":"Feature","properties":{"name":"raw"},"geometry":)");
    raw_.writeGeometry(file_);
    file_.write("}");
  }
  if (!smoothed_.empty()) {  // never without the raw track before it
    file_.write(
        ",\n"
        R"({"type":"Feature","properties":{"name":"smoothed"},"geometry":)");
    smoothed_.writeGeometry(file_);
    file_.write("}");
  }
  points_.copyTo(file_);
  file_.write("\n]}\n");
  file_.store();
}

bool GeoJsonOutput::hasRoom() const {
  return hasRoomForRow(raw_.bytesWritten() + smoothed_.bytesWritten() + points_.bytesWritten());
}

}  // namespace trip
