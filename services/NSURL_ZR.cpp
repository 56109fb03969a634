// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSURL_ZR.h>

#include <utility>

#include "BaseAndPath.h"
#include "PercentEscape.h"

namespace {

/// The text of a value without a copy where it is a text. @param scratch  holds it where it is not.
std::string_view textOf(const ZROHMValue& value, std::string& scratch) {
  if (const std::string* const text = value.string()) return *text;
  scratch = value.text();
  return scratch;
}

/// What an escaped text takes at most. Short ones are not measured, which would take as long as escaping them.
std::size_t longestEscaped(std::string_view text, QueryPart part) {
  constexpr std::size_t kShort = 64;
  return text.size() <= kShort ? 3 * text.size() : escapedLength(text, part);
}

/// How much the pairs of a query add, "&" and "=" included: as a rule no less, which saves growing.
std::size_t queryLength(const ZROHMDictionary& parameters) {
  constexpr std::size_t kLongestNumber = 32;
  std::size_t sum = 0;
  for (const auto& [key, value] : parameters) {
    const std::string* const text = value.string();
    sum += longestEscaped(key, QueryPart::key) + 2;
    sum += text ? longestEscaped(*text, QueryPart::value) : kLongestNumber;
  }
  return sum;
}

/// @return whether all texts are UTF-8.
bool appendQuery(std::string& to, const ZROHMDictionary& parameters) {
  if (parameters.empty()) return true;
  if (!to.ends_with('?')) to += '?';
  std::string scratch;
  bool isFirst = true;
  for (const auto& [key, value] : parameters) {
    if (!std::exchange(isFirst, false)) to += '&';
    if (!appendEscaped(to, key, QueryPart::key)) return false;
    to += '=';
    if (!appendEscaped(to, textOf(value, scratch), QueryPart::value)) return false;
  }
  return true;
}

}  // namespace

namespace NSURL_ZR {

std::optional<NSURL> urlWithBaseUrlStringPathParameters(std::string_view base, std::optional<std::string_view> path,
                                                        const ZROHMDictionary& parameters) {
  std::string text;
  text.reserve(longestJoined(base, path) + 1 + queryLength(parameters));
  appendJoined(text, base, path);
  if (!appendQuery(text, parameters)) return std::nullopt;
  return NSURL::URLWithString(std::move(text));
}

std::string unescapedObject(const ZROHMValue& object) { return object.text(); }

}  // namespace NSURL_ZR
