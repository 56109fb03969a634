// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_TILETEXTS_H
#define ZRCORE_HOSTS_DEMO_TILES_TILETEXTS_H

#include <ZRCore/NSURLSession.h>

#include <optional>
#include <string>
#include <string_view>

namespace demo {

/// Whose tiles these are, as a map shows it: the text without its markup, which those who publish tiles write for
/// pages of the web, on one line and of a length that fits.
std::string attributionText(std::string_view text);

/// What came in the place of a tile.
struct TileFailure {
  /// Whether the source answers, and has no tile there.
  bool isMissing = false;
  std::string text;  ///< a sentence for people, about the source
};

/// @param source    its name for people
/// @param response  may be absent
/// @param error     what the image task failed with; absent when it came out well
TileFailure tileFailure(const std::string& source, const NSURLResponse* response, const std::optional<NSError>& error);

/// Until when an answer may be shown before it is asked for anew, seconds since 1970: as the server says
/// (Cache-Control), else a week.
/// @return absent when the server says that it may not be kept at all.
std::optional<double> goodUntil(const NSURLResponse& response, double now);

}  // namespace demo

#endif
