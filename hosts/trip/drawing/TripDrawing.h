// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_TRIPDRAWING_H
#define ZRCORE_HOSTS_TRIP_DRAWING_TRIPDRAWING_H

#include <trip/TripRow.h>

#include <string>

#include "TripPicture.h"

namespace trip {

/// The whole picture of a trip, 1600 by 1200: title, legend, map, course and speed over time. Both formats come from
/// the same drawing.
/// @throws std::runtime_error when cairo fails (no memory, no font)
std::string drawPng(const TripPicture& picture, const TripSummary& summary);
std::string drawSvg(const TripPicture& picture, const TripSummary& summary);

}  // namespace trip

#endif
