#include "FixLines.h"

#include <trip/OutputText.h>

#include <string>

#include "FixedText.h"

FixLines::FixLines(StandardOutput& output) : output_(output) {
  output_.write("time\tlat\tlon\taccuracy_m\tcourse\tsmooth_course\tspeed_mps\tsmooth_speed_mps\tmark\tstable\n");
}

void FixLines::row(const trip::TripRow& row) {
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
