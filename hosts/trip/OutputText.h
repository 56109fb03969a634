// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTTEXT_H
#define ZRCORE_HOSTS_TRIP_OUTPUTTEXT_H

#include <optional>
#include <string>

#include "TripRow.h"

namespace trip {

/// The header of a recording in comma-separated values: what the tool reads, and the first columns of what it writes.
inline constexpr const char* kRecordingHeader = "time,lat,lon,altitude,accuracy,speed,course";

/// Appends the shortest text that reads back as the same number, in any locale.
void appendNumber(std::string& out, double value);

/// ISO 8601 in UTC to the millisecond ("2026-05-09T09:30:00.000Z"); plain seconds since 1970 outside the years 1 to
/// 9999, which the format cannot say.
std::string timeText(double secondsSince1970);

/// Appends the cells under `kRecordingHeader`. What is missing or not finite is an empty cell.
void appendRecordingCells(std::string& out, const TripRow& row);

/// Appends a comma and a cell; empty when missing or not finite.
void appendCell(std::string& out, std::optional<double> value);
void appendMark(std::string& out, bool isMarked);  ///< the same for a mark: 1 or 0

/// The smoothed speed, or nothing where the filter says "unknown" with a negative value.
std::optional<double> knownSmoothSpeed(const TripRow& row);

/// The same text with each byte that is not UTF-8 replaced: file names may be any bytes, pictures and JSON may not.
std::string asUtf8(const std::string& text);

}  // namespace trip

#endif
