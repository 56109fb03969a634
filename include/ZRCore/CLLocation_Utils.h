// SPDX-License-Identifier: Apache-2.0
/// @file
/// Operations on platform locations.
#ifndef ZRCORE_CLLOCATION_UTILS_H
#define ZRCORE_CLLOCATION_UTILS_H

#include <ZRCore/CLLocation.h>
#include <ZRCore/ZRExport.h>

#include <memory>

namespace CLLocation_Utils {

/// The initial great-circle direction from one coordinate to another.
/// @return degrees clockwise from north plus 360, in [180, 540]: not reduced, because callers reduce it.
///         450 for due east along the equator, 360 for equal coordinates.
ZR_EXPORT double directionFromCoordinateToCoordinate(CLLocationCoordinate2D from, CLLocationCoordinate2D to);

/// `directionFromCoordinateToCoordinate` between the places of two locations.
ZR_EXPORT double directionToLocation(const CLLocation& location, const CLLocation& other);

/// A new location near `location`, in a direction derived from that of `other`.
///
/// The direction, in degrees, is multiplied by the factor that turns radians into degrees, and the distance is divided
/// by 1000 and by 6370254000, so that for any ordinary distance the result lies within millimetres of `location`. Both
/// are part of the interface: results must stay comparable to the last bit. For a true destination point use
/// `ZRDestinationCoordinate`.
/// @param distance  nominally metres; the result lies about a millionth of it away (a millimetre for a kilometre). At a
///                  pole the division by the sine of the colatitude gives NaN.
/// @return a location of which only the coordinate is given.
ZR_EXPORT std::shared_ptr<CLLocation> newLocationAtDistanceToLocation(const CLLocation& location, double distance,
                                                                      const CLLocation& other);

}  // namespace CLLocation_Utils

#endif
