// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_TRIPJSON_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_TRIPJSON_H

#include <trip/OutputText.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace trip {

using Json = nlohmann::ordered_json;

inline Json orNull(std::optional<double> value) { return value ? Json(*value) : Json(nullptr); }

/// In ISO 8601.
inline Json timeOrNull(std::optional<double> secondsSince1970) {
  return secondsSince1970 ? Json(timeText(*secondsSince1970)) : Json(nullptr);
}

/// The summary as a JSON object: all its fields, the times in ISO 8601 (null when unknown) and the duration.
/// @param indent  blanks per level; -1: everything in one line
std::string summaryJson(const TripSummary& summary, int indent);

}  // namespace trip

#endif
