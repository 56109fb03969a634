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

/// How much the pairs of a query add, "&" and "=" included.
std::size_t queryLength(const ZROHMDictionary& parameters) {
  std::size_t sum = 0;
  std::string scratch;
  for (const auto& [key, value] : parameters) {
    sum += escapedLength(key, QueryPart::key).value_or(0) +
           escapedLength(textOf(value, scratch), QueryPart::value).value_or(0) + 2;
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
