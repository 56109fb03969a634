// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a reader reported, to be looked at and compared.
#ifndef ZRCORE_TESTS_SUPPORT_READEREVENTS_H
#define ZRCORE_TESTS_SUPPORT_READEREVENTS_H

#include <readers/FixReader.h>

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Keeps everything that a reader reports.
class ReaderEvents final : public readers::Listener {
 public:
  void fix(const readers::SourceFix& fix) override {
    fixes.push_back(fix);
    std::string entry = "fix " + std::to_string(fix.line);
    for (const std::optional<double>& value :
         {std::optional(fix.coordinate.latitude), std::optional(fix.coordinate.longitude), fix.secondsSince1970,
          fix.altitudeMeters, fix.accuracyMeters, fix.verticalAccuracyMeters, fix.hdop, fix.speedMetersPerSecond,
          fix.courseDegrees}) {
      char text[40] = " -";
      if (value) std::snprintf(text, sizeof text, " %a", *value);
      entry += text;
    }
    if (fix.satellites) entry += " s" + std::to_string(*fix.satellites);
    if (fix.isEstimated) entry += " ~";
    log.push_back(entry);
  }

  void remark(const readers::Remark& remark) override {
    const bool fault = remark.severity == readers::Severity::fault;
    (fault ? faults : warnings).push_back(remark);
    log.push_back((fault ? "fault " : "warning ") + std::to_string(remark.line) + " " + remark.text);
  }

  void status(const readers::SourceStatus& status) override {
    statuses.push_back(status);
    log.push_back("status");
  }

  std::vector<readers::SourceFix> fixes;
  std::vector<readers::SourceStatus> statuses;
  std::vector<readers::Remark> faults;
  std::vector<readers::Remark> warnings;
  std::vector<std::string> log;  ///< all of them in order, to the last bit
};

/// What a new reader reports of an input that arrives in these pieces.
inline ReaderEvents readPieces(readers::Format format, const std::vector<std::string_view>& pieces) {
  ReaderEvents events;
  const auto reader = readers::makeReader(format);
  for (const auto piece : pieces) reader->feed(piece, events);
  reader->finish(events);
  return events;
}

/// The input in single bytes.
inline std::vector<std::string_view> bytesOf(std::string_view input) {
  std::vector<std::string_view> bytes;
  for (std::size_t i = 0; i < input.size(); ++i) bytes.push_back(input.substr(i, 1));
  return bytes;
}

#endif
