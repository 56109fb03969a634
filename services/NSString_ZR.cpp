// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSString_ZR.h>
#include <ZRCore/ZRPlatform.h>
#include <text/Whitespace.h>

#include "BaseAndPath.h"
#include "PercentEscape.h"

namespace {

std::optional<std::string> escaped(std::optional<std::string_view> string, QueryPart part) {
  std::optional<std::string> result(std::in_place);
  if (!string || !appendEscaped(*result, *string, part)) return std::nullopt;
  return result;
}

/// Whether ordinals are English here. A locale without a language counts as English: so are the untranslated texts.
bool speaksEnglish(const std::optional<std::string>& languageCode) {
  if (!languageCode) return true;
  const std::string& code = *languageCode;
  return code.size() == 2 && (code[0] == 'e' || code[0] == 'E') && (code[1] == 'n' || code[1] == 'N');
}

const char* englishOrdinalSuffix(std::int64_t number) {
  if (number >= 11 && number <= 13) return "th";
  switch (number % 10) {  // negative for a negative number, and then none of these
    case 1:
      return "st";
    case 2:
      return "nd";
    case 3:
      return "rd";
    default:
      return "th";
  }
}

}  // namespace

namespace NSString_ZR {

bool isBlank(std::optional<std::string_view> string) { return !string || text::trimmedOfWhitespace(*string).empty(); }

std::string stripWhitespace(std::string_view string) { return std::string(text::trimmedOfWhitespace(string)); }

std::string stringOrdinalFor(std::int64_t number) {
  std::string text = std::to_string(static_cast<std::int32_t>(number));
  if (speaksEnglish(ZRPlatformInUse().device->systemLanguageCode())) text += englishOrdinalSuffix(number);
  return text;
}

std::optional<std::string> urlQueryParameterEscaped(std::optional<std::string_view> string) {
  return escaped(string, QueryPart::value);
}

std::optional<std::string> urlQueryParameterKeyEscaped(std::optional<std::string_view> string) {
  return escaped(string, QueryPart::key);
}

std::optional<std::size_t> urlQueryParameterEscapedInto(char* buffer, std::size_t capacity, std::string_view string) {
  return escapeInto(buffer, capacity, string, QueryPart::value);
}

std::optional<std::size_t> urlQueryParameterKeyEscapedInto(char* buffer, std::size_t capacity,
                                                           std::string_view string) {
  return escapeInto(buffer, capacity, string, QueryPart::key);
}

std::string stringWithBaseUrlStringPath(std::string_view base, std::optional<std::string_view> path) {
  std::string joined;
  joined.reserve(longestJoined(base, path));
  appendJoined(joined, base, path);
  return joined;
}

}  // namespace NSString_ZR
