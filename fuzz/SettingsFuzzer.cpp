// SPDX-License-Identifier: Apache-2.0
// Any bytes as a file of settings, and as a key and its value: what is read is written and read the same for ever
// after.
#include <cstdint>

#include "FuzzLaws.h"
#include "settings/SettingsText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const auto roundTrips = [](const Settings& settings) {
    const auto again = settingsFromText(textFromSettings(settings));
    return std::holds_alternative<Settings>(again) && std::get<Settings>(again) == settings;
  };
  const auto read = settingsFromText(input);
  if (const auto* const settings = std::get_if<Settings>(&read)) require(roundTrips(*settings), "settings come back");
  require(roundTrips({{input.substr(0, size / 2), input.substr(size / 2)}}), "any bytes may be set");
  std::string often;
  for (int i = 0; i < 8; ++i) often += input;
  requireLinear(often.size(), [&] { static_cast<void>(settingsFromText(often)); });
  return 0;
}
