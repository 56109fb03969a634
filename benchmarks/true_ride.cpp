// SPDX-License-Identifier: Apache-2.0
#include "true_ride.h"

#include <ZRCore/ZRGeometryAdditions.h>

#include <algorithm>
#include <numbers>

namespace bench {

namespace {
constexpr double kDegreesPerRadian = 180.0 / std::numbers::pi;
constexpr double kLateralAcceleration = 2.5;  // metres per second squared, that a bend is taken with
constexpr double kSettlingSeconds = 4.0, kBehindTunnelSeconds = 10.0;
}  // namespace

TrueRide::TrueRide(const Vehicle& vehicle, const PlaceNoise& noise, const Outliers& outliers, double fixesPerSecond,
                   double secondsSince1970, std::uint64_t seed)
    : vehicle_(vehicle),
      noise_(noise),
      outliers_(outliers),
      step_(1.0 / fixesPerSecond),
      seconds_(secondsSince1970),
      random_(seed),
      east_(random_, std::exp(-step_ / noise.correlationSeconds)),
      north_(random_, std::exp(-step_ / noise.correlationSeconds)),
      courseDegrees_(between(0.0, 360.0)),
      fixesUntilOutlier_(outliers.apartFixes) {}

KnownFix TrueRide::next() {
  seconds_ += step_;
  move();
  enterOrLeaveTunnel();
  if (outlierFixes_ > 0) {
    --outlierFixes_;
  } else if (fixesUntilOutlier_ > 0) {
    --fixesUntilOutlier_;
  } else {
    outlierFixes_ = random_.uniform() < 0.5 ? 1 : 2;
    outlierDegrees_ = between(0.0, 360.0);
    outlierMeters_ = between(outliers_.leastMeters, outliers_.mostMeters);
    const double mean = outliers_.oneInFixes - static_cast<double>(outliers_.apartFixes);
    fixesUntilOutlier_ = outliers_.apartFixes + static_cast<std::uint64_t>(between(0.0, 2.0 * mean));
  }
  const bool isOutlier = outlierFixes_ > 0;
  CLLocationCoordinate2D place = measuredPlace();
  if (isOutlier) place = ZRDestinationCoordinate(place, outlierDegrees_, outlierMeters_);
  const bool stands = speed_ < 0.1;
  const double course = stands ? between(0.0, 360.0) : courseDegrees_ + 18.0 * random_.normal() / (1.0 + speed_);
  KnownFix known{nullptr, speed_, courseDegrees_, isOutlier,
                 tunnelSeconds_ > 0.0 || sinceTunnelSeconds_ < kBehindTunnelSeconds};
  known.fix = CLLocation::initWithFix({.coordinate = place,
                                       .horizontalAccuracy = accuracyMeters(),
                                       .course = course - 360.0 * std::floor(course / 360.0),
                                       .speed = std::max(0.0, speed_ + 0.25 * random_.normal()),
                                       .timestamp = {seconds_}});
  return known;
}

void TrueRide::beginStretch() {
  if (stretchMeters_ < 0.0 && degreesPerMeter_ == 0.0 && random_.uniform() < 0.8) {  // behind a straight, mostly a bend
    const double radius = vehicle_.sharpestBend * std::pow(20.0, random_.uniform());
    const double degrees = between(20.0, 120.0);
    degreesPerMeter_ = (random_.uniform() < 0.5 ? 1.0 : -1.0) * kDegreesPerRadian / radius;
    stretchMeters_ = degrees / std::fabs(degreesPerMeter_);
    allowedSpeed_ = std::min(allowedSpeed_, std::sqrt(kLateralAcceleration * radius));
    return;
  }
  degreesPerMeter_ = 0.0;
  allowedSpeed_ = between(vehicle_.slowest, vehicle_.fastest);
  stretchMeters_ = allowedSpeed_ * between(5.0, 40.0);
  if (random_.uniform() < 0.15) standsSeconds_ = between(5.0, 40.0);  // at its beginning
}

void TrueRide::move() {
  if (stretchMeters_ <= 0.0) beginStretch();
  const double wanted = standsSeconds_ > 0.0 ? 0.0 : allowedSpeed_;
  const double change = vehicle_.acceleration * step_;
  speed_ = std::clamp(wanted, speed_ - change, speed_ + change);
  if (speed_ == 0.0) standsSeconds_ -= step_;
  const double meters = speed_ * step_, turn = degreesPerMeter_ * meters;
  place_ = ZRDestinationCoordinate(place_, courseDegrees_ + turn / 2.0, meters);
  courseDegrees_ = std::remainder(courseDegrees_ + turn, 360.0);
  stretchMeters_ -= meters;
}

void TrueRide::enterOrLeaveTunnel() {
  sinceTunnelSeconds_ += step_;
  if (tunnelSeconds_ > 0.0) {
    tunnelSeconds_ -= step_;
    inTunnelSeconds_ += step_;
    reckonedEast_ += reckoningEast_ * step_;
    reckonedNorth_ += reckoningNorth_ * step_;
    if (tunnelSeconds_ <= 0.0) {
      sinceTunnelSeconds_ = 0.0;
      reckonedEast_ = reckonedNorth_ = 0.0;
    }
  } else if (happensOncePer(600.0)) {
    tunnelSeconds_ = between(10.0, 60.0);
    inTunnelSeconds_ = 0.0;
    reckoningEast_ = random_.normal();
    reckoningNorth_ = random_.normal();
  }
}

double TrueRide::accuracyMeters() {
  const double open = between(3.5, 6.0);
  if (tunnelSeconds_ > 0.0) return open + 3.0 * inTunnelSeconds_;
  return open + 60.0 * std::max(0.0, 1.0 - sinceTunnelSeconds_ / kSettlingSeconds);
}

CLLocationCoordinate2D TrueRide::measuredPlace() {
  const double east = noise_.driftMeters * east_.next(random_) + noise_.whiteMeters * random_.normal() + reckonedEast_;
  const double north =
      noise_.driftMeters * north_.next(random_) + noise_.whiteMeters * random_.normal() + reckonedNorth_;
  return ZRDestinationCoordinate(place_, std::atan2(east, north) * kDegreesPerRadian, std::hypot(east, north));
}

}  // namespace bench
