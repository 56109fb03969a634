// SPDX-License-Identifier: Apache-2.0
#include "FixFields.h"

#include <array>
#include <cmath>
#include <utility>

#include "Text.h"
#include "TimeText.h"

namespace readers {
namespace {

using Field = std::optional<double> SourceFix::*;

struct QuantityRule {
  const char* name;
  Field field;
  Severity severity;  ///< of its loss
};

/// In the order of Quantity.
constexpr std::array<QuantityRule, 6> kRules{{
    {"altitude", &SourceFix::altitudeMeters, Severity::fault},
    {"accuracy", &SourceFix::accuracyMeters, Severity::warning},
    {"vertical accuracy", &SourceFix::verticalAccuracyMeters, Severity::warning},
    {"HDOP", &SourceFix::hdop, Severity::warning},
    {"speed", &SourceFix::speedMetersPerSecond, Severity::fault},
    {"course", &SourceFix::courseDegrees, Severity::fault},
}};

constexpr std::array<Field, 7> kMeasures{
    &SourceFix::secondsSince1970,       &SourceFix::altitudeMeters, &SourceFix::accuracyMeters,
    &SourceFix::verticalAccuracyMeters, &SourceFix::hdop,           &SourceFix::speedMetersPerSecond,
    &SourceFix::courseDegrees};

const QuantityRule& ruleOf(Quantity quantity) { return kRules.at(static_cast<std::size_t>(quantity)); }

}  // namespace

void Reporter::fault(std::string text) const { tell(Severity::fault, std::move(text)); }
void Reporter::warning(std::string text) const { tell(Severity::warning, std::move(text)); }

void Reporter::tell(Severity severity, std::string text) const {
  if (cut) text.insert(0, "the input breaks off in this line: ");
  listener.remark({severity, line, std::move(text)});
}

void setQuantity(SourceFix& fix, Quantity quantity, double value, const Reporter& reporter) {
  if (quantity != Quantity::altitude && value < 0.0) return;
  if (quantity == Quantity::hdop && value == 0.0) return;
  if (quantity == Quantity::course) {
    if (value > 360.0) {
      reporter.fault("the course lies beyond 360 degrees and is left out of the fix");
      return;
    }
    if (value == 360.0) value = 0.0;
  }
  fix.*ruleOf(quantity).field = value;
}

void readQuantity(SourceFix& fix, Quantity quantity, std::string_view text, const Reporter& reporter) {
  if (trimmed(text).empty()) return;
  if (const auto number = parseNumber(text)) {
    setQuantity(fix, quantity, *number, reporter);
  } else {
    reporter.tell(ruleOf(quantity).severity,
                  std::string("the ") + ruleOf(quantity).name + " " + inQuotes(text) +
                      " is not a number and is left out of the fix; write it with a decimal point and without a unit");
  }
}

void readTime(SourceFix& fix, std::string_view text, const Reporter& reporter) {
  if (trimmed(text).empty()) return;
  if (const auto seconds = secondsFromText(text)) {
    fix.secondsSince1970 = seconds;
  } else {
    reporter.fault("the time " + inQuotes(text) +
                   " cannot be read and is left out of the fix; write it like 2022-09-11T19:15:03Z");
  }
}

bool readCoordinate(SourceFix& fix, std::string_view latitude, std::string_view longitude, const Reporter& reporter) {
  const auto latitudeDegrees = parseNumber(latitude);
  const auto longitudeDegrees = parseNumber(longitude);
  if (!latitudeDegrees || !longitudeDegrees) {
    reporter.fault("the position " + inQuotes(latitude) + ", " + inQuotes(longitude) +
                   " is not a pair of numbers and is dropped; write latitude and longitude in decimal degrees");
    return false;
  }
  fix.coordinate = {*latitudeDegrees, *longitudeDegrees};
  return true;
}

bool checkPlace(const SourceFix& fix, const Reporter& reporter) {
  if (CLLocationCoordinate2DIsValid(fix.coordinate)) return true;
  reporter.fault(
      "the position lies outside latitudes of 90 and longitudes of 180 degrees and is dropped; "
      "check that the two are not swapped");
  return false;
}

void fillMissing(SourceFix& fix, const SourceFix& other) {
  for (const auto field : kMeasures) {
    if (!(fix.*field)) fix.*field = other.*field;
  }
  if (!fix.satellites) fix.satellites = other.satellites;
}

void replaceByKnown(SourceFix& fix, const SourceFix& other) {
  SourceFix known = other;
  fillMissing(known, fix);
  known.line = fix.line;
  fix = known;
}

bool samePlace(const SourceFix& a, const SourceFix& b) {
  constexpr double kDegrees = 1e-9;
  return std::fabs(a.coordinate.latitude - b.coordinate.latitude) <= kDegrees &&
         std::fabs(a.coordinate.longitude - b.coordinate.longitude) <= kDegrees;
}

}  // namespace readers
