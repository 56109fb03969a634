// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeoAddress.h>
#include <text/Whitespace.h>

#include "AddressTexts.h"

namespace {

std::string_view orEmpty(const std::optional<std::string>& text) {
  return text ? std::string_view(*text) : std::string_view();
}

}  // namespace

std::string ZRGeoAddress::stringForFormat(std::uint64_t format) const {
  const AddressTexts texts = addressTexts({orEmpty(street_), orEmpty(city_), orEmpty(state_), orEmpty(zip_),
                                           orEmpty(county_), orEmpty(neighborhood_), orEmpty(country_)});
  return std::string(text::trimmedOfWhitespace(format == 0   ? texts.firstLine
                                               : format == 1 ? texts.secondLine
                                                             : texts.singleLine));
}
