// SPDX-License-Identifier: Apache-2.0
#include "NmeaParts.h"

#include <algorithm>
#include <array>

#include "Text.h"
#include "TimeText.h"

namespace readers {
namespace {

constexpr double kMetersPerSecondPerKnot = 1852.0 / 3600.0;
constexpr double kMetersPerSecondPerKilometerPerHour = 1.0 / 3.6;

Constellation constellationOf(std::string_view talker) {
  if (talker == "GN") return Constellation::combined;
  if (talker == "GP") return Constellation::gps;
  if (talker == "GL") return Constellation::glonass;
  if (talker == "GA") return Constellation::galileo;
  if (talker == "GB" || talker == "BD") return Constellation::beidou;
  if (talker == "GQ" || talker == "QZ") return Constellation::qzss;
  if (talker == "GI") return Constellation::navic;
  return Constellation::other;
}

/// How a position was come by; of several ways the last in this list counts.
enum class Mode { none, untold, estimated, measured };

/// As RMC, GLL and VTG say it by a letter, GNS by one for each constellation.
Mode modeOf(std::string_view letters) {
  if (letters.empty()) return Mode::untold;
  Mode best = Mode::none;
  for (const char letter : letters) {
    if (letter == 'N' || letter == 'M') continue;                                         // not valid, typed in
    const Mode mode = letter == 'E' || letter == 'S' ? Mode::estimated : Mode::measured;  // dead reckoning, simulated
    best = std::max(best, mode);
  }
  return best;
}

/// GGA's digit.
Mode modeOfQuality(std::string_view quality) {
  if (quality.empty() || quality == "0" || quality == "7") return Mode::none;  // 7: typed in
  return quality == "6" || quality == "8" ? Mode::estimated : Mode::measured;  // dead reckoning, simulated
}

void readSpeed(SourceFix& fix, std::string_view text, double metersPerSecond, const Reporter& reporter) {
  readQuantity(fix, Quantity::speed, text, reporter);
  if (fix.speedMetersPerSecond) *fix.speedMetersPerSecond *= metersPerSecond;
}

/// A time that is there must be right: without it the sentence would go to the wrong instant.
bool readSecondsOfDay(std::optional<double>& into, std::string_view text, const Reporter& reporter) {
  into = secondsOfDayFromNmea(text);
  if (into || text.empty()) return true;
  reporter.fault("the sentence is skipped: its time " + inQuotes(text) + " is no hhmmss.sss");
  return false;
}

/// Reads four fields from `first` on: latitude, its hemisphere, longitude, its hemisphere.
bool readPlace(SourceFix& fix, const NmeaFields& fields, std::size_t first, const Reporter& reporter) {
  const auto northSouth = fields[first + 1];
  const auto eastWest = fields[first + 3];
  const auto latitude = degreesFromNmea(fields[first], northSouth);
  const auto longitude = degreesFromNmea(fields[first + 2], eastWest);
  const bool rightAxes = (northSouth == "N" || northSouth == "S") && (eastWest == "E" || eastWest == "W");
  if (!latitude || !longitude || !rightAxes) {
    reporter.fault("the sentence is skipped: it claims a fix, but its position is no ddmm.mmmm with N, S, E and W");
    return false;
  }
  fix.coordinate = {*latitude, *longitude};
  fix.line = reporter.line;
  return checkPlace(fix, reporter);
}

void readSatellites(SourceFix& fix, std::string_view text) { fix.satellites = parseDigits(text); }

InstantPart partOf(Teller teller, const NmeaSentence& sentence, Mode mode) {
  InstantPart part;
  part.teller = teller;
  part.constellation = constellationOf(sentence.talker);
  part.hasFix = mode != Mode::none;
  part.fix.isEstimated = mode == Mode::estimated;
  return part;
}

bool readRmc(const NmeaSentence& sentence, const NmeaFields& fields, const Reporter& reporter, Instants& instants) {
  InstantPart part = partOf(Teller::rmc, sentence, fields[2] == "A" ? modeOf(fields[12]) : Mode::none);
  if (!readSecondsOfDay(part.secondsOfDay, fields[1], reporter)) return false;
  const auto date = fields[9];
  part.midnight = secondsAtMidnightFromNmea(date);
  if (part.hasFix) {
    if (!readPlace(part.fix, fields, 3, reporter)) return false;
    readSpeed(part.fix, fields[7], kMetersPerSecondPerKnot, reporter);
    readQuantity(part.fix, Quantity::course, fields[8], reporter);
    if (!part.midnight && !date.empty()) {
      reporter.fault("the date " + inQuotes(date) + " is no ddmmyy and is left out; the date before it is carried on");
    }
  }
  instants.add(part, reporter.listener);
  return true;
}

/// GGA's and GNS's; they differ in how they tell the mode.
bool readQualified(InstantPart part, const NmeaFields& fields, const Reporter& reporter, Instants& instants) {
  if (!readSecondsOfDay(part.secondsOfDay, fields[1], reporter)) return false;
  if (part.hasFix) {
    if (!readPlace(part.fix, fields, 2, reporter)) return false;
    readSatellites(part.fix, fields[7]);
    readQuantity(part.fix, Quantity::hdop, fields[8], reporter);
    readQuantity(part.fix, Quantity::altitude, fields[9], reporter);
  }
  instants.add(part, reporter.listener);
  return true;
}

bool readGga(const NmeaSentence& sentence, const NmeaFields& fields, const Reporter& reporter, Instants& instants) {
  return readQualified(partOf(Teller::gga, sentence, modeOfQuality(fields[6])), fields, reporter, instants);
}

bool readGns(const NmeaSentence& sentence, const NmeaFields& fields, const Reporter& reporter, Instants& instants) {
  const Mode mode = fields[6].empty() ? Mode::none : modeOf(fields[6]);
  return readQualified(partOf(Teller::gns, sentence, mode), fields, reporter, instants);
}

bool readGll(const NmeaSentence& sentence, const NmeaFields& fields, const Reporter& reporter, Instants& instants) {
  const auto status = fields[6];
  const bool isNone = status == "V" || status == "N" || fields[1].empty();  // old receivers send no status
  InstantPart part = partOf(Teller::gll, sentence, isNone ? Mode::none : modeOf(fields[7]));
  if (!readSecondsOfDay(part.secondsOfDay, fields[5], reporter)) return false;
  if (part.hasFix && !readPlace(part.fix, fields, 1, reporter)) return false;
  instants.add(part, reporter.listener);
  return true;
}

/// Old receivers send other fields under this name, which the units tell.
bool readVtg(const NmeaSentence&, const NmeaFields& fields, const Reporter& reporter, Instants& instants) {
  const bool hasKnots = fields[6] == "N", hasKilometers = fields[8] == "K";
  if (!hasKnots && !hasKilometers && fields[2] != "T") return true;
  if (modeOf(fields[9]) == Mode::none) return true;
  SourceFix motion;
  if (fields[2] != "M") readQuantity(motion, Quantity::course, fields[1], reporter);
  if (hasKnots) readSpeed(motion, fields[5], kMetersPerSecondPerKnot, reporter);
  if (hasKilometers && !motion.speedMetersPerSecond) {
    readSpeed(motion, fields[7], kMetersPerSecondPerKilometerPerHour, reporter);
  }
  instants.addDetails(motion);
  return true;
}

bool readZda(const NmeaSentence&, const NmeaFields& fields, const Reporter& reporter, Instants& instants) {
  std::optional<double> secondsOfDay;
  if (!readSecondsOfDay(secondsOfDay, fields[1], reporter)) return false;
  if (!secondsOfDay) return true;
  const auto day = parseDigits(fields[2]), month = parseDigits(fields[3]), year = parseDigits(fields[4]);
  const auto midnight = day && month && year ? secondsAtMidnight(*year, *month, *day) : std::nullopt;
  if (!midnight && !(fields[2].empty() && fields[3].empty() && fields[4].empty())) {
    reporter.fault("the date " +
                   inQuotes(std::string(fields[2]) + ',' + std::string(fields[3]) + ',' + std::string(fields[4])) +
                   " is no dd,mm,yyyy and is left out; the date before it is carried on");
  }
  instants.addTime(*secondsOfDay, midnight);
  return true;
}

bool readGsa(const NmeaSentence&, const NmeaFields& fields, const Reporter& reporter, Instants& instants) {
  SourceFix quality;
  readQuantity(quality, Quantity::hdop, fields[16], reporter);
  instants.addDetails(quality);
  return true;
}

constexpr std::array<NmeaKind, 7> kKinds{{{"RMC", 9, Severity::fault, readRmc},
                                          {"GGA", 9, Severity::fault, readGga},
                                          {"GSA", 16, Severity::warning, readGsa},
                                          {"VTG", 4, Severity::fault, readVtg},
                                          {"GLL", 4, Severity::fault, readGll},
                                          {"GNS", 9, Severity::fault, readGns},
                                          {"ZDA", 4, Severity::fault, readZda}}};

}  // namespace

const NmeaKind* findNmeaKind(std::string_view name) {
  const auto* const found =
      std::find_if(kKinds.begin(), kKinds.end(), [&](const NmeaKind& kind) { return kind.name == name; });
  return found == kKinds.end() ? nullptr : found;
}

void readOtherNmea(const NmeaSentence& sentence, Instants& instants) {
  const auto first = sentence.content.substr(0, sentence.content.find(','));
  if (first.size() < 6) return;
  if (const auto secondsOfDay = secondsOfDayFromNmea(first)) instants.addTime(*secondsOfDay);
}

}  // namespace readers
