// SPDX-License-Identifier: Apache-2.0
#include "SessionMemory.h"

#include <array>
#include <charconv>
#include <cmath>

namespace demo {

namespace {

constexpr const char* kTripFile = "trip.file";
constexpr const char* kTripPosition = "trip.positionSeconds";
constexpr const char* kPlacesFile = "places.file";
constexpr const char* kTiles = "map.tiles";
constexpr const char* kTilesAttribution = "map.tilesAttribution";

}  // namespace

SessionMemory::Trip SessionMemory::trip() const {
  Trip trip{settings_.stringForKey(kTripFile).value_or("")};
  const std::string text = settings_.stringForKey(kTripPosition).value_or("");
  double seconds = 0.0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), seconds);
  const bool isWhole = read.ec == std::errc() && read.ptr == text.data() + text.size();
  if (isWhole && std::isfinite(seconds)) trip.positionSeconds = seconds;
  return trip;
}

std::string SessionMemory::places() const { return settings_.stringForKey(kPlacesFile).value_or(""); }

TileWish SessionMemory::baseMap() const {
  return {settings_.stringForKey(kTiles).value_or(""), settings_.stringForKey(kTilesAttribution).value_or("")};
}

void SessionMemory::keepTrip(const Trip& trip) {
  std::array<char, 32> text{};
  const auto written = std::to_chars(text.data(), text.data() + text.size(), trip.positionSeconds);
  settings_.setStringForKey(trip.file, kTripFile);
  settings_.setStringForKey({text.data(), written.ptr}, kTripPosition);
}

void SessionMemory::keepPlaces(const std::string& file) { settings_.setStringForKey(file, kPlacesFile); }

void SessionMemory::keepBaseMap(const TileWish& wish) {
  settings_.setStringForKey(wish.tiles, kTiles);
  settings_.setStringForKey(wish.attribution, kTilesAttribution);
}

}  // namespace demo
