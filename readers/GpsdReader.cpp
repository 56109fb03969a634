// SPDX-License-Identifier: Apache-2.0
#include "GpsdReader.h"

#include <algorithm>
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

}  // namespace

void GpsdReader::readLine(std::string_view text, const Reporter& reporter) {
  text = trimmed(text);
  if (text.empty() || text.front() == '#' || text.front() == '$' || text.front() == '!') return;
  const json report = parseReport(text);
  if (!report.is_object()) {
    reporter.fault("the line is skipped: it is no JSON object");
    return;
  }
  const std::string kind = textAt(report, "class");
  if (kind == "TPV") readFix(report, reporter);
  if (kind == "ATT") readAttitude(report, reporter);
  if (kind == "VERSION") reporter.listener.status({.daemonRelease = textAt(report, "release")});
  if (kind == "DEVICES") readDevices(report, reporter.listener);
  if (kind == "DEVICE") readDevice(report, reporter.listener);
}

void GpsdReader::readFix(const json& report, const Reporter& reporter) {
  constexpr double kTwoDimensionalFix = 2.0;
  const auto latitude = numberAt(report, "lat");
  const auto longitude = numberAt(report, "lon");
  if (numberAt(report, "mode").value_or(0.0) < kTwoDimensionalFix || !latitude || !longitude) return;

  SourceFix fix;
  fix.line = reporter.line;
  fix.coordinate = {*latitude, *longitude};
  setTime(fix, report, reporter);
  setAccuracy(fix, report, reporter);
  // Above the sea where the daemon says so; its plain "alt" meant that too, and the ellipsoid is better than nothing.
  setFirst(fix, Quantity::altitude, report, {"altMSL", "alt", "altHAE"}, reporter);
  setFirst(fix, Quantity::verticalAccuracy, report, {"epv"}, reporter);
  setFirst(fix, Quantity::speed, report, {"speed"}, reporter);
  setFirst(fix, Quantity::course, report, {"track"}, reporter);

  if (current_ && samePlace(*current_, fix) && current_->secondsSince1970 == fix.secondsSince1970) {
    fillMissing(*current_, fix);
  } else {
    emitCurrent(reporter.listener);
    current_ = fix;
    isTold_ = false;
  }
}

void GpsdReader::readDevices(const json& report, Listener& listener) {
  receivers_.clear();
  const auto devices = report.find("devices");
  if (devices == report.end() || !devices->is_array()) return;
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

void GpsdReader::readEnd(const Reporter& reporter) { emitCurrent(reporter.listener); }

FixReader::Held GpsdReader::held() const {
  if (!current_ || isTold_) return Held::nothing;
  const SourceFix& fix = *current_;
  const bool complete = fix.secondsSince1970 && fix.altitudeMeters && fix.accuracyMeters &&
                        fix.verticalAccuracyMeters && fix.speedMetersPerSecond && fix.courseDegrees;
  return complete ? Held::complete : Held::growing;
}

void GpsdReader::tellHeld(Listener& listener) {
  if (!current_ || isTold_) return;
  emitter_.emit(*current_, listener);
  isTold_ = true;
}

void GpsdReader::emitCurrent(Listener& listener) {
  tellHeld(listener);
  current_.reset();
}

}  // namespace readers
