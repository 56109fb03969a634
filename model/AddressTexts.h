// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MODEL_ADDRESSTEXTS_H
#define ZRCORE_MODEL_ADDRESSTEXTS_H

#include <string>
#include <string_view>

/// What the display texts are made of; empty for what is absent.
struct AddressParts {
  std::string_view street, city, state, zip, county, neighborhood, country;
};

/// An address for people, before white space is trimmed from the ends.
struct AddressTexts {
  std::string firstLine, secondLine, singleLine;
};

AddressTexts addressTexts(AddressParts parts);

#endif
