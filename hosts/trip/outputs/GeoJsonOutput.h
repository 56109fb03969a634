// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_GEOJSONOUTPUT_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_GEOJSONOUTPUT_H

#include <trip/SmoothedTrack.h>

#include "FileOutput.h"

namespace trip {

/// A track on its way into a GeoJSON geometry, kept in a scratch file.
class GeoJsonLine {
 public:
  /// @param beside the file whose folder holds the scratch file.
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

/// The trip as an RFC 7946 FeatureCollection: the feature "raw" through all fixes, the feature "smoothed", and a Point
/// for each marked fix. Altitudes are properties, not third coordinates: those would have to count from the ellipsoid.
class GeoJsonOutput final : public FileOutput {
 public:
  GeoJsonOutput(const std::filesystem::path& target, bool force);
  void row(const TripRow& row) override;
  void finish(const TripSummary& summary) override;
  void commit() override { file_.commit(); }
  bool hasRoom() const override;

 private:
  OutputFile file_;
  GeoJsonLine raw_;
  GeoJsonLine smoothed_;
  ScratchFile points_;
  SmoothedTrack track_;
};

}  // namespace trip

#endif
