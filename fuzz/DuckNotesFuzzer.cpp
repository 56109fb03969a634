// SPDX-License-Identifier: Apache-2.0
// Any bytes as notes of lowered streams that another process has left: what is read is written and read the same, and
// no stream is ever set above full volume.
#include <policy/DuckPlan.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "FuzzLaws.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::uint32_t kCookie = 7, kFullVolume = 65536;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  auto plan = policy::DuckPlan::fromText(input, kCookie);
  const std::string written = plan.text(kCookie);
  require(policy::DuckPlan::fromText(written, kCookie).text(kCookie) == written, "notes are read as they were written");

  const auto requireNoLouder = [](const policy::ChannelVolumes& volumes) {
    const bool isQuiet = std::all_of(volumes.begin(), volumes.end(), [](auto volume) { return volume <= kFullVolume; });
    require(isQuiet, "no volume is set or remembered above the full one");
  };
  // Each note's stream stands there, lowered, as the note explains it.
  std::vector<policy::OtherStream> streams;
  for (std::uint32_t index = 0; index < 8; ++index) {
    for (const std::uint32_t volume : {kFullVolume, kFullVolume / 2}) {
      streams.push_back({.index = index, .key = "k", .volumes = policy::loweredVolumes({volume, volume})});
    }
  }
  for (const bool isDucking : {true, false}) {
    for (const auto& change : plan.changes(isDucking, streams, {}, {})) requireNoLouder(change.volumes);
  }
  for (const auto& memory : plan.corrections(std::nullopt, {})) requireNoLouder(memory.volumes);
  requireLinear(size, [&] { policy::DuckPlan::fromText(input, kCookie); });
  return 0;
}
