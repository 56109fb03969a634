// SPDX-License-Identifier: Apache-2.0
#include "NmeaReader.h"

#include <cmath>
#include <utility>

#include "Text.h"
#include "TimeText.h"

namespace readers {
namespace {

constexpr double kMetersPerSecondPerKnot = 1852.0 / 3600.0;

constexpr unsigned kRmc = 1, kGga = 2, kGll = 4;

/// How many fields a sentence that is read has at least, old versions of the standard included; 0 for the others.
std::size_t fewestFields(std::string_view kind) {
  if (kind == "RMC" || kind == "GGA") return 9;
  if (kind == "GLL") return 4;
  if (kind == "VTG") return 4;
  if (kind == "GSA") return 16;
  return 0;
}

void readKnots(SourceFix& fix, std::string_view text, const Reporter& reporter) {
  readQuantity(fix, Quantity::speed, text, reporter);
  if (fix.speedMetersPerSecond) *fix.speedMetersPerSecond *= kMetersPerSecondPerKnot;
}

/// A time that is there must be right: without it the sentence would go to the wrong instant.
bool readSecondsOfDay(std::optional<double>& into, std::string_view text, const Reporter& reporter) {
  into = secondsOfDayFromNmea(text);
  if (into || text.empty()) return true;
  reporter.fault("the sentence is skipped: its time " + inQuotes(text) + " is no hhmmss.sss");
  return false;
}

/// Reads four fields from `first` on: latitude, its hemisphere, longitude, its hemisphere.
bool readPlace(SourceFix& fix, const NmeaSentence& sentence, std::size_t first, const Reporter& reporter) {
  const auto northSouth = sentence.field(first + 1);
  const auto eastWest = sentence.field(first + 3);
  const auto latitude = degreesFromNmea(sentence.field(first), northSouth);
  const auto longitude = degreesFromNmea(sentence.field(first + 2), eastWest);
  const bool rightAxes = (northSouth == "N" || northSouth == "S") && (eastWest == "E" || eastWest == "W");
  if (!latitude || !longitude || !rightAxes) {
    reporter.fault("the sentence is skipped: it claims a fix, but its position is no ddmm.mmmm with N, S, E and W");
    return false;
  }
  fix.coordinate = {*latitude, *longitude};
  fix.line = reporter.line;
  return true;
}

}  // namespace

void NmeaReader::readLine(std::string_view text, const Reporter& reporter) {
  text = trimmed(text);
  if (text.empty() || text.front() == '#' || text.front() == '!') return;  // '!': ships' positions, not ours
  if (text.front() != '$') {
    reporter.fault("the line is skipped: no sentence begins with " + inQuotes(text.substr(0, 1)) +
                   "; sentences begin with $");
    return;
  }
  const auto parsed = parseSentence(text);
  if (const auto* const problem = std::get_if<std::string_view>(&parsed)) {
    reporter.fault("the sentence is skipped: " + std::string(*problem) +
                   "; it was damaged on its way from the receiver");
    return;
  }
  const auto& sentence = std::get<NmeaSentence>(parsed);
  sawChecksum_ = sawChecksum_ || sentence.hasChecksum;
  const bool cut = reporter.cut && sawChecksum_ && !sentence.hasChecksum;
  if (cut || sentence.fields.size() < fewestFields(sentence.kind)) {
    reporter.fault("the sentence is skipped: it is not whole");
    return;
  }
  if (fewestFields(sentence.kind) == 0) return;
  if (!sentence.hasChecksum && !std::exchange(toldMissingChecksum_, true)) {
    reporter.warning(
        "a sentence has no checksum, so damage in it cannot be seen; such sentences are taken as they are");
  }
  if (sentence.kind == "RMC") add(readRmc(sentence, reporter), reporter.listener);
  if (sentence.kind == "GGA") add(readGga(sentence, reporter), reporter.listener);
  if (sentence.kind == "GLL") add(readGll(sentence, reporter), reporter.listener);
  if (sentence.kind == "VTG") addVtg(sentence, reporter);
  if (sentence.kind == "GSA") addGsa(sentence, reporter);
}

void NmeaReader::readEnd(const Reporter& reporter) { emitCurrent(reporter.listener); }

std::optional<NmeaReader::Instant> NmeaReader::readRmc(const NmeaSentence& sentence, const Reporter& reporter) const {
  Instant part;
  part.kinds = kRmc;
  if (!readSecondsOfDay(part.secondsOfDay, sentence.field(1), reporter)) return std::nullopt;
  part.noFix = sentence.field(2) != "A";
  if (part.noFix) return part;
  if (!readPlace(part.fix, sentence, 3, reporter)) return std::nullopt;
  part.hasPlace = true;
  readKnots(part.fix, sentence.field(7), reporter);
  readQuantity(part.fix, Quantity::course, sentence.field(8), reporter);
  const auto date = sentence.field(9);
  part.midnight = secondsAtMidnightFromNmea(date);
  if (!part.midnight && !date.empty()) {
    reporter.fault("the date " + inQuotes(date) + " is no ddmmyy and is left out; the date before it is carried on");
  }
  return part;
}

std::optional<NmeaReader::Instant> NmeaReader::readGga(const NmeaSentence& sentence, const Reporter& reporter) const {
  Instant part;
  part.kinds = kGga;
  if (!readSecondsOfDay(part.secondsOfDay, sentence.field(1), reporter)) return std::nullopt;
  const auto quality = sentence.field(6);
  part.noFix = quality.empty() || quality == "0";
  if (part.noFix) return part;
  if (!readPlace(part.fix, sentence, 2, reporter)) return std::nullopt;
  part.hasPlace = true;
  readQuantity(part.fix, Quantity::hdop, sentence.field(8), reporter);
  readQuantity(part.fix, Quantity::altitude, sentence.field(9), reporter);
  return part;
}

std::optional<NmeaReader::Instant> NmeaReader::readGll(const NmeaSentence& sentence, const Reporter& reporter) const {
  Instant part;
  part.kinds = kGll;
  if (!readSecondsOfDay(part.secondsOfDay, sentence.field(5), reporter)) return std::nullopt;
  part.noFix = sentence.field(6) == "V" || sentence.field(1).empty();  // old receivers send no status
  if (part.noFix) return part;
  if (!readPlace(part.fix, sentence, 1, reporter)) return std::nullopt;
  part.hasPlace = true;
  return part;
}

void NmeaReader::addVtg(const NmeaSentence& sentence, const Reporter& reporter) {
  if (!current_ || sentence.field(2) != "T") return;  // old receivers send other fields under this name
  SourceFix motion;
  readQuantity(motion, Quantity::course, sentence.field(1), reporter);
  readKnots(motion, sentence.field(5), reporter);
  fillMissing(current_->fix, motion);
}

void NmeaReader::addGsa(const NmeaSentence& sentence, const Reporter& reporter) {
  if (!current_) return;
  SourceFix quality;
  readQuantity(quality, Quantity::hdop, sentence.field(16), reporter);
  fillMissing(current_->fix, quality);
}

bool NmeaReader::sameInstant(const Instant& a, const Instant& b) {
  const bool bothPlaces = a.hasPlace && b.hasPlace;
  const bool sameSpot = bothPlaces && samePlace(a.fix, b.fix);
  if (!a.secondsOfDay || !b.secondsOfDay) return sameSpot;
  // Kinds may round a place differently, but one kind at one time and two places tells of two fixes.
  const bool movedOn = (a.kinds & b.kinds) != 0 && bothPlaces && !sameSpot;
  return a.secondsOfDay == b.secondsOfDay && !movedOn;
}

void NmeaReader::add(const std::optional<Instant>& part, Listener& listener) {
  if (!part) return;
  if (current_ && !sameInstant(*current_, *part)) emitCurrent(listener);
  if (!current_) {
    current_ = part;
    isTold_ = false;
    return;
  }
  current_->kinds |= part->kinds;
  if (!current_->secondsOfDay) current_->secondsOfDay = part->secondsOfDay;
  if (!current_->midnight) current_->midnight = part->midnight;
  if (!current_->hasPlace && part->hasPlace) {
    current_->hasPlace = true;
    current_->fix.coordinate = part->fix.coordinate;
    current_->fix.line = part->fix.line;
  }
  current_->noFix = current_->noFix || part->noFix;
  fillMissing(current_->fix, part->fix);
}

FixReader::Held NmeaReader::held() const {
  return current_ && current_->hasPlace && !current_->noFix && !isTold_ ? Held::growing : Held::nothing;
}

void NmeaReader::tellHeld(Listener& listener) {
  if (held() == Held::nothing) return;
  dateCurrent();
  emitter_.emit(current_->fix, listener);
  isTold_ = true;
}

void NmeaReader::emitCurrent(Listener& listener) {
  tellHeld(listener);
  current_.reset();
}

void NmeaReader::dateCurrent() {
  if (!current_->secondsOfDay) return;
  auto& time = current_->fix.secondsSince1970;
  if (current_->midnight) {
    time = *current_->midnight + *current_->secondsOfDay;
  } else if (lastSecondsSince1970_) {
    // Time runs forward, perhaps past midnight; only a sentence that comes late lies a little before the last instant.
    constexpr double kLatestSeconds = 3600.0;
    const double days = std::ceil((*lastSecondsSince1970_ - kLatestSeconds - *current_->secondsOfDay) / kSecondsPerDay);
    time = days * kSecondsPerDay + *current_->secondsOfDay;
  }
  if (time) lastSecondsSince1970_ = time;
}

}  // namespace readers
