// SPDX-License-Identifier: Apache-2.0
#include "PlaceList.h"

#include <place/PlaceDocument.h>
#include <place/PlaceFile.h>
#include <place/PlaceJson.h>
#include <trip/OutputText.h>

#include <filesystem>

namespace demo {

std::string PlaceList::summary() const {
  std::string text = std::to_string(entries.size()) + (entries.size() == 1 ? " place" : " places");
  if (faults.empty()) return text;
  text += " · " + std::to_string(faults.size()) + (faults.size() == 1 ? " fault: " : " faults: ") + faults.front();
  return faults.size() > 1 ? text + " …" : text;
}

PlaceList loadPlaces(const ZRJSONService& json, const std::string& path) {
  std::error_code error;
  if (std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error)) {
    throw place::FileError("is no file; choose a geocoder's answer");
  }
  const place::Document document = place::readDocument(json, place::readFile(path), std::nullopt);
  PlaceList list;
  list.name = trip::asUtf8(std::filesystem::path(path).filename().string());
  for (const place::Result& result : document.results) {
    const ZRGeoAddress& address = *result.place->geoAddress();
    PlaceList::Entry entry{trip::asUtf8(address.primaryString()), trip::asUtf8(address.secondaryString()),
                           trip::asUtf8(address.singleLineString()), std::nullopt};
    if (const auto position = place::position(*result.place)) {
      entry.mark = trip::PlaceMark{*position, entry.primary.empty() ? entry.singleLine : entry.primary};
    }
    list.entries.push_back(std::move(entry));
  }
  for (const place::Fault& fault : document.faults) {
    const std::string where = fault.number > 0 ? "result " + std::to_string(fault.number) + ": " : "";
    list.faults.push_back(trip::asUtf8(where + fault.text));
  }
  return list;
}

}  // namespace demo
