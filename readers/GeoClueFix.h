// SPDX-License-Identifier: Apache-2.0
/// @file
/// From GeoClue's values to a fix.
#ifndef ZRCORE_READERS_GEOCLUEFIX_H
#define ZRCORE_READERS_GEOCLUEFIX_H

#include <ZRCore/CLLocation.h>

#include <cstdint>
#include <limits>
#include <optional>

namespace readers {

/// The properties of an `org.freedesktop.GeoClue2.Location`, with that interface's own values for "unknown".
struct GeoClueLocation {
  double latitude = std::numeric_limits<double>::quiet_NaN();   ///< degrees
  double longitude = std::numeric_limits<double>::quiet_NaN();  ///< degrees
  double accuracyMeters = -1.0;
  double altitudeMeters = std::numeric_limits<double>::lowest();  ///< unknown: the lowest double
  double speedMetersPerSecond = -1.0;                             ///< unknown: negative
  double headingDegrees = -1.0;                                   ///< of travel; unknown: negative
  std::uint64_t seconds = 0, microseconds = 0;                    ///< since 1970; both 0: unknown
};

/// The fix, with the platform's value for what is unknown: altitude by a vertical accuracy of -1, speed and course by
/// -1. GeoClue never says how good an altitude is: a known one gets a vertical accuracy of 0. A heading beyond 360
/// counts as unknown.
/// @param now  the time of a location that has none
/// @return     nullopt when the place is none on the Earth.
std::optional<ZRPositionFix> fixOf(const GeoClueLocation& location, NSDate now);

}  // namespace readers

#endif
