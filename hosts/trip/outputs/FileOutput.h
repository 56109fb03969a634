// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_FILEOUTPUT_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_FILEOUTPUT_H

#include <trip/TripRow.h>
#include <trip/drawing/PlaceMark.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace trip {

/// An output that is a file. `finish` completes it under its provisional name; then `commit` puts it under its own.
class FileOutput : public TripOutput {
 public:
  virtual void commit() = 0;
};

// Each throws OutputError when a file cannot be made, or is there already and `force` is false.

/// A table with a line per fix. Its first columns are those of a recording, so that it can be replayed in turn.
/// Units: metres, metres per second, degrees; marks are 1 or 0; what is missing is an empty cell.
std::unique_ptr<FileOutput> makeCsvOutput(const std::filesystem::path& target, bool force);

/// The trip as an RFC 7946 FeatureCollection: the feature "raw" through all fixes, the feature "smoothed", and a Point
/// for each marked fix. Altitudes are properties, not third coordinates: those would have to count from the ellipsoid.
std::unique_ptr<FileOutput> makeGeoJsonOutput(const std::filesystem::path& target, bool force);

/// The picture of a trip, as PNG and as SVG.
std::unique_ptr<FileOutput> makePictureOutput(const std::filesystem::path& png, const std::filesystem::path& svg,
                                              bool force, std::vector<PlaceMark> places = {});

/// The summary as `summaryJson` has it.
std::unique_ptr<FileOutput> makeSummaryOutput(const std::filesystem::path& target, bool force);

}  // namespace trip

#endif
