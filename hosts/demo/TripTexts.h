// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TRIPTEXTS_H
#define ZRCORE_HOSTS_DEMO_TRIPTEXTS_H

#include <trip/TripRow.h>

#include <optional>
#include <string>

namespace demo {

/// What the plain client heard last, in a few lines: place, speed and course as measured and as filtered, and what the
/// filter makes of it.
std::string rowText(const std::optional<trip::TripRow>& row);

}  // namespace demo

#endif
