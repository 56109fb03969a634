// SPDX-License-Identifier: Apache-2.0
#include "Words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "OutputText.h"

namespace trip {

namespace {

constexpr double kMinute = 60.0, kHour = 3600.0, kDay = 86400.0;

/// A round number, as short as it can be.
std::string shortText(double value) {
  std::string text;
  appendNumber(text, value);
  return text;
}

/// The whole parts of a duration: with `digits` 2 "07" of 7.
std::string partText(double value, std::size_t digits = 1) {
  std::string text = fixedText(std::floor(value), 0);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

}  // namespace

std::string fixedText(std::optional<double> value, int decimals) {
  if (!value || !std::isfinite(*value)) return "-";
  std::array<char, 400> digits;  // the largest double has 309 of them before the point
  const auto end = std::to_chars(digits.begin(), digits.end(), *value, std::chars_format::fixed, decimals).ptr;
  return {digits.begin(), end};
}

std::string countText(std::uint64_t count, std::string_view singular, std::string_view plural) {
  std::string text = std::to_string(count);
  return text.append(1, ' ').append(count == 1 ? singular : plural);
}

std::optional<double> kilometersPerHour(std::optional<double> metersPerSecond) {
  constexpr double kPerMeterPerSecond = 3.6;
  return metersPerSecond ? std::optional(*metersPerSecond * kPerMeterPerSecond) : std::nullopt;
}

std::string lengthText(double meters) {
  if (meters < 1.0) return shortText(meters * 100.0) + " cm";
  return meters < 1000.0 ? shortText(meters) + " m" : shortText(meters / 1000.0) + " km";
}

std::string measuredLengthText(double meters) {
  if (meters == 0.0) return "0 m";
  const bool isInKilometers = std::round(meters) >= 1000.0;
  const double value = isInKilometers ? meters / 1000.0 : meters;
  const int decimals = std::round(value * 100.0) < 1000.0 ? 2 : std::round(value * 10.0) < 1000.0 ? 1 : 0;
  return fixedText(value, decimals) + (isInKilometers ? " km" : " m");
}

std::string durationText(double seconds) {
  const double whole = std::round(std::fabs(seconds));
  const std::string sign = seconds < 0.0 && whole > 0.0 ? "-" : "";
  const double secondsLeft = std::fmod(whole, kMinute), minutes = std::fmod(whole, kHour) / kMinute;
  const double hours = std::fmod(whole, kDay) / kHour;
  if (whole < kMinute) return sign + partText(whole) + " s";
  if (whole < kHour) return sign + partText(minutes) + " min " + partText(secondsLeft, 2) + " s";
  if (whole < kDay) return sign + partText(hours) + " h " + partText(minutes, 2) + " min";
  return sign + partText(whole / kDay) + " d " + partText(hours) + " h";
}

std::string clockText(double seconds, bool withHours) {
  const double whole = std::fmax(std::floor(seconds), 0.0);
  const bool hasHours = withHours || whole >= kHour;
  return (hasHours ? partText(whole / kHour) + ":" : "") +
         partText(std::fmod(whole, kHour) / kMinute, hasHours ? 2 : 1) + ":" + partText(std::fmod(whole, kMinute), 2);
}

}  // namespace trip
