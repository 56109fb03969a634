// SPDX-License-Identifier: Apache-2.0
#include "Axis.h"

#include <trip/OutputText.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace trip {

namespace {
constexpr double kMinute = 60.0, kHour = 3600.0, kDay = 86400.0;

[[gnu::format(printf, 1, 2)]] std::string formatted(const char* format, ...) {
  std::array<char, 64> buffer{};
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
  va_end(arguments);
  return buffer.data();
}

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
    return formatted("%.*f\u00b0%s", decimals, std::fabs(degrees), isOnBoth ? "" : degrees > 0.0 ? positive : negative);
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
  return ticks(from, to, step, maxTicks, [](double value) { return formatted("%.0f", value); });
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

std::string lengthText(double meters) {
  if (meters < 1.0) return formatted("%g cm", meters * 100.0);
  return meters < 1000.0 ? formatted("%g m", meters) : formatted("%g km", meters / 1000.0);
}

std::string measuredLengthText(double meters) {
  if (meters == 0.0) return "0 m";
  const bool isInKilometers = std::round(meters) >= 1000.0;
  const double value = isInKilometers ? meters / 1000.0 : meters;
  const int decimals = std::round(value * 100.0) < 1000.0 ? 2 : std::round(value * 10.0) < 1000.0 ? 1 : 0;
  return formatted("%.*f %s", decimals, value, isInKilometers ? "km" : "m");
}

std::string durationText(double seconds) {
  const double whole = std::round(std::fabs(seconds));
  const auto part = [whole](double unit, double within) { return std::floor(std::fmod(whole, within) / unit); };
  const char* sign = seconds < 0.0 && whole > 0.0 ? "-" : "";
  if (whole < kMinute) return formatted("%s%.0f s", sign, whole);
  if (whole < kHour) return formatted("%s%.0f min %02.0f s", sign, part(kMinute, kHour), part(1.0, kMinute));
  if (whole < kDay) return formatted("%s%.0f h %02.0f min", sign, part(kHour, kDay), part(kMinute, kHour));
  return formatted("%s%.0f d %.0f h", sign, std::floor(whole / kDay), part(kHour, kDay));
}

}  // namespace trip
