// SPDX-License-Identifier: Apache-2.0
// Any bytes, cut at the first line feed, as the configuration service's answer and as the packaged file.
#include <ZRCore/ZRPlatformFake.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <variant>

#include "ConfigurationStore.h"
#include "FuzzLaws.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::size_t cut = std::min(input.find('\n'), size);
  const std::string answer = input.substr(0, cut);
  const std::string packaged = input.substr(std::min(cut + 1, size));

  const ZRFakePlatform fake;
  fake.bundle->resources["tile_config.json"] = packaged;
  ConfigurationStore store;
  store.setProductKey(answer);
  int calls = 0;
  store.fetchWithId(fake.platform(), [&](const auto&) { ++calls; });
  for (const auto& task : std::vector(fake.httpSession->running)) task->answer(200, answer);
  fake.mainQueue->run();

  const auto isJSON = [&](const std::string& bytes) {
    return std::holds_alternative<ZROHMValue>(fake.json->valueFromJSON(bytes, ZRJSONFragments::refused));
  };
  require(calls <= 1, "a completion is called once at most");
  require(calls == 1 || !isJSON(packaged), "only a damaged packaged file leaves a completion uncalled");
  return 0;
}
