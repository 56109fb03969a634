// SPDX-License-Identifier: Apache-2.0
#include "TurnDetector.h"

#include <cmath>

namespace trip {

std::optional<Turn> TurnDetector::add(double courseDegrees) {
  if (!std::isfinite(courseDegrees)) return std::nullopt;
  double greatest = 0.0;  // to the right; the shorter way round
  for (const double before : courses_) {
    const double turned = std::remainder(courseDegrees - before, 360.0);
    if (std::fabs(turned) > std::fabs(greatest)) greatest = turned;
  }
  if (std::fabs(greatest) > kTurnDegrees) courses_.clear();
  courses_.push_back(courseDegrees);
  if (courses_.size() >= kFixes) courses_.pop_front();
  if (std::fabs(greatest) <= kTurnDegrees) return std::nullopt;
  if (std::fabs(greatest) > kAroundDegrees) return Turn::around;
  return greatest > 0.0 ? Turn::right : Turn::left;
}

}  // namespace trip
