// SPDX-License-Identifier: Apache-2.0
#include "NmeaSentence.h"

#include <text/Numbers.h>

#include <algorithm>

#include "Text.h"
#include "TimeText.h"

namespace readers {
namespace {

bool isCapitalOrDigit(char c) { return text::isCapital(c) || text::isDigit(c); }

/// Nothing when it does not begin with two hexadecimal digits, no more.
std::optional<unsigned> parseChecksum(std::string_view text) {
  if (text.size() < 2 || (text.size() > 2 && text::isHexDigit(text[2]))) return std::nullopt;
  return text::numberIn<unsigned>(text.substr(0, 2), 16);
}

/// "GPRMC" of "GPRMC,1,2"; empty when there is none.
std::string_view addressOf(std::string_view body) {
  const auto end = std::min(body.find(','), body.size());
  const std::string_view address = body.substr(0, end);
  return address.size() >= 3 && std::all_of(address.begin(), address.end(), isCapitalOrDigit) ? address
                                                                                              : std::string_view{};
}

/// Two letters of talker and three of kind; a leading P marks a manufacturer's own sentence.
bool isStandard(std::string_view address) { return address.size() == 5 && address.front() != 'P'; }

}  // namespace

std::variant<NmeaSentence, std::string_view> parseSentence(std::string_view text) {
  std::string_view body = trimmed(text.substr(1));
  NmeaSentence sentence;
  std::optional<unsigned> expected;
  if (const auto star = body.find('*'); star != std::string_view::npos) {
    expected = parseChecksum(body.substr(star + 1));
    sentence.hasChecksum = true;
    body = body.substr(0, star);
  }
  unsigned sum = 0;
  bool isPrintable = true;
  for (const char c : body) {
    sum ^= static_cast<unsigned char>(c);
    isPrintable = isPrintable & (c >= ' ') & (c <= '~');
  }
  if (!isPrintable) return "it holds bytes that no sentence has";
  if (sentence.hasChecksum && expected != sum) return "its checksum is wrong";

  const std::string_view address = addressOf(body);
  if (address.empty()) return "it has no address";
  if (isStandard(address)) sentence.talker = address.substr(0, 2);
  sentence.kind = address.substr(sentence.talker.size());
  if (address.size() < body.size()) sentence.content = body.substr(address.size() + 1);
  return sentence;
}

std::string_view kindOfSentence(std::string_view text) {
  const std::string_view body = trimmed(text.substr(1));
  const std::string_view address = addressOf(body.substr(0, body.find('*')));
  return isStandard(address) ? address.substr(2) : address;
}

NmeaFields::NmeaFields(const NmeaSentence& sentence) {
  std::string_view rest = sentence.content;
  while (count_ < fields_.size()) {
    const auto comma = std::min(rest.find(','), rest.size());
    std::string_view field = rest.substr(0, comma);
    if (!field.empty() && (field.front() == ' ' || field.back() == ' ')) field = trimmed(field);
    fields_[count_++] = field;
    if (comma == rest.size()) break;
    rest.remove_prefix(comma + 1);
  }
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
