// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/CLLocation_Utils.h>
#include <geometry/CoordinateDirections.h>

namespace CLLocation_Utils {

double directionFromCoordinateToCoordinate(CLLocationCoordinate2D from, CLLocationCoordinate2D to) {
  return geometry::directionWithTurn(from, to);
}

double directionToLocation(const CLLocation& location, const CLLocation& other) {
  return directionFromCoordinateToCoordinate(location.coordinate(), other.coordinate());
}

std::shared_ptr<CLLocation> newLocationAtDistanceToLocation(const CLLocation& location, double distance,
                                                            const CLLocation& other) {
  const CLLocationCoordinate2D place =
      geometry::coordinateAtDistance(location.coordinate(), distance, other.coordinate());
  return CLLocation::initWithLatitudeLongitude(place.latitude, place.longitude);
}

}  // namespace CLLocation_Utils
