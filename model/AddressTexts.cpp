// SPDX-License-Identifier: Apache-2.0
// The rules here have gaps (a second line that begins with a comma, a city that is not shown beside a country). They
// are kept, because every application of the kit shows the same texts.
#include "AddressTexts.h"

#include <text/ASCII.h>
#include <text/UTF8.h>

#include <initializer_list>

namespace {

std::string joined(std::initializer_list<std::string_view> pieces) {
  std::string text;
  for (const std::string_view piece : pieces) text += piece;
  return text;
}

/// The five digits of a code of five and four; any other code as it is.
std::string_view shortZip(std::string_view zip) {
  const auto dash = zip.find('-');
  const bool isLong = dash != std::string_view::npos && zip.find('-', dash + 1) == std::string_view::npos &&
                      text::characterCount(zip.substr(0, dash)) == 5 && text::characterCount(zip.substr(dash + 1)) == 4;
  return isLong ? zip.substr(0, dash) : zip;
}

std::string countyText(std::string_view county, std::string_view country) {
  constexpr std::string_view kEnding = " county";
  if (county.empty() || country != "US") return std::string(county);
  const bool isNamedSo =
      county.size() >= kEnding.size() && text::isSameInAnyCase(county.substr(county.size() - kEnding.size()), kEnding);
  return isNamedSo ? std::string(county) : joined({county, " County"});
}

AddressTexts inOneLine(std::string_view text) { return {std::string(text), "", std::string(text)}; }

/// The texts by the first rule that applies to the parts that there are.
AddressTexts textsWithoutCountry(const AddressParts& parts) {
  const auto& [street, city, state, zip, county, neighborhood, country] = parts;
  if (!street.empty()) {
    if (state.empty() && zip.empty()) return inOneLine(street);
    const std::string line = joined({city, ", ", state, " ", zip});
    return {std::string(street), line, joined({street, ", ", line})};
  }
  if (!city.empty() && !state.empty()) {
    const std::string line = joined({city, ", ", state});
    if (!zip.empty()) return {line, std::string(zip), joined({line, " ", zip})};
    if (!neighborhood.empty()) return {std::string(neighborhood), line, joined({neighborhood, ", ", line})};
    return {line, countyText(county, country), line};
  }
  for (const std::string_view only : {state, country, city}) {
    if (!only.empty()) return inOneLine(only);
  }
  return inOneLine(zip);
}

}  // namespace

AddressTexts addressTexts(AddressParts parts) {
  parts.zip = shortZip(parts.zip);
  AddressTexts texts = textsWithoutCountry(parts);
  const std::string_view country = parts.country;
  if (!country.empty() && country != "US" && country != "CA" && texts.singleLine != country) {
    texts.secondLine = texts.secondLine.empty() ? std::string(country) : joined({texts.secondLine, ", ", country});
    texts.singleLine = joined({texts.singleLine, ", ", country});
  }
  return texts;
}
