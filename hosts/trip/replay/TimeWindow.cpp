// SPDX-License-Identifier: Apache-2.0
#include "TimeWindow.h"

#include <readers/TimeText.h>
#include <text/Numbers.h>

#include <cmath>
#include <string>

namespace trip {

std::optional<TimeBound> parseTimeBound(std::string_view text) {
  if (text.starts_with('+')) {
    const auto seconds = text::numberIn<double>(text.substr(1));
    if (!seconds || !std::isfinite(*seconds) || *seconds < 0.0) return std::nullopt;
    return TimeBound{TimeBound::Kind::sinceStart, *seconds};
  }
  if (const auto seconds = readers::secondsFromIso8601(text)) return TimeBound{TimeBound::Kind::instant, *seconds};
  const auto seconds = readers::secondsFromIso8601("1970-01-01T" + std::string(text) + "Z");
  if (!seconds) return std::nullopt;
  return TimeBound{TimeBound::Kind::timeOfDay, *seconds};
}

std::optional<double> TimeWindow::resolved(const std::optional<TimeBound>& bound) const {
  if (!bound) return std::nullopt;
  if (bound->kind == TimeBound::Kind::instant) return bound->seconds;
  if (!startSecondsSince1970_) return std::nullopt;
  if (bound->kind == TimeBound::Kind::sinceStart) return *startSecondsSince1970_ + bound->seconds;
  return std::floor(*startSecondsSince1970_ / readers::kSecondsPerDay) * readers::kSecondsPerDay + bound->seconds;
}

bool TimeWindow::contains(std::optional<double> secondsSince1970) {
  if (!secondsSince1970) return startSecondsSince1970_ ? containedLast_ : !from_;
  if (!startSecondsSince1970_) startSecondsSince1970_ = secondsSince1970;
  const auto from = resolved(from_);
  const auto to = resolved(to_);
  return containedLast_ = (!from || *secondsSince1970 >= *from) && (!to || *secondsSince1970 <= *to);
}

bool TimeWindow::isReversed() const {
  const auto from = resolved(from_);
  const auto to = resolved(to_);
  return from && to && *from > *to;
}

}  // namespace trip
