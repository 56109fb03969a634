// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_COORDINATEDIRECTIONS_H
#define ZRCORE_GEOMETRY_COORDINATEDIRECTIONS_H

#include <ZRCore/ZRGeometry.h>

/// The arithmetic behind the directions between locations, for the rooms that build on geometry. Pure, any thread.
namespace geometry {

/// Initial great-circle direction plus a full turn: degrees, in [180, 540].
double directionWithTurn(CLLocationCoordinate2D from, CLLocationCoordinate2D to) noexcept;

/// A coordinate at a nominal distance from `from`, in a direction derived from that of `to`; degrees, not wrapped. NaN
/// where `from` is a pole.
CLLocationCoordinate2D coordinateAtDistance(CLLocationCoordinate2D from, double distance,
                                            CLLocationCoordinate2D to) noexcept;

}  // namespace geometry

#endif
