// SPDX-License-Identifier: Apache-2.0
#include "GpsdReader.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include "Text.h"
#include "TimeText.h"

namespace readers {
namespace {

using nlohmann::json;

/// No daemon has as many; a hostile one may say so.
constexpr std::size_t kMostReceivers = 64;

/// Some writers, Python's among them, say NaN for "unknown", which JSON does not know.
std::string withNullForNan(std::string_view text) {
  std::string changed(text);
  for (auto colon = changed.find(':'); colon != std::string::npos; colon = changed.find(':', colon + 1)) {
    const auto value = changed.find_first_not_of(' ', colon + 1);
    if (value != std::string::npos && text::isSameInAnyCase(std::string_view(changed).substr(value, 3), "nan")) {
      changed.replace(value, 3, "null");
    }
  }
  return changed;
}

json parseReport(std::string_view text) {
  json report = json::parse(text, nullptr, false);
  if (report.is_discarded()) report = json::parse(withNullForNan(text), nullptr, false);
  return report;
}

std::optional<double> numberAt(const json& report, const char* key) {
  const auto found = report.find(key);
  if (found == report.end() || !found->is_number()) return std::nullopt;
  return found->get<double>();
}

/// The value under the first of the keys that has one.
void setFirst(SourceFix& fix, Quantity quantity, const json& report, std::initializer_list<const char*> keys,
              const Reporter& reporter) {
  for (const char* const key : keys) {
    if (const auto value = numberAt(report, key)) {
      setQuantity(fix, quantity, *value, reporter);
      return;
    }
  }
}

void setTime(SourceFix& fix, const json& report, const Reporter& reporter) {
  const auto time = report.find("time");
  if (time == report.end()) return;
  if (time->is_string()) readTime(fix, time->get_ref<const std::string&>(), reporter);
  if (time->is_number()) readTime(fix, time->dump(), reporter);  // seconds, as daemons before 2011 wrote it
}

void setAccuracy(SourceFix& fix, const json& report, const Reporter& reporter) {
  const auto eastWest = numberAt(report, "epx");
  const auto northSouth = numberAt(report, "epy");
  const auto horizontal = numberAt(report, "eph");
  if (horizontal) {
    setQuantity(fix, Quantity::accuracy, *horizontal, reporter);
  } else if (eastWest || northSouth) {
    setQuantity(fix, Quantity::accuracy, std::max(eastWest.value_or(-1.0), northSouth.value_or(-1.0)), reporter);
  }
}

std::string textAt(const json& report, const char* key) {
  const auto found = report.find(key);
  return found != report.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::optional<double> headingAt(const json& report, const char* key) {
  const auto degrees = numberAt(report, key);
  return degrees && *degrees >= 0.0 && *degrees < 360.0 ? degrees : std::nullopt;
}

void readAttitude(const json& report, const Reporter& reporter) {
  SourceStatus status;
  status.trueHeadingDegrees = headingAt(report, "heading");
  status.magneticHeadingDegrees = headingAt(report, "mheading");
  if (!status.trueHeadingDegrees && !status.magneticHeadingDegrees) return;
  SourceFix timed;
  setTime(timed, report, reporter);
  status.headingSecondsSince1970 = timed.secondsSince1970;
  reporter.listener.status(status);
}

/// Whether the daemon says that the position is worked out, not measured: by dead reckoning, or by a simulator.
bool isEstimated(const json& report) {
  const auto status = numberAt(report, "status");
  return status == 5.0 || status == 8.0;
}

void readFix(const json& report, const Reporter& reporter, Instants& instants) {
  constexpr double kTwoDimensionalFix = 2.0;
  const auto latitude = numberAt(report, "lat");
  const auto longitude = numberAt(report, "lon");
  if (numberAt(report, "mode").value_or(0.0) < kTwoDimensionalFix || !latitude || !longitude) return;

  InstantPart part;
  part.teller = Teller::report;
  part.hasFix = true;
  SourceFix& fix = part.fix;
  fix.line = reporter.line;
  fix.coordinate = {*latitude, *longitude};
  if (!checkPlace(fix, reporter)) return;
  fix.isEstimated = isEstimated(report);
  setTime(fix, report, reporter);
  if (const auto time = fix.secondsSince1970) {
    part.secondsOfDay = *time - std::floor(*time / kSecondsPerDay) * kSecondsPerDay;
  }
  setAccuracy(fix, report, reporter);
  // Above the sea where the daemon says so; its plain "alt" meant that too, and the ellipsoid is better than nothing.
  setFirst(fix, Quantity::altitude, report, {"altMSL", "alt", "altHAE"}, reporter);
  setFirst(fix, Quantity::verticalAccuracy, report, {"epv"}, reporter);
  setFirst(fix, Quantity::speed, report, {"speed"}, reporter);
  setFirst(fix, Quantity::course, report, {"track"}, reporter);
  instants.add(part, reporter.listener);
}

/// Whether a damaged object may have been a report of a position: it says so, or does not say what it was.
bool mayBeReport(std::string_view text) {
  constexpr std::string_view kClass = "\"class\"";
  return text.find(kClass) == std::string_view::npos || text.find("\"TPV\"") != std::string_view::npos;
}

}  // namespace

void GpsdReader::readLine(std::string_view text, const Reporter& reporter, Instants& instants) {
  const json report = parseReport(text);
  if (!report.is_object()) {
    constexpr const char* kWhat = "the line is skipped: it is no JSON object";
    if (!reporter.cut && !mayBeReport(text)) return reporter.warning(kWhat);
    instants.loseTrack();
    return reporter.fault(kWhat);
  }
  const std::string kind = textAt(report, "class");
  if (kind == "TPV") readFix(report, reporter, instants);
  if (kind == "ATT") readAttitude(report, reporter);
  if (kind == "VERSION") reporter.listener.status({.daemonRelease = textAt(report, "release")});
  if (kind == "DEVICES") readDevices(report, reporter.listener);
  if (kind == "DEVICE") readDevice(report, reporter.listener);
}

void GpsdReader::readDevices(const json& report, Listener& listener) {
  const auto devices = report.find("devices");
  if (devices == report.end() || !devices->is_array()) return;
  receivers_.clear();
  for (const json& device : *devices) {
    if (device.is_object() && receivers_.size() < kMostReceivers) receivers_.insert(textAt(device, "path"));
  }
  listener.status({.receivers = receivers_.size()});
}

/// One receiver came, or went: its "activated" is a time, or 0.
void GpsdReader::readDevice(const json& report, Listener& listener) {
  const std::string path = textAt(report, "path");
  if (numberAt(report, "activated") == 0.0) {
    receivers_.erase(path);
  } else if (receivers_.size() < kMostReceivers) {
    receivers_.insert(path);
  }
  listener.status({.receivers = receivers_.size()});
}

}  // namespace readers
