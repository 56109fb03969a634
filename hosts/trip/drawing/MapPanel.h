// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_MAPPANEL_H
#define ZRCORE_HOSTS_TRIP_DRAWING_MAPPANEL_H

#include "Canvas.h"
#include "TripPicture.h"

namespace trip {

/// The tracks in the Mercator plane, north up, at the same scale both ways, with meridians, parallels and a scale bar
/// in true metres.
void drawMap(Canvas& canvas, const Area& panel, const TripPicture& picture);

}  // namespace trip

#endif
