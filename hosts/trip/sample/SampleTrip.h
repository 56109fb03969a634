// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_SAMPLE_SAMPLETRIP_H
#define ZRCORE_HOSTS_TRIP_SAMPLE_SAMPLETRIP_H

#include <trip/TripRow.h>

#include <cstdint>
#include <string>
#include <vector>

namespace trip {

/// The seed of `samples/drive.csv`.
inline constexpr std::uint64_t kSampleSeed = 20260509;

/// An invented drive of about twelve minutes, one fix a second, as a receiver in a car would report it: the accuracy
/// settles during the first ten seconds, errors of a few metres drift slowly, the place wanders at a red light, a
/// tunnel swallows the fixes and two fixes jump away. Only what a receiver reports is filled in.
///
/// The same seed gives the same fixes everywhere: the random numbers are home-made (the standard distributions differ
/// between libraries), and the values are rounded far above the last bits of the sine.
std::vector<TripRow> sampleTrip(std::uint64_t seed);

/// The fixes as a recording in comma-separated values.
std::string sampleTripCsv(std::uint64_t seed);

}  // namespace trip

#endif
