// SPDX-License-Identifier: Apache-2.0
#include "OutputText.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace trip {

void appendNumber(std::string& out, double value) {
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  out.append(digits.data(), end);
}

std::string timeText(double secondsSince1970) {
  constexpr double kYear1 = -62135596800.0;
  constexpr double kYear10000 = 253402300800.0;
  std::string text;
  const double milliseconds = std::round(secondsSince1970 * 1000.0);
  if (!(milliseconds >= kYear1 * 1000.0 && milliseconds < kYear10000 * 1000.0)) {
    appendNumber(text, secondsSince1970);
    return text;
  }
  const std::chrono::sys_time<std::chrono::milliseconds> time{
      std::chrono::milliseconds{static_cast<std::int64_t>(milliseconds)}};
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date{day};
  const std::chrono::hh_mm_ss clock{time - day};
  std::array<char, 40> buffer;
  const int length =
      std::snprintf(buffer.data(), buffer.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                    static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                    static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                    static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
  text.assign(buffer.data(), static_cast<std::size_t>(length));
  return text;
}

void appendRecordingCells(std::string& out, const TripRow& row) {
  if (row.secondsSince1970 && std::isfinite(*row.secondsSince1970)) out += timeText(*row.secondsSince1970);
  for (const std::optional<double> cell :
       {std::optional(row.coordinate.latitude), std::optional(row.coordinate.longitude), row.altitudeMeters,
        row.accuracyMeters, row.speedMetersPerSecond, row.courseDegrees}) {
    appendCell(out, cell);
  }
}

void appendCell(std::string& out, std::optional<double> value) {
  out += ',';
  if (value && std::isfinite(*value)) appendNumber(out, *value);
}

void appendMark(std::string& out, bool isMarked) { out += isMarked ? ",1" : ",0"; }

std::optional<double> knownSmoothSpeed(const TripRow& row) {
  if (!(row.smoothSpeedMetersPerSecond >= 0.0)) return std::nullopt;
  return row.smoothSpeedMetersPerSecond;
}

std::string asUtf8(const std::string& text) {
  using nlohmann::json;
  return json::parse(json(text).dump(-1, ' ', false, json::error_handler_t::replace)).get<std::string>();
}

}  // namespace trip
