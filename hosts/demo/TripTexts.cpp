// SPDX-License-Identifier: Apache-2.0
#include "TripTexts.h"

#include <trip/OutputText.h>

#include <cmath>
#include <cstdio>

namespace demo {

namespace {

constexpr double kKilometersPerHour = 3.6;

template <class... Values>
std::string formatted(const char* format, Values... values) {
  char text[128];
  std::snprintf(text, sizeof text, format, values...);
  return text;
}

std::string measured(std::optional<double> value, const char* format) {
  return value ? formatted(format, *value) : "unknown";
}

std::optional<double> kilometersPerHour(std::optional<double> metersPerSecond) {
  return metersPerSecond ? std::optional(*metersPerSecond * kKilometersPerHour) : std::nullopt;
}

}  // namespace

std::string clockText(double seconds) {
  const long whole = std::lround(std::fmin(std::fmax(std::floor(seconds), 0.0), 1e9));
  const long hours = whole / 3600, minutes = whole / 60 % 60;
  return hours > 0 ? formatted("%ld:%02ld:%02ld", hours, minutes, whole % 60)
                   : formatted("%ld:%02ld", minutes, whole % 60);
}

std::string rowText(const std::optional<trip::TripRow>& row) {
  if (!row) return "Nothing heard yet";
  std::string text = formatted("%.5f, %.5f", row->coordinate.latitude, row->coordinate.longitude);
  if (row->accuracyMeters) text += formatted(" ± %.0f m", *row->accuracyMeters);
  text += "\nSpeed " + measured(kilometersPerHour(row->speedMetersPerSecond), "%.0f km/h") + ", smoothed " +
          measured(kilometersPerHour(trip::knownSmoothSpeed(*row)), "%.0f km/h");
  text += "\nCourse " + measured(row->courseDegrees, "%.0f°") + ", smoothed " +
          formatted("%.0f°", row->smoothCourseDegrees);
  text += row->stable ? "\nReceiver settled" : "\nReceiver not settled";
  if (row->jump) text += ", implausible jump";
  return text;
}

}  // namespace demo
