// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_PLACEMARK_H
#define ZRCORE_HOSTS_TRIP_DRAWING_PLACEMARK_H

#include <ZRCore/ZRGeometry.h>

#include <string>

namespace trip {

/// A place that a trip's picture marks where its map shows it.
struct PlaceMark {
  CLLocationCoordinate2D coordinate;  ///< degrees, valid
  std::string title;                  ///< UTF-8
};

}  // namespace trip

#endif
