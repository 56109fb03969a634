// SPDX-License-Identifier: Apache-2.0
#include "TripTexts.h"

#include <trip/OutputText.h>
#include <trip/Words.h>

namespace demo {

namespace {

std::string orUnknown(std::optional<double> value, const char* unit) {
  return value ? trip::fixedText(value, 0) + unit : "unknown";
}

}  // namespace

std::string rowText(const std::optional<trip::TripRow>& row) {
  if (!row) return "Nothing heard yet";
  std::string text =
      trip::fixedText(row->coordinate.latitude, 5) + ", " + trip::fixedText(row->coordinate.longitude, 5);
  if (row->accuracyMeters) text += " ± " + trip::fixedText(row->accuracyMeters, 0) + " m";
  text += "\nSpeed " + orUnknown(trip::kilometersPerHour(row->speedMetersPerSecond), " km/h") + ", smoothed " +
          orUnknown(trip::kilometersPerHour(trip::knownSmoothSpeed(*row)), " km/h");
  text += "\nCourse " + orUnknown(row->courseDegrees, "°") + ", smoothed " + orUnknown(row->smoothCourseDegrees, "°");
  text += row->stable ? "\nReceiver settled" : "\nReceiver not settled";
  if (row->jump) text += ", implausible jump";
  return text;
}

}  // namespace demo
