// SPDX-License-Identifier: Apache-2.0
// Any bytes as a query's value and key, and as base, path and parameters of an address.
#include <ZRCore/NSString_ZR.h>
#include <ZRCore/NSURL_ZR.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzLaws.h"

namespace {

int digit(char c) { return c <= '9' ? c - '0' : c - 'A' + 10; }

std::string unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') {
      require(i + 2 < text.size(), "an escape is whole");
      plain += static_cast<char>(digit(text[i + 1]) * 16 + digit(text[i + 2]));
      i += 2;
    } else {
      plain += text[i];
    }
  }
  return plain;
}

void checkEscaped(std::string_view text, const std::optional<std::string>& escaped) {
  if (!escaped) return;
  if (text.find('%') == std::string_view::npos) {
    require(unescaped(*escaped) == text, "an escaped text can be read back");
    require(NSURL::URLWithString(*escaped).has_value(), "an escaped text may stand in an address");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const auto value = NSString_ZR::urlQueryParameterEscaped(input);
  const auto key = NSString_ZR::urlQueryParameterKeyEscaped(input);
  checkEscaped(input, value);
  checkEscaped(input, key);
  require(value.has_value() == key.has_value(), "both escapers take the same texts");
  if (value) require(NSString_ZR::urlQueryParameterEscaped(*value) == value, "nothing is escaped twice");

  const std::string stripped = NSString_ZR::stripWhitespace(input);
  require(NSString_ZR::stripWhitespace(stripped) == stripped, "a stripped text has nothing left to strip");
  require(NSString_ZR::isBlank(input) == stripped.empty(), "blank is what strips to nothing");

  const std::string_view first = input.substr(0, size / 3);
  const std::string_view second = input.substr(size / 3, size / 3);
  const std::string_view third = input.substr(2 * (size / 3));
  static_cast<void>(NSURL_ZR::urlWithBaseUrlStringPathParameters(first, second, {{std::string(second), third}}));
  const auto url = NSURL_ZR::urlWithBaseUrlStringPathParameters("http://h", "p", {{std::string(first), second}});
  const auto firstKey = NSString_ZR::urlQueryParameterKeyEscaped(first);
  const auto secondValue = NSString_ZR::urlQueryParameterEscaped(second);
  if (url) require(url->absoluteString() == "http://h/p?" + *firstKey + '=' + *secondValue, "a query is its pairs");
  return 0;
}
