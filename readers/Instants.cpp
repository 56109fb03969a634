// SPDX-License-Identifier: Apache-2.0
#include "Instants.h"

#include <cmath>
#include <utility>

#include "FixFields.h"
#include "TimeText.h"

namespace readers {
namespace {

constexpr unsigned bitOf(Constellation constellation) { return 1U << static_cast<unsigned>(constellation); }

std::uint64_t bitOf(const InstantPart& part) {
  return std::uint64_t{1} << (8 * static_cast<unsigned>(part.teller) + static_cast<unsigned>(part.constellation));
}

/// Who may void what the other says, about there being a fix at all: an index.
std::size_t standingOf(Teller teller) {
  if (teller == Teller::report) return 2;
  return teller == Teller::gga || teller == Teller::gns ? 1 : 0;
}

/// GGA and GNS are believed alike.
std::pair<unsigned, bool> beliefOf(Teller teller, Constellation constellation) {
  const Teller counted = teller == Teller::gns ? Teller::gga : teller;
  return {static_cast<unsigned>(counted), constellation == Constellation::combined};
}

/// To the millisecond, over midnight too.
bool isSameTimeOfDay(double a, double b) {
  constexpr double kSeconds = 0.0005;
  const double apart = std::fabs(a - b);
  return apart < kSeconds || kSecondsPerDay - apart < kSeconds;
}

}  // namespace

bool Instants::isSameTime(const Instant& instant, const InstantPart& part) {
  if (!instant.secondsOfDay || !part.secondsOfDay) return false;
  const auto& here = instant.fix.secondsSince1970;
  const auto& there = part.fix.secondsSince1970;
  if (here && there && *here != *there) return false;
  return isSameTimeOfDay(*instant.secondsOfDay, *part.secondsOfDay);
}

bool Instants::isSameInstant(const Instant& instant, const InstantPart& part) {
  const bool isSamePlace = instant.hasPlace && part.hasFix && samePlace(instant.fix, part.fix);
  if (!instant.secondsOfDay || !part.secondsOfDay) return isSamePlace;
  const bool movedOn = (instant.tellers & bitOf(part)) != 0 && instant.hasPlace && part.hasFix && !isSamePlace;
  return isSameTime(instant, part) && !movedOn;
}

bool Instants::isFix(const Instant& instant) {
  if (!instant.hasPlace) return false;
  unsigned voided = 0;
  for (std::size_t standing = standingOf(instant.placeTeller); standing < instant.noFix.size(); ++standing) {
    voided |= instant.noFix[standing];
  }
  return (voided & (bitOf(instant.placeConstellation) | bitOf(Constellation::combined))) == 0;
}

bool Instants::isOfLastInstant(const InstantPart& part) const {
  return last_ && isSameTime(*last_, part) && !(part.hasFix && last_->hasPlace && !samePlace(last_->fix, part.fix));
}

void Instants::add(const InstantPart& part, Listener& listener) {
  if (!part.hasFix && !part.secondsOfDay) return loseTrack();
  if (!current_ || !isSameInstant(*current_, part)) {
    if (isOfLastInstant(part)) return loseTrack();
    close(listener);
    begin(part);
  }
  merge(part);
  details_ = Details::belongToCurrent;
}

void Instants::begin(const InstantPart& part) {
  current_.emplace();
  isTold_ = isToldEarly_ = false;
  if (const auto ahead = std::exchange(ahead_, std::nullopt); ahead && isSameTime(*ahead, part)) current_ = ahead;
}

void Instants::merge(const InstantPart& part) {
  Instant& instant = *current_;
  count(instant);
  instant.tellers |= bitOf(part);
  if (!instant.secondsOfDay) instant.secondsOfDay = part.secondsOfDay;
  if (!instant.midnight) instant.midnight = part.midnight;
  if (!part.hasFix) {
    instant.noFix[standingOf(part.teller)] |= bitOf(part.constellation);
    return;
  }
  const auto known = beliefOf(instant.placeTeller, instant.placeConstellation);
  const auto told = beliefOf(part.teller, part.constellation);
  if (instant.hasPlace && (told < known || (told == known && part.teller != Teller::report))) {
    fillMissing(instant.fix, part.fix);
    return;
  }
  if (!instant.hasPlace) instant.fix.line = part.fix.line;
  instant.hasPlace = true;
  instant.placeTeller = part.teller;
  instant.placeConstellation = part.constellation;
  replaceByKnown(instant.fix, part.fix);
}

/// What comes after an early telling is not waited for the next time.
void Instants::count(Instant& instant) {
  if (!isToldEarly_) ++instant.parts;
}

void Instants::addTime(double secondsOfDay, std::optional<double> midnight) {
  if (midnight) lastSecondsSince1970_ = *midnight + secondsOfDay;
  InstantPart part;
  part.secondsOfDay = secondsOfDay;
  if (current_ && isSameTime(*current_, part)) {
    details_ = Details::belongToCurrent;
  } else {
    details_ = Details::belongToAhead;
    if (!ahead_ || !isSameTime(*ahead_, part)) ahead_.emplace().secondsOfDay = secondsOfDay;
  }
  Instant& instant = details_ == Details::belongToCurrent ? *current_ : *ahead_;
  if (!midnight) return;
  if (!instant.midnight) instant.midnight = midnight;
  count(instant);
}

void Instants::addDetails(const SourceFix& details) {
  if (details_ == Details::belongToNone) return;
  Instant& instant = details_ == Details::belongToCurrent ? *current_ : *ahead_;
  fillMissing(instant.fix, details);
  count(instant);
}

FixReader::Held Instants::held() const {
  if (!current_ || isTold_ || !isFix(*current_)) return FixReader::Held::nothing;
  return cycle_.isWhole(current_->parts) ? FixReader::Held::complete : FixReader::Held::growing;
}

void Instants::tellHeld(Listener& listener) {
  const FixReader::Held held = this->held();
  if (held == FixReader::Held::nothing) return;
  isTold_ = true;
  isToldEarly_ = held == FixReader::Held::growing;
  date(*current_);
  emitter_.emit(current_->fix, listener);
}

void Instants::close(Listener& listener) {
  tellHeld(listener);
  if (current_ && isFix(*current_)) cycle_.learn(current_->parts);
  if (current_) last_ = std::exchange(current_, std::nullopt);
  if (details_ == Details::belongToCurrent) loseTrack();
}

void Instants::date(Instant& instant) {
  auto& time = instant.fix.secondsSince1970;
  if (!time && instant.secondsOfDay && instant.midnight) time = *instant.midnight + *instant.secondsOfDay;
  if (!time && instant.secondsOfDay && lastSecondsSince1970_) {
    // Time runs forward, perhaps past midnight; only a sentence that comes late lies a little before the last instant.
    constexpr double kLatestSeconds = 3600.0;
    const double earliest = *lastSecondsSince1970_ - kLatestSeconds;
    time = std::ceil((earliest - *instant.secondsOfDay) / kSecondsPerDay) * kSecondsPerDay + *instant.secondsOfDay;
  }
  if (time) lastSecondsSince1970_ = time;
}

}  // namespace readers
