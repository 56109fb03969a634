// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_INSTANTS_H
#define ZRCORE_READERS_INSTANTS_H

#include <array>
#include <cstdint>
#include <optional>

#include "FixEmitter.h"
#include "FixReader.h"
#include "InstantCycle.h"

namespace readers {

/// Who says something of an instant. The later in this list, the more it is believed about the place.
enum class Teller : unsigned { gll, rmc, gns, gga, report };

/// Of which satellites a sentence tells, by its talker.
enum class Constellation : unsigned { gps, glonass, galileo, beidou, qzss, navic, other, combined };

/// What one sentence, or one report, says of its instant.
struct InstantPart {
  Teller teller = Teller::gll;
  Constellation constellation = Constellation::combined;
  std::optional<double> secondsOfDay;
  std::optional<double> midnight;  ///< seconds since 1970 at which its day begins
  bool hasFix = false;             ///< false: it says that there is none
  SourceFix fix;                   ///< empty without a fix; of a report with its time, of a sentence without
};

/// What has been said of one instant.
struct Instant {
  std::uint64_t tellers = 0;  ///< bits, one for each teller of each constellation
  std::optional<double> secondsOfDay, midnight;
  bool hasPlace = false;
  Teller placeTeller = Teller::gll;
  Constellation placeConstellation = Constellation::other;
  std::array<unsigned, 3> noFix{};  ///< bits, one for each constellation; by the standing of who says so
  SourceFix fix;
  unsigned parts = 0;
};

/// Puts together what a receiver, or a daemon, says of one instant, to one fix.
///
/// - **One instant** is what bears one time of day. A part without a time belongs to the instant whose place it
///   repeats. The same teller at one time and two places tells of two instants: such receivers leave out fractions of a
///   second.
/// - **The place** is that of the teller that is believed most: of sentences GGA and GNS, because they carry the
///   quality, then RMC, which in some receivers repeats the second before, then GLL; among equals the combined
///   constellations', then the first.
/// - **Measurements** of who gave the place replace others'; the rest fills gaps. Of a daemon's reports, which repeat
///   each other and grow, the later one replaces the earlier.
/// - **No fix**: who says so voids what his own constellation says, the combined one what all say, GLL and RMC only
///   each other. Without a time it says nothing about any instant.
/// - **The date** is the instant's own, else the day that brings it next to the last time known. Without either the fix
///   has no time.
/// - **Details** without a time belong to the instant of the last sentence with one, be it of a kind that gives no fix;
///   to none when that sentence was lost.
/// - **It is over** when a part of another instant, or the end, follows, and is told once: what comes of it afterwards
///   is dropped. Live it is over, too, when it has as many parts as those before.
class Instants {
 public:
  void add(const InstantPart& part, Listener& listener);

  /// A sentence that gives no fix bears this time. With a date, those after it lie by that, too.
  void addTime(double secondsOfDay, std::optional<double> midnight = {});

  /// A sentence without a time gives speed and course, or the dilution of precision.
  void addDetails(const SourceFix& details);

  /// Something was lost that may have begun an instant.
  void loseTrack() { details_ = Details::belongToNone; }

  void end(Listener& listener) { close(listener); }

  FixReader::Held held() const;
  void tellHeld(Listener& listener);

 private:
  static bool isSameTime(const Instant& instant, const InstantPart& part);
  static bool isSameInstant(const Instant& instant, const InstantPart& part);
  static bool isFix(const Instant& instant);
  bool isOfLastInstant(const InstantPart& part) const;

  void begin(const InstantPart& part);
  void merge(const InstantPart& part);
  void count(Instant& instant);
  void close(Listener& listener);
  void date(Instant& instant);

  enum class Details { belongToNone, belongToCurrent, belongToAhead };

  std::optional<Instant> current_;
  std::optional<Instant> ahead_;  ///< begun by sentences that give no fix
  std::optional<Instant> last_;   ///< closed
  Details details_ = Details::belongToNone;
  bool isTold_ = false;       ///< current_ has been told
  bool isToldEarly_ = false;  ///< before it was over, because nothing came
  std::optional<double> lastSecondsSince1970_;
  InstantCycle cycle_;
  FixEmitter emitter_;
};

}  // namespace readers

#endif
