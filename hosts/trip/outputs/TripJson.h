// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_TRIPJSON_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_TRIPJSON_H

#include <trip/OutputText.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace trip {

using Json = nlohmann::ordered_json;

/// An object on its way into text. The library takes memory to destroy what is not empty, and ends the process where
/// there is none; so it is emptied from the leaves on. Write `json["key"] = value`: lists in braces make more arrays.
class JsonObject {
 public:
  JsonObject() = default;
  JsonObject(const JsonObject&) = delete;
  JsonObject& operator=(const JsonObject&) = delete;
  ~JsonObject() { empty(json_); }

  Json& operator[](const char* key) { return json_[key]; }
  std::string text(int indent = -1, bool isAscii = false) const {
    return json_.dump(indent, ' ', isAscii, Json::error_handler_t::replace);
  }

 private:
  static void empty(Json& json) {
    for (Json& part : json) {
      if (part.is_structured()) empty(part);
    }
    json.clear();
  }

  Json json_ = Json::object();
};

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
