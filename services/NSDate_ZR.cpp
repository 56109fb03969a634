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

struct Fields {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;

  /// Reads `text`, as long as `shape`, by it: "Y" is a digit of the year and so on, anything else stands for itself.
  /// @return whether `text` has that shape.
  bool read(std::string_view text, std::string_view shape) {
    for (std::size_t i = 0; i < shape.size(); ++i) {
      int* const field = fieldOf(shape[i]);
      if (!field) {
        if (text[i] != shape[i]) return false;
        continue;
      }
      if (text[i] < '0' || text[i] > '9') return false;
      *field = *field * 10 + (text[i] - '0');
    }
    return true;
  }

 private:
  int* fieldOf(char letter) {
    switch (letter) {
      case 'Y':
        return &year;
      case 'M':
        return &month;
      case 'D':
        return &day;
      case 'h':
        return &hour;
      case 'm':
        return &minute;
      case 's':
        return &second;
      default:
        return nullptr;
    }
  }
};

}  // namespace

namespace NSDate_ZR {

std::optional<NSDate> dateWithISO8601String(std::optional<std::string_view> string) {
  constexpr std::string_view kShape = "YYYY-MM-DDThh:mm:ssZ";
  Fields fields;
  if (!string || string->size() != kShape.size() || !fields.read(*string, kShape)) return std::nullopt;
  const std::chrono::year_month_day date(std::chrono::year(fields.year),
                                         std::chrono::month(static_cast<unsigned>(fields.month)),
                                         std::chrono::day(static_cast<unsigned>(fields.day)));
  if (!date.ok() || fields.year == 0 || fields.hour > 23 || fields.minute > 59 || fields.second > 59) {
    return std::nullopt;
  }
  const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
  const std::int64_t seconds = ((days * 24 + fields.hour) * 60 + fields.minute) * 60 + fields.second;
  return NSDate{static_cast<double>(seconds)};
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

std::optional<NSDate> dateFromIntervalSince1970FromStringDividedBy(std::optional<std::string_view> string,
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
