// SPDX-License-Identifier: Apache-2.0
#include "TimeText.h"

#include <chrono>

#include "Text.h"

namespace readers {
namespace {

/// Takes a text apart from its front.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  std::optional<int> digits(std::size_t count) {
    if (rest_.size() < count) return std::nullopt;
    return parseDigits(take(count));
  }

  bool skip(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  /// Two digits and, perhaps, a fraction.
  std::optional<double> seconds() {
    auto length = rest_.find_first_not_of("0123456789");
    if (length == std::string_view::npos) length = rest_.size();
    if (length != 2) return std::nullopt;
    if (rest_.size() > 2 && rest_[2] == '.') {
      length = rest_.find_first_not_of("0123456789", 3);
      if (length == std::string_view::npos) length = rest_.size();
      if (length == 3) return std::nullopt;
    }
    return parseNumber(take(length));
  }

  bool atEnd() const { return rest_.empty(); }

 private:
  std::string_view take(std::size_t count) {
    const auto taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }

  std::string_view rest_;
};

/// `Z`, `+hh`, `+hhmm`, `+hh:mm`, the same with a minus, or nothing; to the end of the text.
std::optional<double> offsetSeconds(Scanner& scanner) {
  if (scanner.atEnd() || scanner.skip('Z') || scanner.skip('z')) {
    return scanner.atEnd() ? std::optional(0.0) : std::nullopt;
  }
  const bool west = scanner.skip('-');
  if (!west && !scanner.skip('+')) return std::nullopt;
  const auto hours = scanner.digits(2);
  std::optional<int> minutes = 0;
  if (scanner.skip(':') || !scanner.atEnd()) minutes = scanner.digits(2);
  if (!hours || !minutes || !scanner.atEnd()) return std::nullopt;
  const auto offset = secondsOfDay(*hours, *minutes, 0.0);
  return offset && west ? -*offset : offset;
}

}  // namespace

std::optional<double> secondsAtMidnight(int year, int month, int day) {
  const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                         std::chrono::day{static_cast<unsigned>(day)}};
  if (!date.ok()) return std::nullopt;
  return kSecondsPerDay * static_cast<double>(std::chrono::sys_days{date}.time_since_epoch().count());
}

std::optional<double> secondsOfDay(int hour, int minute, double seconds) {
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || !(seconds >= 0.0 && seconds < 61.0)) return std::nullopt;
  return hour * 3600 + minute * 60 + seconds;
}

std::optional<double> secondsFromIso8601(std::string_view text) {
  Scanner scanner(trimmed(text));
  const auto year = scanner.digits(4);
  const bool firstDash = scanner.skip('-');
  const auto month = scanner.digits(2);
  const bool secondDash = scanner.skip('-');
  const auto day = scanner.digits(2);
  if (!year || !firstDash || !month || !secondDash || !day) return std::nullopt;

  if (!scanner.skip('T') && !scanner.skip('t') && !scanner.skip(' ')) return std::nullopt;
  const auto hour = scanner.digits(2);
  const bool colon = scanner.skip(':');
  const auto minute = scanner.digits(2);
  if (!hour || !colon || !minute) return std::nullopt;
  const std::optional<double> second = scanner.skip(':') ? scanner.seconds() : 0.0;
  if (!second) return std::nullopt;

  const auto midnight = secondsAtMidnight(*year, *month, *day);
  const auto sinceMidnight = secondsOfDay(*hour, *minute, *second);
  const auto offset = offsetSeconds(scanner);
  if (!midnight || !sinceMidnight || !offset) return std::nullopt;
  return *midnight + *sinceMidnight - *offset;
}

std::optional<double> secondsFromText(std::string_view text) {
  constexpr double kYear0 = -62167219200.0;
  constexpr double kYear10000 = 253402300800.0;
  const auto number = parseNumber(text);
  if (!number) return secondsFromIso8601(text);
  return *number >= kYear0 && *number < kYear10000 ? number : std::nullopt;
}

}  // namespace readers
