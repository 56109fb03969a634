// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MODEL_UNSETCOORDINATE_H
#define ZRCORE_MODEL_UNSETCOORDINATE_H

#include <ZRCore/ZRGeometry.h>

/// Whether the coordinate is exactly (0, 0), which in addresses and places means that none is set.
inline bool isUnset(CLLocationCoordinate2D coordinate) {
  return coordinate.latitude == 0.0 && coordinate.longitude == 0.0;
}

#endif
