// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_LOCATIONROW_H
#define ZRCORE_HOSTS_TRIP_REPLAY_LOCATIONROW_H

#include <ZRCore/ZRLocation.h>
#include <trip/TripRow.h>

#include <memory>

namespace trip {

/// A row of what a client received: the fix itself from the record's base part, what the filter found from the rest.
/// Number, line and snapped place are left to the caller.
TripRow rowOfLocation(const ZRLocation& location);

/// A new record of the same fix at another place: what a snap filter returns.
std::shared_ptr<ZRLocation> locationMovedTo(CLLocationCoordinate2D place, const ZRLocation& location);

}  // namespace trip

#endif
