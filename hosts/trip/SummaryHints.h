// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_SUMMARYHINTS_H
#define ZRCORE_HOSTS_TRIP_SUMMARYHINTS_H

#include <string>

#include "TripRow.h"

namespace trip {

/// Why a trip has no speeds, and what to do about it; empty when it has some, or no fix.
std::string missingSpeedHint(const TripSummary& summary);

/// The same for accuracies, without which the filter of measured values never finds the receiver settled.
std::string missingAccuracyHint(const TripSummary& summary);

}  // namespace trip

#endif
