// SPDX-License-Identifier: Apache-2.0
#include "SpeechRate.h"

#include <algorithm>
#include <cmath>

namespace policy {

namespace {
constexpr double kSlowest = 80.0, kUsual = 175.0, kFastest = 450.0;
}

int wordsPerMinuteForRate(float rate) {
  const double bounded = std::isnan(rate) ? 0.5 : std::clamp(static_cast<double>(rate), 0.0, 1.0);
  const double words = bounded <= 0.5 ? kSlowest * std::pow(kUsual / kSlowest, 2.0 * bounded)
                                      : kUsual * std::pow(kFastest / kUsual, 2.0 * bounded - 1.0);
  return static_cast<int>(std::lround(words));
}

int amplitudeForVolume(float volume) {
  const double bounded = std::isnan(volume) ? 1.0 : std::clamp(static_cast<double>(volume), 0.0, 1.0);
  return static_cast<int>(std::lround(100.0 * bounded));
}

}  // namespace policy
