// SPDX-License-Identifier: Apache-2.0
#include "TileServer.h"

#include <ZRCore/ZRPrintableText.h>

#include <memory>

#include "KeptTiles.h"

namespace demo {

TileSource tileServer(const std::string& address, const std::string& userAgent, const std::filesystem::path& folder,
                      const ZRPlatform& platform) {
  const TileTemplate addresses = TileTemplate::ofServer(address);
  const std::string host = ZRPrintableText(addresses.host(), ZRLongestExcerpt);
  TileSource source{.name = host,
                    .addresses = addresses,
                    .zooms = {},
                    .attribution = "Map tiles: " + host,
                    .headers = {{"User-Agent", userAgent}},
                    .session = platform.httpSession,
                    .isAtHand = [](const NSURL&) { return false; },
                    .forget = [](const NSURL&) {}};
  try {
    const auto kept = std::make_shared<TileFolder>(folder);
    source.session = std::make_shared<KeptTiles>(platform, kept);
    source.isAtHand = [kept, clock = platform.clock](const NSURL& tile) {
      return kept->isGood(tile.absoluteString(), clock->now().secondsSince1970);
    };
    source.forget = [kept](const NSURL& tile) { kept->forget(tile.absoluteString()); };
  } catch (const TileSourceError& error) {
    platform.log->writeLine(error.what());
  }
  return source;
}

}  // namespace demo
