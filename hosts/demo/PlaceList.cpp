// SPDX-License-Identifier: Apache-2.0
#include "PlaceList.h"

#include <place/PlaceDocument.h>
#include <place/PlaceFile.h>
#include <place/PlaceJson.h>
#include <trip/OutputText.h>
#include <trip/Words.h>

#include <filesystem>

namespace demo {

std::string PlaceList::summary() const {
  std::string text = trip::countText(entries.size(), "place", "places");
  if (faultCount == 0) return text;
  text += " · " + trip::countText(faultCount, "fault", "faults") + ": " + firstFault;
  return faultCount > 1 ? text + " …" : text;
}

PlaceList loadPlaces(const std::string& path) {
  std::error_code error;
  if (std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error)) {
    throw place::FileError("is no file; choose a geocoder's answer");
  }
  PlaceList list;
  list.name = trip::asUtf8(std::filesystem::path(path).filename().string());
  const auto take = [&list](const place::Result& result) {
    const ZRGeoAddress& address = *result.place->geoAddress();
    PlaceList::Entry entry{trip::asUtf8(address.primaryString()), trip::asUtf8(address.secondaryString()),
                           trip::asUtf8(address.singleLineString()), std::nullopt};
    if (const auto position = place::position(*result.place)) {
      entry.mark = trip::PlaceMark{*position, entry.primary.empty() ? entry.singleLine : entry.primary};
    }
    list.entries.push_back(std::move(entry));
  };
  const place::Account account = place::readDocument(place::readFile(path), std::nullopt, take);
  list.faultCount = account.faultCount;
  if (!account.faults.empty()) {
    const place::Fault& first = account.faults.front();
    const std::string where = first.number > 0 ? "result " + std::to_string(first.number) + ": " : "";
    list.firstFault = trip::asUtf8(where + first.text);
  }
  return list;
}

}  // namespace demo
