// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_VIEWTHINNING_H
#define ZRCORE_HOSTS_DEMO_VIEWTHINNING_H

#include <trip/drawing/MapTransform.h>

#include <cstddef>
#include <span>
#include <vector>

#include "TripTrack.h"

namespace demo {

/// The part of a track that a view shows, in its pixels and in no more detail than can be seen, so that drawing takes
/// the same time for any length of the trip.
struct VisibleTrack {
  std::vector<trip::DiagramPoint> strokes;
  double tolerancePixels = 1.0;  ///< each visible fix lies nearer than this to one of the points
};

/// @param maxPoints  at least 4. Strokes that leave the view and come back keep their ends; should there be so many
///                   that even a coarse tolerance does not help, the rest of the track is left out.
VisibleTrack visibleTrack(std::span<const TrackPoint> track, const trip::MapTransform& view, std::size_t maxPoints);

/// The marks that a view shows, in its pixels, at most one for each square of `cellPixels` (> 0), so that they do not
/// cover each other.
std::vector<trip::DiagramPoint> visibleMarks(const std::vector<TrackPoint>& marks, const trip::MapTransform& view,
                                             double cellPixels);

}  // namespace demo

#endif
