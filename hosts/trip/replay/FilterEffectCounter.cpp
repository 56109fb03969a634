// SPDX-License-Identifier: Apache-2.0
#include "FilterEffectCounter.h"

#include <ZRCore/ZRGeometry.hpp>
#include <algorithm>
#include <cmath>
#include <utility>

namespace trip {

namespace {

constexpr double kMovingMetersPerSecond = 1.0;

/// Speeds below 0 are unknown.
void raise(std::optional<double>& top, double speed) {
  if (speed >= 0.0 && std::isfinite(speed)) top = std::max(top.value_or(0.0), speed);
}

double turnDegrees(double from, double to) { return std::fabs(std::remainder(to - from, 360.0)); }

}  // namespace

void AngleCounter::add(double degrees) {
  if (!(degrees >= 0.0 && degrees <= 180.0)) return;
  ++counts_[static_cast<std::size_t>(std::lround(degrees * kStepsPerDegree))];
  ++count_;
}

double AngleCounter::quantileDegrees(double fraction) const {
  const auto needed = static_cast<std::uint64_t>(std::ceil(fraction * static_cast<double>(count_)));
  std::uint64_t passed = 0;
  std::size_t step = 0;
  while ((passed += counts_[step]) < needed) ++step;
  return static_cast<double>(step) / kStepsPerDegree;
}

void FilterEffectCounter::row(const TripRow& row) {
  raise(tops_.topRawSpeed, row.speedMetersPerSecond.value_or(-1.0));
  raise(tops_.topSmoothedSpeed, row.smoothSpeedMetersPerSecond);
  if (gaps_.precede(row.secondsSince1970)) {  // who knows how often it turned there
    previousPlace_.reset();
    previousCourses_.reset();
  }
  addTurn(row);
  previousPlace_ = row.coordinate;
}

void FilterEffectCounter::addTurn(const TripRow& row) {
  const CLLocationCoordinate2D here = row.coordinate, before = previousPlace_.value_or(here);
  const auto previous = std::exchange(previousCourses_, std::nullopt);
  if (here.latitude == before.latitude && here.longitude == before.longitude) return;  // no course leads there
  previousCourses_ = {static_cast<double>(ZRCoordinateUtils::bearingFromTo(before, here)), row.smoothCourseDegrees};
  if (!previous || !(row.speedMetersPerSecond > kMovingMetersPerSecond)) return;
  rawTurns_.add(turnDegrees(previous->raw, previousCourses_->raw));
  smoothedTurns_.add(turnDegrees(previous->smoothed, previousCourses_->smoothed));
}

FilterEffect FilterEffectCounter::effect() const {
  FilterEffect effect = tops_;
  effect.turns = rawTurns_.count();
  if (effect.turns == 0) return effect;
  const auto quantiles = [](const AngleCounter& turns) {
    return FilterEffect::Quantiles{turns.quantileDegrees(0.5), turns.quantileDegrees(0.9)};
  };
  effect.rawTurn = quantiles(rawTurns_);
  effect.smoothedTurn = quantiles(smoothedTurns_);
  return effect;
}

}  // namespace trip
