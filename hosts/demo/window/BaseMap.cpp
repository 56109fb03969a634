// SPDX-License-Identifier: Apache-2.0
#include "BaseMap.h"

#include <ZRCore/NSString_ZR.h>
#include <demo/tiles/MBTiles.h>
#include <demo/tiles/TileServer.h>

#include <filesystem>
#include <utility>

#include "Gtk.h"

namespace demo {

namespace {

bool isAddress(const std::string& text) {
  const bool isOfFile = text.starts_with("file:");
  return !isOfFile && (text.find('{') != std::string::npos || text.find("://") != std::string::npos);
}

/// As a shell would: "~" is the home folder.
std::string pathOf(const std::string& text) {
  const Ref<GFile> file(g_file_parse_name(text.c_str()));
  const std::unique_ptr<char, decltype(&g_free)> path(g_file_get_path(file.get()), g_free);
  return path ? path.get() : text;
}

}  // namespace

std::shared_ptr<TileLoader> openBaseMap(const TileWish& wish, std::function<void()> onChange) {
  const std::string tiles = NSString_ZR::stripWhitespace(wish.tiles);
  if (tiles.empty()) return nullptr;
  const ZRPlatform& platform = ZRPlatformInUse();
  const auto folder = std::filesystem::path(g_get_user_cache_dir()) / "zrcore" / "tiles";
  TileSource source = isAddress(tiles) ? tileServer(tiles, "zrcore-demo/" ZRCORE_VERSION, folder, platform)
                                       : mbtilesSource(pathOf(tiles), platform);
  const std::string attribution = attributionText(wish.attribution);
  if (!attribution.empty()) source.attribution = attribution;
  return TileLoader::make(std::move(source), *platform.clock, std::move(onChange));
}

}  // namespace demo
