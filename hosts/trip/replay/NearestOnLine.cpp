// SPDX-License-Identifier: Apache-2.0
#include "NearestOnLine.h"

#include <ZRCore/ZRGeometry.hpp>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace trip {

namespace {

double radians(double degrees) { return degrees * (std::numbers::pi / 180.0); }

/// How far a value lies outside the range between two others.
double gap(double value, double a, double b) { return std::max({0.0, std::min(a, b) - value, value - std::max(a, b)}); }

}  // namespace

double longitudeNear(double longitude, double reference) {
  const double turns = (reference - longitude) / 360.0;
  return std::abs(turns) < 0.5 ? longitude : longitude + 360.0 * std::round(turns);
}

NearestOnLine::NearestOnLine(CLLocationCoordinate2D place)
    : from_(place), longitudeScale_(std::cos(radians(place.latitude))) {}

double NearestOnLine::squaredDegrees(double latitudeDifference, double longitudeDifference) const {
  const double x = longitudeDifference * longitudeScale_;
  return latitudeDifference * latitudeDifference + x * x;
}

void NearestOnLine::consider(CLLocationCoordinate2D start, CLLocationCoordinate2D end) {
  const double north = gap(from_.latitude, start.latitude, end.latitude);
  if (north * north >= nearestSquaredDegrees_) return;  // most segments of a long line end here or below, cheaply
  const CLLocationCoordinate2D from{from_.latitude, longitudeNear(from_.longitude, start.longitude)};
  const double east = gap(from.longitude, start.longitude, end.longitude);
  if (squaredDegrees(north, east) >= nearestSquaredDegrees_) return;

  const auto candidate =
      ZRCoordinateUtils::closestCoordToCoordAlongLineWithStartingCoordAndEndingCoord(from, start, end);
  const double squared = squaredDegrees(candidate.latitude - from.latitude, candidate.longitude - from.longitude);
  if (squared < nearestSquaredDegrees_) {
    nearestSquaredDegrees_ = squared;
    nearest_ = candidate;
  }
}

bool NearestOnLine::mayImproveWithin(CLLocationCoordinate2D southWest, CLLocationCoordinate2D northEast) const {
  const double longitude = longitudeNear(from_.longitude, (southWest.longitude + northEast.longitude) / 2.0);
  const double north = gap(from_.latitude, southWest.latitude, northEast.latitude);
  const double east = gap(longitude, southWest.longitude, northEast.longitude);
  return squaredDegrees(north, east) < nearestSquaredDegrees_;
}

std::optional<CLLocationCoordinate2D> NearestOnLine::place() const {
  if (std::isinf(nearestSquaredDegrees_)) return std::nullopt;
  return CLLocationCoordinate2D{nearest_.latitude, longitudeNear(nearest_.longitude, 0.0)};
}

double NearestOnLine::meters() const { return EarthRadius * radians(std::sqrt(nearestSquaredDegrees_)); }

}  // namespace trip
