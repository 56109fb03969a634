// SPDX-License-Identifier: Apache-2.0
#include "MapTransform.h"

#include <ZRCore/ZRGeometryAdditions.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Axis.h"

namespace trip {

namespace {

double latitudeAt(double mapPointY) { return ZRCoordinateForMapPoint({0.0, mapPointY}).latitude; }

}  // namespace

MapTransform::MapTransform(ZRMapPoint center, double pixelsPerMapPoint, const Area& panel)
    : panel_(panel),
      center_(center),
      scale_(pixelsPerMapPoint),
      metersPerMapPoint_(ZRGroundResolutionAtLatitude(latitudeAt(center.y))) {}

double MapTransform::centerLatitude() const { return latitudeAt(center_.y); }

double MapTransform::scaleSpread() const {
  const auto difference = [this](double y) {
    return std::fabs(ZRGroundResolutionAtLatitude(latitudeAt(mapPoint({0.0, y}).y)) / metersPerMapPoint_ - 1.0);
  };
  return std::max(difference(panel_.y), difference(panel_.bottom()));
}

double scaleBarMeters(const MapTransform& transform, double longestPixels) {
  return roundDown(transform.meters(longestPixels));
}

std::string scaleBarLabel(const MapTransform& transform, double lengthMeters) {
  std::string label = lengthText(lengthMeters);
  if (transform.scaleSpread() <= 0.02) return label;
  char place[32];
  std::snprintf(place, sizeof place, " at %.1f\u00b0 %c", std::fabs(transform.centerLatitude()),
                transform.centerLatitude() < 0.0 ? 'S' : 'N');
  return label + place;
}

}  // namespace trip
