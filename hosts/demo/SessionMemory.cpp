// SPDX-License-Identifier: Apache-2.0
#include "SessionMemory.h"

#include <text/Numbers.h>
#include <trip/OutputText.h>

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
  const auto seconds = text::numberIn<double>(settings_.stringForKey(kTripPosition).value_or(""));
  if (seconds && std::isfinite(*seconds)) trip.positionSeconds = *seconds;
  return trip;
}

std::string SessionMemory::places() const { return settings_.stringForKey(kPlacesFile).value_or(""); }

TileWish SessionMemory::baseMap() const {
  return {settings_.stringForKey(kTiles).value_or(""), settings_.stringForKey(kTilesAttribution).value_or("")};
}

void SessionMemory::keepTrip(const Trip& trip) {
  std::string position;
  trip::appendNumber(position, trip.positionSeconds);
  settings_.setStringForKey(trip.file, kTripFile);
  settings_.setStringForKey(position, kTripPosition);
}

void SessionMemory::keepPlaces(const std::string& file) { settings_.setStringForKey(file, kPlacesFile); }

void SessionMemory::keepBaseMap(const TileWish& wish) {
  settings_.setStringForKey(wish.tiles, kTiles);
  settings_.setStringForKey(wish.attribution, kTilesAttribution);
}

}  // namespace demo
