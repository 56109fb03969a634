// SPDX-License-Identifier: Apache-2.0
// Any bytes as a date, as a number of seconds, and as the translation of a phrase with a number.
#include <ZRCore/NSDate_ZR.h>
#include <time.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "FuzzLaws.h"
#include "InformalInterval.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);

  if (const auto date = NSDate_ZR::dateWithISO8601String(input)) {
    require(size == 20, "a date has 20 bytes");
    tm fields{};
    const char* const end = strptime(input.c_str(), "%Y-%m-%dT%H:%M:%SZ", &fields);
    require(end == input.c_str() + size, "a date has the shape that C reads too");
    const auto seconds = static_cast<double>(timegm(&fields));
    require(date->secondsSince1970 == seconds, "a date has C's value");
    require(seconds >= -62135596800.0 && seconds <= 253402300799.0, "a date lies in the years 1 to 9999");
    require(NSDate_ZR::monthDayYear(*date).has_value(), "a date that was read can be written");
  }

  if (const auto date = NSDate_ZR::dateFromIntervalSince1970FromStringDividedBy(input)) {
    require(std::isfinite(date->secondsSince1970), "a number is finite");
    char* end = nullptr;
    require(std::strtod(input.c_str(), &end) == date->secondsSince1970, "a number has C's value");
    require(end == input.c_str() + size, "a number is the whole text");
    static_cast<void>(NSDate_ZR::monthDayYear(*date));
  }
  if (size >= sizeof(double)) {
    double seconds = 0.0;
    input.copy(reinterpret_cast<char*>(&seconds), sizeof seconds);
    static_cast<void>(NSDate_ZR::monthDayYear({seconds}));
    static_cast<void>(informalInterval(seconds));
  }

  const std::string filled = fillInNumber(input, -7);
  require(filled.size() <= 2 * size, "each of the two letters of \"%d\" makes one character at most");
  if (input.find('%') == std::string::npos) require(filled == input, "a text without directives stays");
  return 0;
}
