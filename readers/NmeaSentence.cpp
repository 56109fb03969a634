// SPDX-License-Identifier: Apache-2.0
#include "NmeaSentence.h"

#include <text/Numbers.h>

#include <algorithm>

#include "Text.h"
#include "TimeText.h"

namespace readers {
namespace {

bool isCapitalOrDigit(char c) { return text::isCapital(c) || text::isDigit(c); }

/// Nothing when it is not two hexadecimal digits.
std::optional<unsigned char> parseChecksum(std::string_view text) {
  return text.size() == 2 ? text::numberIn<unsigned char>(text, 16) : std::nullopt;
}

}  // namespace

std::variant<NmeaSentence, std::string_view> parseSentence(std::string_view line) {
  std::string_view body = trimmed(line);
  body.remove_prefix(1);
  if (std::any_of(body.begin(), body.end(), [](char c) { return c < ' ' || c > '~'; })) {
    return "it holds bytes that no sentence has";
  }
  if (body.find('$') != std::string_view::npos) return "a second sentence begins within it";

  NmeaSentence sentence;
  if (const auto star = body.find('*'); star != std::string_view::npos) {
    const auto expected = parseChecksum(body.substr(star + 1));
    body = body.substr(0, star);
    unsigned char sum = 0;
    for (const char c : body) sum = static_cast<unsigned char>(sum ^ static_cast<unsigned char>(c));
    if (!expected || *expected != sum) return "its checksum is wrong";
    sentence.hasChecksum = true;
  }

  const std::string_view address = body.substr(0, body.find(','));
  if (address.size() < 3 || !std::all_of(address.begin(), address.end(), isCapitalOrDigit)) return "it has no address";
  // Two letters of talker and three of kind; a leading P marks a manufacturer's own sentence.
  const bool standard = address.size() == 5 && address.front() != 'P';
  sentence.kind = standard ? address.substr(2) : address;

  body.remove_prefix(address.size());
  while (!body.empty()) {
    body.remove_prefix(1);
    const auto field = body.substr(0, body.find(','));
    sentence.fields.push_back(field);
    body.remove_prefix(field.size());
  }
  return sentence;
}

std::optional<double> secondsOfDayFromNmea(std::string_view text) {
  if (text.size() < 6) return std::nullopt;
  const auto hour = parseDigits(text.substr(0, 2));
  const auto minute = parseDigits(text.substr(2, 2));
  const auto wholeSeconds = parseDigits(text.substr(4, 2));
  const auto seconds = parseNumber(text.substr(4));
  if (!hour || !minute || !wholeSeconds || !seconds || (text.size() > 6 && text[6] != '.')) return std::nullopt;
  return secondsOfDay(*hour, *minute, *seconds);
}

std::optional<double> secondsAtMidnightFromNmea(std::string_view text) {
  if (text.size() != 6) return std::nullopt;
  const auto day = parseDigits(text.substr(0, 2));
  const auto month = parseDigits(text.substr(2, 2));
  const auto year = parseDigits(text.substr(4, 2));
  if (!day || !month || !year) return std::nullopt;
  return secondsAtMidnight(*year < 80 ? 2000 + *year : 1900 + *year, *month, *day);
}

std::optional<double> degreesFromNmea(std::string_view text, std::string_view hemisphere) {
  const auto point = std::min(text.find('.'), text.size());
  if (point < 3 || point > 5) return std::nullopt;
  const auto degrees = parseDigits(text.substr(0, point - 2));
  const auto wholeMinutes = parseDigits(text.substr(point - 2, 2));
  const auto minutes = parseNumber(text.substr(point - 2));
  if (!degrees || !wholeMinutes || !minutes || *minutes >= 60.0) return std::nullopt;
  const double magnitude = *degrees + *minutes / 60.0;
  if (hemisphere == "N" || hemisphere == "E") return magnitude;
  if (hemisphere == "S" || hemisphere == "W") return -magnitude;
  return std::nullopt;
}

}  // namespace readers
