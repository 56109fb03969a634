// SPDX-License-Identifier: Apache-2.0
// One program per format: reads any bytes as a recording, and checks what holds for all of them.
#include <readers/FixReader.h>
#include <readers/LiveReader.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "FuzzLaws.h"
#include "ReaderEvents.h"

namespace {

constexpr readers::Format kFormat = readers::Format::ZRCORE_FUZZ_FORMAT;

void requireSameEvents(const ReaderEvents& whole, const ReaderEvents& pieces, const char* law) {
  for (std::size_t i = 0; whole.log != pieces.log && i < std::max(whole.log.size(), pieces.log.size()); ++i) {
    std::fprintf(stderr, "whole:  %s\npieces: %s\n", i < whole.log.size() ? whole.log[i].c_str() : "-",
                 i < pieces.log.size() ? pieces.log[i].c_str() : "-");
  }
  require(whole.log == pieces.log, law);
}

using Held = readers::FixReader::Held;

/// What a reader reports of a live stream, whose held fix is reported after each byte: also while it grows, or only
/// once it seems to be whole.
ReaderEvents readLive(std::string_view input, bool alsoWhileItGrows) {
  ReaderEvents events;
  const auto reader = readers::makeReader(kFormat);
  for (const auto byte : bytesOf(input)) {
    reader->feed(byte, events);
    if (reader->held() == Held::nothing || (reader->held() == Held::growing && !alsoWhileItGrows)) continue;
    reader->tellHeld(events);
    require(reader->held() == Held::nothing, "what has been told is held no more");
  }
  reader->finish(events);
  return events;
}

void requireSoundFix(const readers::SourceFix& fix) {
  require(std::fabs(fix.coordinate.latitude) <= 90.0 && std::fabs(fix.coordinate.longitude) <= 180.0,
          "a fix is a place on the Earth");
  require(fix.line > 0, "a fix stands on a line");
  for (const auto& value : {fix.secondsSince1970, fix.altitudeMeters}) {
    require(!value || std::isfinite(*value), "no value is NaN or infinite");
  }
  for (const auto& value : {fix.accuracyMeters, fix.verticalAccuracyMeters, fix.hdop, fix.speedMetersPerSecond}) {
    require(!value || (std::isfinite(*value) && *value >= 0.0), "no measure is negative");
  }
  require(fix.satellites.value_or(0) >= 0, "no number of satellites is negative");
  require(!fix.courseDegrees || (*fix.courseDegrees >= 0.0 && *fix.courseDegrees < 360.0), "a course lies in [0, 360)");
}

void requireSoundStatus(const readers::SourceStatus& status) {
  for (const auto& heading : {status.trueHeadingDegrees, status.magneticHeadingDegrees}) {
    require(!heading || (*heading >= 0.0 && *heading < 360.0), "a heading lies in [0, 360)");
  }
  require(std::isfinite(status.headingSecondsSince1970.value_or(0.0)), "a heading's time is finite");
}

/// What came of the pieces by way of the reader that sources use, to the last bit.
std::string told(const std::vector<std::string_view>& pieces) {
  readers::LiveReader reader(kFormat, {.isRecording = true});
  std::string all;
  const auto add = [&all](const readers::LiveEvents& events) {
    for (const ZRPositionFix& fix : events.fixes) {
      char text[160];
      std::snprintf(text, sizeof text, "%a %a %a %a %a %a\n", fix.coordinate.latitude, fix.coordinate.longitude,
                    fix.timestamp.secondsSince1970, fix.horizontalAccuracy, fix.speed, fix.course);
      all += text;
    }
    for (const CLHeading& heading : events.headings) {
      for (const double degrees : {heading.trueHeading, heading.magneticHeading}) {
        require(degrees < 360.0 && (degrees >= 0.0 || degrees == -1.0), "a heading is a direction or unknown");
      }
    }
  };
  for (const auto piece : pieces) add(reader.feed(piece));
  add(reader.finish());
  return all;
}

/// Hears nothing of what it is told.
struct Deaf final : readers::Listener {
  void fix(const readers::SourceFix&) override {}
  void remark(const readers::Remark&) override {}
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  static_cast<void>(readers::detectFormat(input));

  const auto whole = readPieces(kFormat, {input});
  for (const auto& fix : whole.fixes) requireSoundFix(fix);
  for (const auto& status : whole.statuses) requireSoundStatus(status);
  requireSameEvents(whole, readPieces(kFormat, bytesOf(input)), "single bytes tell the same as the whole");
  const auto split = splitOf(input);
  requireSameEvents(whole, readPieces(kFormat, {input.substr(0, split), input.substr(split)}),
                    "two pieces tell the same as the whole");
  require(told({input}) == told({input.substr(0, split), input.substr(split)}), "a source tells the same, too");

  constexpr int kCopies = 8;
  requireLinear(kCopies * size, [&] {
    const auto reader = readers::makeReader(kFormat);
    Deaf deaf;
    for (int i = 0; i < kCopies; ++i) reader->feed(input, deaf);
    reader->finish(deaf);
  });

  for (const bool alsoWhileItGrows : {false, true}) {
    const auto live = readLive(input, alsoWhileItGrows);
    for (const auto& fix : live.fixes) requireSoundFix(fix);
    // Early told, an instant may be one that a later sentence calls none.
    require(live.fixes.size() >= whole.fixes.size(), "no fix of a recording is missing live");
  }
  return 0;
}
