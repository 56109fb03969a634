// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_ROWJSON_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_ROWJSON_H

#include <trip/OutputText.h>

#include <nlohmann/json.hpp>
#include <optional>

namespace trip {

using Json = nlohmann::ordered_json;

inline Json orNull(std::optional<double> value) { return value ? Json(*value) : Json(nullptr); }

/// In ISO 8601.
inline Json timeOrNull(std::optional<double> secondsSince1970) {
  return secondsSince1970 ? Json(timeText(*secondsSince1970)) : Json(nullptr);
}

}  // namespace trip

#endif
