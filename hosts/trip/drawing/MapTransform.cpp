// SPDX-License-Identifier: Apache-2.0
#include "MapTransform.h"

#include <ZRCore/ZRGeometryAdditions.h>
#include <trip/Words.h>

#include <algorithm>
#include <cmath>

#include "Axis.h"

namespace trip {

namespace {

double latitudeAt(double mapPointY) { return ZRCoordinateForMapPoint({0.0, mapPointY}).latitude; }

constexpr double kLeastMetersAcross = 60.0;  // closer up, a car park would look like a journey

}  // namespace

double fittingScale(const Envelope& envelope, double width, double height) {
  const double least = kLeastMetersAcross / MapTransform(envelope.center(), 1.0, {}).meters(1.0);
  return std::min(width / std::max(envelope.maxX - envelope.minX, least),
                  height / std::max(envelope.maxY - envelope.minY, least));
}

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
  const std::string label = lengthText(lengthMeters);
  if (transform.scaleSpread() <= 0.02) return label;
  const double latitude = transform.centerLatitude();
  return label + " at " + fixedText(std::fabs(latitude), 1) + "\u00b0 " + (latitude < 0.0 ? "S" : "N");
}

}  // namespace trip
