// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSDate_ZR.h>
#include <ZRCore/ZRPlatform.h>

#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "InformalInterval.h"
#include "StrictNumber.h"

namespace {

constexpr double kSecondsPerDay = 86400.0;

/// Reads pairs of decimal digits and remembers whether all of them were some, so that a text is judged once.
class DigitPairs {
 public:
  unsigned at(const char* text) {
    const unsigned tens = static_cast<unsigned char>(text[0]) - unsigned{'0'};
    const unsigned ones = static_cast<unsigned char>(text[1]) - unsigned{'0'};
    allDigits_ &= tens <= 9 && ones <= 9;
    return 10 * tens + ones;
  }
  bool allDigits() const { return allDigits_; }

 private:
  bool allDigits_ = true;
};

bool hasISOSeparators(const char* text) {
  return text[4] == '-' && text[7] == '-' && text[10] == 'T' && text[13] == ':' && text[16] == ':' && text[19] == 'Z';
}

}  // namespace

namespace NSDate_ZR {

std::optional<NSDate> dateWithISO8601String(const std::optional<std::string_view>& string) {
  if (!string || string->size() != std::string_view("2016-03-01T12:00:00Z").size()) return std::nullopt;
  const char* const text = string->data();
  DigitPairs pair;
  const unsigned year = 100 * pair.at(text) + pair.at(text + 2);
  const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(year)),
                                         std::chrono::month(pair.at(text + 5)), std::chrono::day(pair.at(text + 8)));
  const unsigned hour = pair.at(text + 11);
  const unsigned minute = pair.at(text + 14);
  const unsigned second = pair.at(text + 17);
  const bool isTime = hour <= 23 && minute <= 59 && second <= 59;
  if (!pair.allDigits() || !hasISOSeparators(text) || year == 0 || !isTime || !date.ok()) return std::nullopt;
  const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
  return NSDate{static_cast<double>(days * 86400 + hour * 3600 + minute * 60 + second)};
}

std::optional<std::string> monthDayYear(NSDate date) {
  using std::chrono::days;
  using std::chrono::sys_days;
  const double day = std::floor(date.secondsSince1970 / kSecondsPerDay);
  constexpr double kFirst = sys_days(std::chrono::year::min() / 1 / 1).time_since_epoch().count();
  constexpr double kLast = sys_days(std::chrono::year::max() / 12 / 31).time_since_epoch().count();
  if (!(day >= kFirst && day <= kLast)) return std::nullopt;
  const std::chrono::year_month_day calendar{sys_days(days(static_cast<int>(day)))};
  // The year before year 1 is the first before our era.
  const int year = static_cast<int>(calendar.year());
  const int yearOfEra = year > 0 ? year : 1 - year;
  std::string text = std::to_string(static_cast<unsigned>(calendar.month())) + '/' +
                     std::to_string(static_cast<unsigned>(calendar.day())) + '/';
  text += static_cast<char>('0' + yearOfEra / 10 % 10);
  text += static_cast<char>('0' + yearOfEra % 10);
  return text;
}

std::optional<NSDate> dateFromIntervalSince1970FromStringDividedBy(const std::optional<std::string_view>& string,
                                                                   std::optional<double> divisor) {
  const auto number = string ? strictNumber(*string) : std::nullopt;
  if (!number) return std::nullopt;
  return NSDate{divisor ? *number / *divisor : *number};
}

std::optional<std::string> informalIntervalSinceDate(NSDate date) {
  const ZRPlatform& platform = ZRPlatformInUse();
  const auto interval = informalInterval(platform.clock->now().secondsSince1970 - date.secondsSince1970);
  if (!interval) return std::nullopt;
  const std::string phrase = platform.bundle->localizedStringForKey(interval->key).value_or(interval->key);
  return interval->number ? fillInNumber(phrase, *interval->number) : phrase;
}

}  // namespace NSDate_ZR
