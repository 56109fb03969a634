// SPDX-License-Identifier: Apache-2.0
#include "FixIntake.h"

#include <chrono>
#include <cmath>
#include <cstdio>

#include "TimeText.h"

namespace readers {
namespace {

constexpr double kRolloverSeconds = 1024.0 * 7.0 * kSecondsPerDay;
constexpr double kTenYearsSeconds = 3652.5 * kSecondsPerDay;

std::string dayText(double secondsSince1970) {
  using namespace std::chrono;
  const year_month_day day{sys_days{days{static_cast<int>(std::floor(secondsSince1970 / kSecondsPerDay))}}};
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
                static_cast<unsigned>(day.day()));
  return text;
}

}  // namespace

bool FixIntake::takes(SourceFix& fix) const {
  if (options_.leavesOutEstimates && fix.isEstimated) return false;
  if (options_.repairsWeekRollover && options_.now && fix.secondsSince1970) {
    // A receiver's clock may be a little ahead of ours.
    const double latest = options_.now().secondsSince1970 + kSecondsPerDay;
    const double times = std::floor((latest - *fix.secondsSince1970) / kRolloverSeconds);
    if (times > 0.0) *fix.secondsSince1970 += times * kRolloverSeconds;
  }
  return true;
}

std::optional<std::string> FixIntake::remarkOnDate(const SourceFix& fix) {
  if (hasRemarked_ || !options_.now || !fix.secondsSince1970) return std::nullopt;
  if (options_.now().secondsSince1970 - *fix.secondsSince1970 < kTenYearsSeconds) return std::nullopt;
  hasRemarked_ = true;
  return "the receiver's date, " + dayText(*fix.secondsSince1970) +
         ", lies more than ten years back, as it does when its week counter has rolled over; repairsWeekRollover "
         "(zrcore trip and watch: --week-rollover) mends that";
}

}  // namespace readers
