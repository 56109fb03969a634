// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_AXIS_H
#define ZRCORE_HOSTS_TRIP_DRAWING_AXIS_H

#include <string>
#include <vector>

namespace trip {

struct Tick {
  double value;
  std::string label;
};

/// The smallest of 1, 2, 5, 10, 20, 50 … (and their fractions) that is at least `value`, which is > 0.
double roundUp(double value);
/// The greatest of them that is at most `value`, which is > 0.
double roundDown(double value);

/// Round numbers from `from` to `to` (from < to), at most `maxTicks` + 1 of them, at least 1 apart.
std::vector<Tick> countTicks(double from, double to, int maxTicks);
/// Round clock times in UTC (seconds since 1970), at most `maxTicks` + 1 of them: "09:30", "09:30:15" where the steps
/// are shorter than a minute, "05-09" where they are whole days, "2026-05-09" for a year or more. Without a label
/// outside the years 1 to 9999.
std::vector<Tick> timeTicks(double from, double to, int maxTicks);

/// Round latitudes and longitudes in degrees, at most `maxTicks` + 1 of them: "46.805° N", with the decimals that
/// the steps need. Longitudes may go on past 180 degrees, around the world.
std::vector<Tick> latitudeTicks(double from, double to, int maxTicks);
std::vector<Tick> longitudeTicks(double from, double to, int maxTicks);

}  // namespace trip

#endif
