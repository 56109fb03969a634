// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_OUTPUTS_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_OUTPUTS_H

#include <trip/TripRow.h>
#include <trip/drawing/PlaceMark.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace trip {

/// All files of a trip: trip.csv, trip.geojson, trip.png, trip.svg and summary.json in `dir`, which is made when
/// missing and held until the object goes.
///
/// `finish` completes all of them before the first appears under its name. summary.json comes last: where it stands,
/// the others are whole and of the same run. A file that cannot be completed does not take the others with it, but the
/// summary.
/// @param places       marked in the pictures
/// @throws OutputError when one of the files is there and `force` is false, or another process holds the folder, before
///                     anything is written; and when a file cannot be written, now or later.
std::unique_ptr<TripOutput> makeOutputs(const std::filesystem::path& dir, bool force,
                                        std::vector<PlaceMark> places = {});

}  // namespace trip

#endif
