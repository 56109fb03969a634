// SPDX-License-Identifier: Apache-2.0
#include <trip/SmoothedTrack.h>

#include <cmath>

#include "FileOutput.h"
#include "OutputFile.h"
#include "TripJson.h"

namespace trip {

namespace {

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

std::string pointFeature(const TripRow& row) {
  JsonObject properties;
  properties["index"] = row.index;
  properties["time"] = timeOrNull(row.secondsSince1970);
  properties["significant"] = row.significant;
  properties["jump"] = row.jump;
  properties["stable"] = row.stable;
  properties["altitudeMeters"] = orNull(row.altitudeMeters);
  properties["accuracyMeters"] = orNull(row.accuracyMeters);
  properties["speedMetersPerSecond"] = orNull(row.speedMetersPerSecond);
  properties["courseDegrees"] = orNull(row.courseDegrees);
  properties["smoothSpeedMetersPerSecond"] = orNull(knownSmoothSpeed(row));
  properties["smoothCourseDegrees"] = row.smoothCourseDegrees;
  return R"({"type":"Feature","geometry":{"type":"Point","coordinates":)" +
         position(row.coordinate.latitude, row.coordinate.longitude) + R"(},"properties":)" + properties.text() + "}";
}

/// A track on its way into a GeoJSON geometry, kept in a scratch file.
class GeoJsonLine {
 public:
  /// @param beside  the file whose folder holds the scratch file
  explicit GeoJsonLine(const std::filesystem::path& beside) : coordinates_(beside) {}

  void add(CLLocationCoordinate2D coordinate);
  bool empty() const { return count_ == 0; }
  std::uint64_t bytesWritten() const { return coordinates_.bytesWritten(); }
  /// Writes the geometry object: a LineString, a MultiLineString when the track crosses the antimeridian (where RFC
  /// 7946 has lines cut), a Point when there is only one position.
  void writeGeometry(OutputFile& file);

 private:
  ScratchFile coordinates_;
  CLLocationCoordinate2D last_{};
  std::uint64_t count_ = 0;
  bool isCut_ = false;
};

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

class GeoJsonOutput final : public FileOutput {
 public:
  GeoJsonOutput(const std::filesystem::path& target, bool force)
      : file_(target, force), raw_(target), smoothed_(target), points_(target) {}

  void row(const TripRow& row) override {
    raw_.add(row.coordinate);
    if (track_.takes(row)) smoothed_.add(row.coordinate);
    if (row.significant || row.jump) points_.write(",\n" + pointFeature(row));
  }
  void finish(const TripSummary&) override;
  void commit() override { file_.commit(); }
  bool hasRoom() const override {
    return hasRoomForRow(raw_.bytesWritten() + smoothed_.bytesWritten() + points_.bytesWritten());
  }

 private:
  void writeTrack(const char* separator, const char* name, GeoJsonLine& track);

  OutputFile file_;
  GeoJsonLine raw_, smoothed_;
  ScratchFile points_;
  SmoothedTrack track_;
};

void GeoJsonOutput::writeTrack(const char* separator, const char* name, GeoJsonLine& track) {
  if (track.empty()) return;
  file_.write(separator);
  file_.write(std::string(R"({"type":"Feature","properties":{"name":")") + name + R"("},"geometry":)");
  track.writeGeometry(file_);
  file_.write("}");
}

void GeoJsonOutput::finish(const TripSummary&) {
  file_.write(R"({"type":"FeatureCollection","features":[)");
  writeTrack("\n", "raw", raw_);
  writeTrack(",\n", "smoothed", smoothed_);  // never without the raw track before it
  points_.copyTo(file_);
  file_.write("\n]}\n");
  file_.store();
}

}  // namespace

std::unique_ptr<FileOutput> makeGeoJsonOutput(const std::filesystem::path& target, bool force) {
  return std::make_unique<GeoJsonOutput>(target, force);
}

}  // namespace trip
