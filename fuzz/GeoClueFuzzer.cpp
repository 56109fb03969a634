// SPDX-License-Identifier: Apache-2.0
// Any numbers as a location of the system's location service: a fix of it is a place, and says what it knows.
#include <readers/GeoClueFix.h>

#include <cmath>
#include <cstdint>
#include <cstring>

#include "FuzzLaws.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  readers::GeoClueLocation location;
  std::memcpy(&location, data, std::min(size, sizeof location));
  const auto fix = readers::fixOf(location, NSDate{1e9});
  const bool isPlace = std::fabs(location.latitude) <= 90.0 && std::fabs(location.longitude) <= 180.0;
  require(fix.has_value() == isPlace, "what is a place on the Earth is a fix, and nothing else");
  if (!fix) return 0;
  require(fix->horizontalAccuracy >= 0.0 && std::isfinite(fix->horizontalAccuracy), "its place counts");
  require(std::isfinite(fix->altitude) && (fix->verticalAccuracy == 0.0 || fix->verticalAccuracy == -1.0),
          "its altitude is a number");
  require(fix->speed == -1.0 || (fix->speed >= 0.0 && std::isfinite(fix->speed)), "its speed is one or unknown");
  require(fix->course == -1.0 || (fix->course >= 0.0 && fix->course < 360.0), "its course is one or unknown");
  require(std::isfinite(fix->timestamp.secondsSince1970), "its time is a time");
  return 0;
}
