// SPDX-License-Identifier: Apache-2.0
#include "Axis.h"

#include <trip/OutputText.h>
#include <trip/Words.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace trip {

namespace {
constexpr double kMinute = 60.0, kHour = 3600.0, kDay = 86400.0;

double timeStep(double span, int maxTicks) {
  constexpr std::array kSteps{1.0,     2.0,         5.0,         10.0,         15.0,         30.0,
                              kMinute, 2 * kMinute, 5 * kMinute, 10 * kMinute, 15 * kMinute, 30 * kMinute,
                              kHour,   2 * kHour,   3 * kHour,   6 * kHour,    12 * kHour,   kDay};
  const double atLeast = span / maxTicks;
  const auto step = std::lower_bound(kSteps.begin(), kSteps.end(), atLeast);
  return step != kSteps.end() ? *step : roundUp(atLeast / kDay) * kDay;
}

template <class Label>
std::vector<Tick> ticks(double from, double to, double step, int maxTicks, Label label) {
  std::vector<Tick> result;
  const double first = std::ceil(from / step) * step;
  for (int i = 0; i <= maxTicks; ++i) {  // counted, because far from zero a step may be too small to get anywhere
    const double value = first + i * step;
    if (value <= to) result.push_back({value, label(value)});
  }
  return result;
}

std::vector<Tick> degreeTicks(double from, double to, int maxTicks, const char* positive, const char* negative) {
  if (!(to > from)) return {};
  const double step = roundUp((to - from) / maxTicks);
  const int decimals = std::max(0, static_cast<int>(std::ceil(-std::log10(step) - 1e-9)));
  return ticks(from, to, step, maxTicks, [=](double value) {
    const double degrees = std::remainder(value, 360.0);
    const bool isOnBoth = std::fabs(degrees) < step / 1e3 || std::fabs(degrees) > 180.0 - step / 1e3;
    return fixedText(std::fabs(degrees), decimals) + "\u00b0" + (isOnBoth ? "" : degrees > 0.0 ? positive : negative);
  });
}
}  // namespace

double roundUp(double value) {
  const double decade = std::pow(10.0, std::floor(std::log10(value)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * decade >= value) return factor * decade;
  }
  return 10.0 * decade;
}

double roundDown(double value) {
  const double decade = std::pow(10.0, std::floor(std::log10(value)));
  for (const double factor : {5.0, 2.0}) {
    if (factor * decade <= value) return factor * decade;
  }
  return decade;
}

std::vector<Tick> countTicks(double from, double to, int maxTicks) {
  const double step = std::max(1.0, roundUp((to - from) / maxTicks));
  return ticks(from, to, step, maxTicks, [](double value) { return fixedText(value, 0); });
}

std::vector<Tick> timeTicks(double from, double to, int maxTicks) {
  const double step = timeStep(to - from, maxTicks);
  return ticks(from, to, step, maxTicks, [&](double value) {
    const std::string text = timeText(value);  // 2026-05-09T09:30:00.000Z, or a plain number for far years
    if (text.find('T') == std::string::npos) return std::string();
    if (to - from >= 365 * kDay) return text.substr(0, 10);
    if (step >= kDay) return text.substr(5, 5);
    return text.substr(11, step < kMinute ? 8 : 5);
  });
}

std::vector<Tick> latitudeTicks(double from, double to, int maxTicks) {
  return degreeTicks(from, to, maxTicks, " N", " S");
}

std::vector<Tick> longitudeTicks(double from, double to, int maxTicks) {
  return degreeTicks(from, to, maxTicks, " E", " W");
}

}  // namespace trip
