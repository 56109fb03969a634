// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_H

#include <filesystem>
#include <memory>
#include <vector>

#include "PlaceMark.h"
#include "TripRow.h"

namespace trip {

/// All files of a trip: trip.csv, trip.geojson, summary.json, trip.png and trip.svg in `dir`, which is made when
/// missing.
///
/// Rows and the summary go to each output in turn. A file stands under its name once its output is finished.
/// @param places       marked in the pictures
/// @throws OutputError when one of the files is there and `force` is false, before anything is written; and when one
///                     cannot be written, now or later.
std::vector<std::unique_ptr<TripOutput>> makeOutputs(const std::filesystem::path& dir, bool force,
                                                     std::vector<PlaceMark> places = {});

}  // namespace trip

#endif
