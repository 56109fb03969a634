// SPDX-License-Identifier: Apache-2.0
#include "FixLines.h"

#include <trip/OutputText.h>
#include <zrcore/NumberText.h>

#include <string>

namespace {

constexpr const char* kHeader =
    "time\tlat\tlon\taccuracy_m\tcourse\tsmooth_course\tspeed_mps\tsmooth_speed_mps\tmark\tstable\n";

}  // namespace

void FixLines::row(const trip::TripRow& row) {
  if (row.index == 0) output_.write(kHeader);
  std::string line = row.secondsSince1970 ? trip::timeText(*row.secondsSince1970) : "-";
  const auto add = [&line](const std::string& cell) { (line += '\t') += cell; };
  add(fixedText(row.coordinate.latitude, 7));
  add(fixedText(row.coordinate.longitude, 7));
  add(fixedText(row.accuracyMeters, 1));
  add(fixedText(row.courseDegrees, 1));
  add(fixedText(row.smoothCourseDegrees, 1));
  add(fixedText(row.speedMetersPerSecond, 2));
  add(fixedText(trip::knownSmoothSpeed(row), 2));
  add(row.jump ? "J" : row.significant ? "S" : "-");
  add(row.stable ? "stable" : "-");
  output_.write(line += '\n');
}
